// SPDX-License-Identifier: MIT
#include "cli/DateTimeArgument.h"

#include <QRegularExpression>

std::variant<QDateTime, DateTimeArgument::Error> DateTimeArgument::parse(const QString &text)
{
    // Anchored: "$" alone would let a line break end the text.
    static const QRegularExpression shape(QRegularExpression::anchoredPattern(
        QStringLiteral(R"((\d{4})-(\d{2})-(\d{2})(?:T(\d{2}):(\d{2})(?::(\d{2}))?)?)")));
    const QRegularExpressionMatch match = shape.match(text);
    if (!match.hasMatch())
        return Error{
            QStringLiteral("expected YYYY-MM-DD, YYYY-MM-DDTHH:MM or YYYY-MM-DDTHH:MM:SS")};

    const QDate date(match.captured(1).toInt(), match.captured(2).toInt(),
                     match.captured(3).toInt());
    if (!date.isValid())
        return Error{QStringLiteral("no such date")};
    if (!match.hasCaptured(4))
        return date.startOfDay();

    const QTime time(match.captured(4).toInt(), match.captured(5).toInt(),
                     match.captured(6).toInt());
    if (!time.isValid())
        return Error{QStringLiteral("no such time of day")};
    const QDateTime moment(date, time, Qt::LocalTime);
    if (!moment.isValid())
        return Error{QStringLiteral("that time is skipped by a clock change here")};
    return moment;
}

std::variant<QDateTime, QString> DateTimeArgument::parseOption(const QString &name,
                                                               const QString &text)
{
    const auto parsed = parse(text);
    if (const auto *error = std::get_if<Error>(&parsed))
        return QStringLiteral("%1 \"%2\": %3").arg(name, text, error->reason);
    return std::get<QDateTime>(parsed);
}
