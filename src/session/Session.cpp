// SPDX-License-Identifier: MIT
#include "session/Session.h"

#include "core/DebugLog.h"
#include "settings/SettingsStore.h"

Session::Session(SettingsStore &settings, const Clock &clock, QStringList preferredLanguages,
                 Appearance appearance)
    : settings(settings), clock(clock), favorites(settings,
                                                  [this](const QList<Favorite> &list) {
                                                      updateCalendar(list);
                                                      if (favoritesStored)
                                                          favoritesStored();
                                                  }),
      themes(appearance), preferredLanguages(std::move(preferredLanguages)), appearance(appearance),
      calendar(settings, this->preferredLanguages, clock)
{
    settings.setFailureHandler([this](const WriteResult &failure) { saveNotice.report(failure); });
}

void Session::updateCalendar(const QList<Favorite> &list)
{
    if (const QString problem = calendar.update(list); !problem.isEmpty())
        DebugLog::line(problem);
}

Session::~Session()
{
    settings.setFailureHandler({});
}

void Session::decideLanguage()
{
    const LanguageDecision decision =
        ::decideLanguage(preferredLanguages, settings.value(SettingsKeys::preferredLanguage));
    m_language = decision.language;
    strings.apply(m_language);
}

QDateTime Session::launchDate()
{
    if (!m_launchDate.isValid())
        m_launchDate = clock.now();
    return m_launchDate;
}

void Session::tellUnreadableBirthdays(qsizetype count)
{
    if (count == 0 || m_unreadableBirthdaysTold)
        return;
    m_unreadableBirthdaysTold = true;
    saveNotice.tell(strings.counted(UiText::BirthdaysUnreadable, count),
                    QStringLiteral("%1 favorites have a birthday that cannot be read").arg(count),
                    SaveNotice::showStoredProblemsFor);
}

void Session::prepareMainScreen()
{
    decideLanguage();
    if (!m_storedStateTold) {
        m_storedStateTold = true;
        saveNotice.report(settings.storedState());
    }
    if (!settings.value(SettingsKeys::backgroundImage))
        settings.set(SettingsKeys::backgroundImage, SettingsKeys::backgroundImageWhenAbsent);
}
