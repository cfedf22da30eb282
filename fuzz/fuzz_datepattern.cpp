// SPDX-License-Identifier: MIT
#include "FuzzCheck.h"
#include "cli/DateTimeArgument.h"
#include "core/DatePattern.h"
#include "favorites/FavoriteCard.h"

#include <QByteArray>
#include <QString>
#include <cstdint>

// The date text readers: DatePattern with every pattern the app reads stored
// dates with (and, when the input has a NUL, with the pattern before it), the
// star rule of the favorites list and the command line's moment argument.
// Beyond not crashing: what a pattern reads is a real date, and the text the
// pattern writes for it reads back as the same date.

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    useBerlinTime();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const QString appPatterns[] = {
        QStringLiteral("dd MM yyyy"), QStringLiteral("d M yyyy"), QStringLiteral("yyyy-MM-dd"),
        QStringLiteral("dd.MM.yyyy"), QStringLiteral("dd MM"),    QStringLiteral("d M"),
    };
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype nul = bytes.indexOf('\0');
    const QString text = QString::fromUtf8(nul < 0 ? bytes : bytes.sliced(nul + 1));

    if (nul >= 0) {
        const DatePattern pattern(QString::fromUtf8(bytes.first(nul)));
        if (const std::optional<QDate> date = pattern.parse(text))
            FUZZ_CHECK(date->isValid() && date->year() >= 1);
        pattern.format(QDate(1985, 3, 12));
        pattern.format(QDate(9999, 12, 31));
    }
    for (const QString &patternText : appPatterns) {
        const DatePattern pattern(patternText);
        const std::optional<QDate> date = pattern.parse(text);
        if (!date)
            continue;
        FUZZ_CHECK(date->isValid() && date->year() >= 1 && date->year() <= 9999);
        FUZZ_CHECK(pattern.parse(pattern.format(*date)) == date);
    }
    FavoriteCards::birthdayStillToCome(text, QDate(2026, 11, 22));
    const auto moment = DateTimeArgument::parse(text);
    if (const QDateTime *parsed = std::get_if<QDateTime>(&moment))
        FUZZ_CHECK(parsed->isValid());
    return 0;
}
