// SPDX-License-Identifier: MIT
#pragma once

// Everything a person sees of a large, varied list of favorites that all
// have a year: the list's rows, the main screen's reports, the reminders
// and both exports, in the three languages, at several moments. A change
// for birthdays without a year must leave all of it byte for byte as the
// digests below pin it. (A row's spoken text is compared without the star,
// which a screen reader is not given.)

#include "contacts/BirthdayExport.h"
#include "core/BirthDateResults.h"
#include "core/DatePattern.h"
#include "favorites/FavoriteCard.h"
#include "favorites/FavoritesStore.h"
#include "reminders/ReminderScheduler.h"
#include "report/ReportComposer.h"
#include "settings/MemorySettingsStore.h"
#include "texts/AccessibleNames.h"

#include <QCryptographicHash>
#include <QMap>
#include <QRandomGenerator>

namespace WithYearOutputs {

using namespace Qt::Literals::StringLiterals;

// Names as people type them, with the odd blank, accent, line break and
// markup; the same name and birthday more than once.
inline QList<QStringList> sampleRows(int count)
{
    const QStringList names = {u"Anna"_qs,       u" Bob "_qs,    u"Zoë"_qs,       u"Иван"_qs,
                               u"李雷"_qs,       u"Ann\nLee"_qs, u"<b>Jo</b>"_qs, u"   "_qs,
                               u"O'Neil, J."_qs, u"Mama."_qs};
    QRandomGenerator random(20261125);
    QList<QStringList> rows;
    for (int i = 0; i < count; ++i) {
        const QDate born = QDate(1800, 1, 1).addDays(random.bounded(qint64(82900)));
        const QString name = names.at(random.bounded(int(names.size()))) +
                             (i % 7 == 0 ? QString() : QString::number(i % 50));
        // The app writes "d M yyyy"; earlier versions also "dd MM yyyy".
        const QString text =
            i % 11 == 0 ? born.toString(u"dd MM yyyy"_qs) : born.toString(u"d M yyyy"_qs);
        rows.append({name, text});
        if (i % 97 == 0)
            rows.append({name, text});
    }
    return rows;
}

// The outputs of each kind, as text, by section name.
inline QMap<QString, QByteArray> outputs(const QList<QStringList> &rows)
{
    MemorySettingsStore settings;
    settings.set(SettingsKeys::favorites, rows);
    FavoritesStore store(settings);
    store.load();
    const QList<Favorite> favorites = store.all();

    const QList<QDateTime> moments = {QDateTime(QDate(2026, 11, 22), QTime(12, 0)),
                                      QDateTime(QDate(2028, 2, 29), QTime(8, 15)),
                                      QDateTime(QDate(2027, 3, 1), QTime(23, 59))};
    QMap<QString, QByteArray> out;
    const QList<Language> languages = {Language::English, Language::German, Language::Russian};
    for (const Language language : languages) {
        UiStrings strings;
        strings.apply(language);
        const QString tag = QString::number(languages.indexOf(language));
        const QVariantMap names = accessibleNames(strings, language);
        const QLocale device = localeFor(language);
        for (const QDateTime &now : moments) {
            QByteArray &cards = out[u"cards "_qs + tag];
            QByteArray &reports = out[u"reports "_qs + tag];
            BirthDateResults results;
            ReportComposer composer(strings, results);
            for (const Favorite &favorite : favorites) {
                for (const bool weekday : {false, true}) {
                    const FavoriteCard card =
                        FavoriteCards::card(favorite, now, language, device, weekday, true);
                    cards +=
                        (card.name + u'|' + card.birthdayText + u'|' + card.signKey + u'|' +
                         card.star + u'|' +
                         FavoriteCards::spokenRow(card, strings, names).remove(u"★ "_s) + u'\n')
                            .toUtf8();
                }
                const QDate born = *DatePattern::stored().parse(favorite.birthday);
                const AgeReport report =
                    composer.compose(born.startOfDay(), now, favorite.name, language);
                reports +=
                    (report.detailed + u'|' + report.shortText + u'|' + report.weekday + u'\n')
                        .toUtf8();
            }
            for (const int before : {0, 1, 3, 7}) {
                ReminderTiming timing;
                timing.daysBefore = before;
                for (int step = 0; step < 40; ++step) {
                    for (const PlannedReminder &reminder :
                         Reminders::plan(now.addDays(step * 9), favorites, strings, timing))
                        out[u"reminders "_qs + tag] +=
                            (reminder.identifier + u'|' + reminder.title + u'|' + reminder.body +
                             u'|' + reminder.fire.toString(Qt::ISODateWithMs) + u'\n')
                                .toUtf8();
                }
            }
        }
        out[u"calendar "_qs + tag] =
            BirthdayExport::calendar(favorites, strings, moments.constFirst()).text;
    }
    out[u"vcards"_qs] = BirthdayExport::vCards(favorites).text;
    return out;
}

inline QMap<QString, QByteArray> digests(const QMap<QString, QByteArray> &outputs)
{
    QMap<QString, QByteArray> result;
    for (auto it = outputs.cbegin(); it != outputs.cend(); ++it)
        result.insert(it.key(),
                      QCryptographicHash::hash(it.value(), QCryptographicHash::Sha256).toHex());
    return result;
}

} // namespace WithYearOutputs
