// SPDX-License-Identifier: MIT
#include "screenBase/BundledFonts.h"

#include "platform/linux/FontconfigFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QResource>
#include <QSaveFile>
#include <QStandardPaths>
#include <numeric>

namespace {

const QString sans = QStringLiteral("Tavlo Sans");
// The title bar's size (TitleBar.qml).
constexpr int titlePixelSize = 22;

// After Tavlo Sans, in this order: the signs keep their plain bundled glyphs
// before the emoji font could draw them in colour.
QStringList fallbacks()
{
    return {QStringLiteral("Tavlo Symbols"), QStringLiteral("Tavlo Han"),
            QStringLiteral("Noto Color Emoji")};
}

const QString resources = QStringLiteral(":/qt/qml/Tavlo/screenBase/fonts");

// The faces as files in the user's cache, for fontconfig to keep what it
// learns of them: $XDG_CACHE_HOME/tavlo/fonts-<version>-<size>, one
// folder for each set of bundled faces. Made whole beside its place and
// renamed into it, so a folder under that name is always complete; checked
// by the files' sizes at every start. Empty when it cannot be had (no
// cache to write to, a full disk): the faces are then registered from
// memory.
QString cachedCopies(const QStringList &files)
{
    // Named by the faces' sizes, not their times: each build of the same
    // faces shares the folder.
    QList<qint64> sizes;
    for (const QString &file : files)
        sizes.append(QResource(resources + u'/' + file).uncompressedSize());
    const qint64 size = std::accumulate(sizes.cbegin(), sizes.cend(), qint64(0));
    QDir cache(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
               QStringLiteral("/tavlo"));
    const QString name = QStringLiteral("fonts-%1-%2").arg(QStringLiteral(TAVLO_VERSION)).arg(size);
    const auto complete = [&files, &sizes](const QDir &folder) {
        for (qsizetype i = 0; i < files.size(); ++i) {
            if (QFileInfo(folder.filePath(files.at(i))).size() != sizes.at(i))
                return false;
        }
        return true;
    };
    if (complete(QDir(cache.filePath(name))))
        return cache.filePath(name);

    // Earlier sets, and a damaged copy of this one, go; then this one is
    // written anew.
    for (const QString &old : cache.entryList({QStringLiteral("fonts-*")}, QDir::Dirs))
        QDir(cache.filePath(old)).removeRecursively();
    const QString part = name + QStringLiteral(".part-%1").arg(QCoreApplication::applicationPid());
    if (!cache.mkpath(part))
        return {};
    QDir written(cache.filePath(part));
    for (const QString &file : files) {
        QFile from(resources + u'/' + file);
        QSaveFile to(written.filePath(file));
        if (!from.open(QIODevice::ReadOnly) || !to.open(QIODevice::WriteOnly) ||
            to.write(from.readAll()) != from.size() || !to.commit()) {
            written.removeRecursively();
            return {};
        }
    }
    // Another start may have put the same set in place first: either is whole.
    if (!cache.rename(part, name))
        written.removeRecursively();
    return complete(QDir(cache.filePath(name))) ? cache.filePath(name) : QString();
}

// From memory, as any Qt platform can: read in place where the resource is
// stored as is, so that the faces take memory only for the parts of them
// that are drawn, not a copy of each whole file.
void registerFromMemory(const QStringList &files)
{
    for (const QString &file : files) {
        const QResource resource(resources + u'/' + file);
        const int id = resource.compressionAlgorithm() == QResource::NoCompression
                           ? QFontDatabase::addApplicationFontFromData(QByteArray::fromRawData(
                                 reinterpret_cast<const char *>(resource.data()), resource.size()))
                           : QFontDatabase::addApplicationFont(resource.fileName());
        if (id < 0)
            qWarning("tavlo: the bundled font %s could not be loaded", qPrintable(file));
    }
}

QStringList bundledFiles()
{
    // By suffix, not by name filters: those are made into regular
    // expressions, compiled at every start.
    QStringList faces = QDir(resources).entryList(QDir::Files);
    faces.removeIf(
        [](const QString &file) { return !file.endsWith(u".otf") && !file.endsWith(u".ttf"); });
    return faces;
}

// Whether fontconfig has the faces from their folder. Its first call reads
// the system's font configuration and caches, the longest part of a start.
bool addedAsFolder(const QStringList &files)
{
    const QString folder = cachedCopies(files);
    return !folder.isEmpty() && FontconfigFolder::add(folder, int(files.size()));
}

} // namespace

namespace BundledFonts {

void install()
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    const QStringList files = bundledFiles();
    if (!addedAsFolder(files))
        registerFromMemory(files);
    QFont::insertSubstitutions(sans, fallbacks());
    QFont font(sans);
    font.setFamilies(QStringList{sans} + fallbacks());
    // Every text names its own size. Qt Quick's first text still opens the
    // default font once, so the default is the title bar's: the first frame
    // then opens one font fewer.
    font.setPixelSize(titlePixelSize);
    QGuiApplication::setFont(font);
}

QStringList families()
{
    return QStringList{sans} + fallbacks();
}

QList<QFont::Weight> weights()
{
    return {QFont::Thin, QFont::Light, QFont::Normal, QFont::DemiBold};
}

} // namespace BundledFonts
