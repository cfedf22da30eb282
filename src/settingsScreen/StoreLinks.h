// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>

// Where "Rate App" and "More Apps" lead. A phone with an app store rates
// through the store's own prompt and lists the maker's apps there; a Linux
// desktop or phone has a software centre that opens an app's page from its
// AppStream id, and the project's web page lists what else it makes.
namespace StoreLinks {

enum class Platform { AppStore, SoftwareCentre };

// The kind of store the program was built for.
Platform current();

// The maker's developer page in an app store ("itms-apps" scheme).
QUrl developerPage();
// Tavlo's page in the software centre: "appstream:io.github.tavlo.Tavlo".
QUrl softwareCentrePage();
// The project's page on the web.
QUrl projectPage();

// What "Rate App" opens; empty where the platform's rating prompt is used.
QUrl ratePage(Platform platform);
// What "More Apps" opens.
QUrl moreAppsPage(Platform platform);

} // namespace StoreLinks
