// SPDX-License-Identifier: MIT
#include "app/StartupPreload.h"

#include <QFontDatabase>
#include <QImageReader>

StartupPreload::StartupPreload()
    : m_done(std::async(std::launch::async, [] {
          QFontDatabase::families();
          QImageReader::supportedImageFormats();
      }))
{}

StartupPreload::~StartupPreload()
{
    m_done.wait();
}
