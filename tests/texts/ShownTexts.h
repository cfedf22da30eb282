// SPDX-License-Identifier: MIT
#pragma once

// Every text Tavlo builds from its translations, beyond what the list of
// favorites with a year shows: the whole text table, the spoken names, the
// about text, greetings on round ages, reports without a year or before a
// birth, possessive names, reminders days ahead and every counted message,
// in each language. Whatever carries the translations, these must come out
// byte for byte the same.

#include "contacts/BirthdayImport.h"
#include "core/BirthDateResults.h"
#include "favorites/FavoriteCard.h"
#include "report/BirthdayGreeting.h"
#include "report/PersonName.h"
#include "report/ReportComposer.h"
#include "settings/InfoPanelText.h"
#include "texts/AccessibleNames.h"
#include "texts/UiStrings.h"

#include <QMap>
#include <QMetaEnum>
#include <QRandomGenerator>

namespace ShownTexts {

using namespace Qt::Literals::StringLiterals;

inline QByteArray line(const QString &text)
{
    return (text + u"\x1f\n"_s).toUtf8();
}

// Births and the moments at which each is a round number of days, weeks or
// months old, or has a birthday.
inline QList<std::pair<QDateTime, QDateTime>> roundAges()
{
    QRandomGenerator random(20261126);
    QList<std::pair<QDateTime, QDateTime>> pairs;
    for (int i = 0; i < 120; ++i) {
        const QDateTime birth(QDate(1900, 1, 1).addDays(random.bounded(45000)),
                              QTime(random.bounded(24), random.bounded(60)));
        for (const qint64 days : {100, 1000, 5000, 10000, 25000, 30000})
            pairs.append({birth, birth.addDays(days)});
        for (const qint64 weeks : {10, 50, 100, 500, 1000, 5000})
            pairs.append({birth, birth.addDays(weeks * 7)});
        for (const int months : {10, 50, 100, 200, 500, 1000})
            pairs.append({birth, birth.addMonths(months)});
        pairs.append({birth, birth.addYears(1 + i % 90)});
        pairs.append({birth, birth.addDays(-1 - i * 37)});
    }
    return pairs;
}

inline QMap<QString, QByteArray> outputs()
{
    const QStringList names = {u"Anna"_s, u" Bob "_s, u"Mama."_s,
                               u"Иван"_s, u"   "_s,   u"O'Neil, J."_s};
    const QList<std::pair<QDateTime, QDateTime>> ages = roundAges();
    const QMetaEnum entries = QMetaEnum::fromType<UiText>();
    QMap<QString, QByteArray> out;
    for (const Language language : {Language::English, Language::German, Language::Russian}) {
        const QString tag = u' ' + languageCode(language);
        UiStrings strings;
        strings.apply(language);

        // Entries that only show filled in (and so are compared as the
        // person sees them, under "counted"), and the caption over the colour
        // themes, which is translated on purpose.
        const QList<UiText> filledElsewhere = {
            UiText::HasABirthdayTomorrow, UiText::HasABirthdayInDays,
            UiText::ImportAdded,          UiText::ImportAlreadyThere,
            UiText::ImportSkipped,        UiText::ImportNoBirthday,
            UiText::ImportImpossibleDate, UiText::ImportFutureDate,
            UiText::ImportUnreadableDate, UiText::BirthdaysUnreadable,
            UiText::FollowContactsCount,  UiText::ExportSaved,
            UiText::ExportLeftOut,        UiText::AppColors};
        QByteArray &table = out[u"table"_s + tag];
        // The entries there were before the texts moved to translation files.
        for (int i = 0; i <= int(UiText::SyncConflictCopy); ++i) {
            if (!filledElsewhere.contains(UiText(i)))
                table += line(QString::fromLatin1(entries.key(i)) + u'=' + strings.text(UiText(i)));
        }
        const QVariantMap spoken = accessibleNames(strings, language);
        for (auto it = spoken.cbegin(); it != spoken.cend(); ++it)
            table += line(it.key() + u'=' + it.value().toString());
        table += line(infoPanelText(language, u"1.2.3"_s));

        QByteArray &greetings = out[u"greetings"_s + tag];
        QByteArray &reports = out[u"reports"_s + tag];
        BirthDateResults results;
        ReportComposer composer(strings, results);
        int n = 0;
        for (const auto &[birth, now] : ages) {
            const QString person = personNameFromFavorite(names.at(n++ % names.size()), language);
            results.compute(birth, now);
            greetings += line(birthdayGreetingLine(person, results.age(), strings));
            const AgeReport report = composer.compose(birth, now, person, language);
            reports += line(report.detailed + u'|' + report.shortText);
        }
        const QDate today(2026, 11, 26);
        for (const QDate date : {today, QDate(2027, 2, 28), QDate(2028, 2, 29)}) {
            for (QDate day(2000, 1, 1); day.year() == 2000; day = day.addDays(1)) {
                const DayOfBirth yearless = *DayOfBirth::withoutYear(day.day(), day.month());
                const QString person =
                    personNameFromFavorite(names.at(n++ % names.size()), language);
                reports +=
                    line(composer.composeWithoutYear(yearless, date, person, language).detailed);
                greetings += line(birthdayWithoutYearGreetingLine(person, yearless, date, strings));
                const FavoriteCard card =
                    FavoriteCards::card({u"Dan"_s, day.toString(u"d M"_s)}, date.startOfDay(),
                                        language, localeFor(language), true, true);
                reports += line(card.birthdayText + u'|' +
                                FavoriteCards::spokenRow(card, strings, spoken));
            }
        }

        QByteArray &counted = out[u"counted"_s + tag];
        for (int days = 1; days <= 800; ++days)
            counted += line(strings.birthdayInDays(u"Anna"_s, days));
        for (int count = 0; count <= 250; ++count) {
            ImportSummary summary;
            summary.added = count;
            summary.alreadyThere = count / 3;
            summary.noBirthday = count % 4;
            summary.impossibleDate = count % 3;
            summary.futureDate = count % 5 == 1 ? count : 0;
            summary.unreadableDate = count % 7;
            counted += line(BirthdayImport::summaryText(summary, strings));
            for (const UiText counting :
                 {UiText::FollowContactsCount, UiText::BirthdaysUnreadable, UiText::ExportLeftOut})
                counted += line(strings.counted(counting, count));
            counted += line(filled(strings.counted(UiText::ExportSaved, count), {u"/tmp/b.ics"_s}));
            counted += line(strings[UiText::PositionInList].arg(count + 1).arg(count + 2));
        }
    }
    return out;
}

} // namespace ShownTexts
