// SPDX-License-Identifier: MIT
#include "app/StartupPreload.h"

#include <QBuffer>
#include <QFontDatabase>
#include <QImageReader>

StartupPreload::StartupPreload()
    : m_done(std::async(std::launch::async, [] {
          QFontDatabase::families();
          // The reader of the symbols' format, asked for by name: that loads
          // its plugin alone.
          QByteArray drawing("<svg xmlns='http://www.w3.org/2000/svg'/>");
          QBuffer buffer(&drawing);
          QImageReader(&buffer, "svg").canRead();
      }))
{}

StartupPreload::~StartupPreload()
{
    m_done.wait();
}
