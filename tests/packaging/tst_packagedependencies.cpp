// SPDX-License-Identifier: MIT
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QLibraryInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

// The Debian package must bring every QML module that Tavlo loads: a module
// that is missing shows only when a screen that imports it is opened, and
// then the screen does not load at all. These are the modules Tavlo's own
// QML files import, those that the modules import in turn (their qmldir),
// and those that Qt's own QML, loaded behind one of Tavlo's imports,
// imports. Each is looked up where Qt looks for it, and the package that
// installed it there (dpkg) must be among the package's dependencies in
// debian/control and among what scripts/debian-packages installs here.

namespace {

const QString sourceDir = QStringLiteral(TAVLO_SOURCE_DIR);

// Qt QML that a module loads from C++ rather than through an import, so no
// qmldir names it: the file dialog that QtQuick.Dialogs draws itself where
// the platform offers none (the fallback file dialog, with its folder
// model). Style variants in "+Style" folders are left out: Tavlo uses the
// Basic style.
const QHash<QString, QString> loadedBehind{
    {QStringLiteral("QtQuick.Dialogs"), QStringLiteral("QtQuick/Dialogs/quickimpl/qml")},
};

QString qmlRoot()
{
    return QLibraryInfo::path(QLibraryInfo::QmlImportsPath);
}

QString moduleDir(const QString &uri)
{
    return qmlRoot() + u'/' + QString(uri).replace(u'.', u'/');
}

// The modules a QML file imports, by name (not folders in quotes).
QStringList importsOf(const QString &path)
{
    static const QRegularExpression line(QStringLiteral(R"(^\s*import\s+([A-Za-z_][\w.]*))"),
                                         QRegularExpression::MultilineOption);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList uris;
    for (auto it = line.globalMatch(QString::fromUtf8(file.readAll())); it.hasNext();)
        uris.append(it.next().captured(1));
    return uris;
}

// The modules a module's qmldir brings along: "import", "default import"
// and "depends" lines; an optional import is not needed.
QStringList qmldirImports(const QString &uri)
{
    QFile file(moduleDir(uri) + QStringLiteral("/qmldir"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList uris;
    for (const QByteArray &raw : file.readAll().split('\n')) {
        QStringList words = QString::fromUtf8(raw).simplified().split(u' ', Qt::SkipEmptyParts);
        if (words.value(0) == u"default")
            words.removeFirst();
        if (words.size() >= 2 && (words.at(0) == u"import" || words.at(0) == u"depends"))
            uris.append(words.at(1));
    }
    return uris;
}

QStringList qmlFilesUnder(const QString &folder, bool skipStyleVariants)
{
    QStringList files;
    for (QDirIterator it(folder, {QStringLiteral("*.qml")}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();) {
        const QString path = it.next();
        if (!skipStyleVariants || !path.mid(folder.size()).contains(u"/+"))
            files.append(path);
    }
    files.sort();
    return files;
}

// Every module Tavlo loads, with the way it is first reached.
QList<std::pair<QString, QString>> modulesLoaded()
{
    QList<std::pair<QString, QString>> found;
    QHash<QString, bool> seen;
    QList<std::pair<QString, QString>> queue;
    const auto want = [&](const QString &uri, const QString &why) {
        // Tavlo's own module is built into the program.
        if (uri == u"Tavlo" || seen.contains(uri))
            return;
        seen.insert(uri, true);
        queue.append({uri, why});
    };
    for (const QString &file : qmlFilesUnder(sourceDir + QStringLiteral("/src"), false)) {
        for (const QString &uri : importsOf(file))
            want(uri, QDir(sourceDir).relativeFilePath(file));
    }
    while (!queue.isEmpty()) {
        const auto [uri, why] = queue.takeFirst();
        found.append({uri, why});
        for (const QString &next : qmldirImports(uri))
            want(next, uri + QStringLiteral(" (qmldir) < ") + why);
        if (loadedBehind.contains(uri)) {
            const QString folder = qmlRoot() + u'/' + loadedBehind.value(uri);
            for (const QString &file : qmlFilesUnder(folder, true)) {
                for (const QString &next : importsOf(file))
                    want(next, QDir(qmlRoot()).relativeFilePath(file) + QStringLiteral(" < ") +
                                   uri + QStringLiteral(" < ") + why);
            }
        }
    }
    return found;
}

// The package names of a field of debian/control: alternatives each count,
// versions and substitutions ("${shlibs:Depends}") do not.
QStringList packagesOfField(const QString &control, const QString &package, const QString &field)
{
    QStringList names;
    bool inPackage = false;
    bool inField = false;
    for (const QString &line : control.split(u'\n')) {
        if (line.startsWith(u"Package:"))
            inPackage = line.mid(8).trimmed() == package;
        const bool continuation = line.startsWith(u' ') || line.startsWith(u'\t');
        if (!continuation)
            inField = inPackage && line.startsWith(field + u':');
        if (!inField)
            continue;
        const QString value = continuation ? line : line.mid(field.size() + 1);
        for (const QString &entry : value.split(u',')) {
            for (QString alternative : entry.split(u'|')) {
                alternative = alternative.section(u'(', 0, 0).section(u'[', 0, 0).trimmed();
                if (!alternative.isEmpty() && !alternative.startsWith(u'$'))
                    names.append(alternative);
            }
        }
    }
    return names;
}

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class TestPackageDependencies : public QObject
{
    Q_OBJECT

    QHash<QString, QString> m_packageOf;
    QStringList m_depends;
    QStringList m_installedHere;

private slots:
    void initTestCase()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("dpkg-query")).isEmpty())
            QSKIP("no dpkg here to tell which package installs a module");
        m_depends = packagesOfField(readText(sourceDir + QStringLiteral("/debian/control")),
                                    QStringLiteral("tavlo"), QStringLiteral("Depends"));
        QVERIFY(m_depends.contains(u"qml6-module-qtquick"));
        for (const QString &line :
             readText(sourceDir + QStringLiteral("/scripts/debian-packages")).split(u'\n')) {
            if (!line.startsWith(u'#') && !line.trimmed().isEmpty())
                m_installedHere.append(line.trimmed());
        }

        QStringList qmldirs;
        for (const auto &[uri, why] : modulesLoaded())
            qmldirs.append(moduleDir(uri) + QStringLiteral("/qmldir"));
        QProcess dpkg;
        dpkg.start(QStringLiteral("dpkg-query"), QStringList{QStringLiteral("-S")} + qmldirs);
        QVERIFY(dpkg.waitForFinished(60000));
        // "qml6-module-qtquick:amd64: /usr/lib/.../QtQuick/qmldir"
        for (const QString &line : QString::fromUtf8(dpkg.readAllStandardOutput()).split(u'\n')) {
            const qsizetype colon = line.indexOf(QStringLiteral(": /"));
            if (colon > 0)
                m_packageOf.insert(line.mid(colon + 2).trimmed(),
                                   line.left(colon).section(u':', 0, 0));
        }
    }

    void everyModuleLoadedIsADependency_data()
    {
        QTest::addColumn<QString>("uri");
        QTest::addColumn<QString>("why");
        for (const auto &[uri, why] : modulesLoaded())
            QTest::newRow(qPrintable(uri)) << uri << why;
    }
    void everyModuleLoadedIsADependency()
    {
        QFETCH(QString, uri);
        QFETCH(QString, why);
        const QString qmldir = moduleDir(uri) + QStringLiteral("/qmldir");
        QVERIFY2(QFile::exists(qmldir),
                 qPrintable(uri + QStringLiteral(" is not installed here; wanted by ") + why));
        const QString package = m_packageOf.value(qmldir);
        QVERIFY2(!package.isEmpty(), qPrintable(qmldir + QStringLiteral(" is in no package")));
        QVERIFY2(m_depends.contains(package),
                 qPrintable(package + QStringLiteral(" (for ") + uri +
                            QStringLiteral(") is missing from Depends in debian/control; "
                                           "wanted by ") +
                            why));
        QVERIFY2(m_installedHere.contains(package),
                 qPrintable(package + QStringLiteral(" is missing from scripts/debian-packages")));
    }

    // What the list above is made from: the file dialog's own QML, loaded
    // behind QtQuick.Dialogs, needs the folder model.
    void theFileDialogsModulesAreFollowed()
    {
        QStringList uris;
        for (const auto &[uri, why] : modulesLoaded())
            uris.append(uri);
        for (const char *uri : {"QtQuick.Dialogs", "QtQuick.Dialogs.quickimpl",
                                "Qt.labs.folderlistmodel", "QtQuick.Controls.Basic", "QtQml"})
            QVERIFY2(uris.contains(QLatin1String(uri)), uri);
        QVERIFY(!uris.contains(u"Tavlo"));
        // An optional import (another style) is not needed.
        QVERIFY(!uris.contains(u"QtQuick.Controls.Material"));
    }
};

QTEST_GUILESS_MAIN(TestPackageDependencies)
#include "tst_packagedependencies.moc"
