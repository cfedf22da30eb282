// SPDX-License-Identifier: MIT
#include "settingsScreen/StoreLinks.h"

using namespace Qt::Literals::StringLiterals;

StoreLinks::Platform StoreLinks::current()
{
#if defined(Q_OS_IOS) || defined(Q_OS_MACOS)
    return Platform::AppStore;
#else
    return Platform::SoftwareCentre;
#endif
}

QUrl StoreLinks::developerPage()
{
    QUrl url;
    url.setScheme(u"itms-apps"_s);
    url.setHost(u"apps.apple.com"_s);
    url.setPath(u"/at/developer/tavlo/id1600000000"_s);
    url.setQuery(u"mt=8"_s);
    return url;
}

QUrl StoreLinks::softwareCentrePage()
{
    // The id as the path: a URL's host is lower-cased, and the component id
    // is not. Software centres take "appstream:" with the id either way.
    QUrl url;
    url.setScheme(u"appstream"_s);
    url.setPath(u"io.github.tavlo.Tavlo"_s);
    return url;
}

QUrl StoreLinks::projectPage()
{
    return QUrl(u"https://github.com/tavlo/tavlo"_s);
}

QUrl StoreLinks::ratePage(Platform platform)
{
    return platform == Platform::SoftwareCentre ? softwareCentrePage() : QUrl();
}

QUrl StoreLinks::moreAppsPage(Platform platform)
{
    return platform == Platform::SoftwareCentre ? projectPage() : developerPage();
}
