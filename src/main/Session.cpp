#include "Session.h"

#include "settings/SettingsStore.h"

Session::Session(SettingsStore &settings, const Clock &clock, QStringList preferredLanguages,
                 Appearance appearance)
    : settings(settings), clock(clock), favorites(settings), themes(appearance),
      preferredLanguages(std::move(preferredLanguages)), appearance(appearance)
{
    settings.setFailureHandler([this](const WriteResult &failure) { saveNotice.report(failure); });
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
    m_languageOverride = decision.override;
    strings.apply(m_language);
}

QDateTime Session::launchDate()
{
    if (!m_launchDate.isValid())
        m_launchDate = clock.now();
    return m_launchDate;
}
