// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <variant>

// A moment given on the command line: YYYY-MM-DD (the start of that day),
// YYYY-MM-DDTHH:MM or YYYY-MM-DDTHH:MM:SS, in local time.
namespace DateTimeArgument {

struct Error
{
    QString reason;
};

std::variant<QDateTime, Error> parse(const QString &text);

// An option such as --now given as `text`: the moment, or the message naming it.
std::variant<QDateTime, QString> parseOption(const QString &name, const QString &text);

} // namespace DateTimeArgument
