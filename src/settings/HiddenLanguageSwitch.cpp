// SPDX-License-Identifier: MIT
#include "settings/HiddenLanguageSwitch.h"

#include "core/DebugLog.h"
#include "settings/SettingsStore.h"

using namespace Qt::Literals::StringLiterals;

QString HiddenLanguageSwitch::diagnostics(Language language, qsizetype favorites,
                                          const SettingsStore &settings)
{
    QString text = u"language = "_s + languageCode(language) + u'\n';
    text += settings.value(SettingsKeys::scheduledReminder(1)).value_or(u"no events next time"_s) +
            u'\n';
    for (int i = 2; i <= SettingsKeys::maxScheduledReminders; ++i) {
        if (const std::optional<QString> line = settings.value(SettingsKeys::scheduledReminder(i)))
            text += *line + u'\n';
    }
    return text + u"\nsaved birthdays: "_s + QString::number(favorites) + u'\n';
}

HiddenLanguageSwitch::Answer HiddenLanguageSwitch::tap(qint64 color, bool detailsOn,
                                                       Language language, qsizetype favorites,
                                                       SettingsStore &settings)
{
    Answer answer;
    if (color != 6 || detailsOn) {
        m_count = 0;
    } else {
        const qint64 c = ++m_count;
        const QString l = languageCode(language);
        const QString saved = u"\nsaved birthdays: "_s + QString::number(favorites);
        if (c >= 40 && c <= 42) {
            answer.text = diagnostics(language, favorites, settings);
            answer.reveal = true;
        } else if (c >= 43 && c <= 45) {
            settings.set(SettingsKeys::preferredLanguage, 1);
            answer.text = u"language = "_s + l + u"\nnext language = ru, in "_s +
                          QString::number(46 - c) +
                          u" clicks\npress done, to change to german\n"_s + saved;
        } else if (c >= 46 && c <= 48) {
            settings.set(SettingsKeys::preferredLanguage, 2);
            // Only this step's text ends with a line feed.
            answer.text = u"language = "_s + l + u"\nnext language = en, in "_s +
                          QString::number(49 - c) +
                          u" clicks\npress done, to change to russian\n"_s + saved + u'\n';
        } else if (c >= 49 && c <= 51) {
            settings.set(SettingsKeys::preferredLanguage, 3);
            answer.text = u"language = "_s + l + u"\nnext language = Default, in "_s +
                          QString::number(52 - c) +
                          u" clicks\nkill the app, to change to english\n"_s + saved;
        } else if (c >= 52 && c <= 57) {
            settings.set(SettingsKeys::preferredLanguage, 0);
            answer.text = u"language = "_s + l + u" (default system)\n"_s + saved;
        }
    }
    DebugLog::line(QString::number(m_count));
    return answer;
}
