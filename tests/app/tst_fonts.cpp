// SPDX-License-Identifier: MIT
#include "ScreenTour.h"
#include "screenBase/BundledFonts.h"

#include <QDir>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGlyphRun>
#include <QProcess>
#include <QRawFont>
#include <QResource>
#include <QStyleHints>
#include <QTemporaryDir>
#include <QTextDocumentFragment>
#include <QTextLayout>
#include <cstdio>

namespace {

// Every text item a person sees, with its font and the words it draws.
struct ShownText
{
    QString where;
    QFont font;
    QString text;
};

QList<ShownText> shownTexts(QQuickWindow *window)
{
    QList<ShownText> found;
    for (QList<QQuickItem *> scene{window->contentItem()}; !scene.isEmpty();) {
        QQuickItem *item = scene.takeFirst();
        if (!item->isVisible() || item->opacity() <= 0)
            continue;
        scene.append(item->childItems());
        if (!item->inherits("QQuickText") && !item->inherits("QQuickTextInput") &&
            !item->inherits("QQuickTextEdit"))
            continue;
        QString text = item->property("text").toString();
        // Styled text draws its words, not its tags.
        if (item->property("textFormat").toInt() != Qt::PlainText)
            text = QTextDocumentFragment::fromHtml(text).toPlainText();
        if (text.trimmed().isEmpty())
            continue;
        QString where = item->objectName();
        for (const QQuickItem *up = item->parentItem(); where.isEmpty() && up;
             up = up->parentItem())
            where = up->objectName();
        found.append({where, item->property("font").value<QFont>(), text});
    }
    return found;
}

// The faces that draw `text` in `font`, as Qt's text layout picks them for
// the screen: each run's family, style and weight, and its glyphs.
QList<QGlyphRun> glyphRuns(const QFont &font, const QString &text)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    while (true) {
        QTextLine line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(100000);
    }
    layout.endLayout();
    return layout.glyphRuns();
}

// The weight the face was designed with (its OS/2 table), not the one asked
// for: a face made bolder by the renderer still says 400 here.
int designedWeight(const QRawFont &face)
{
    const QByteArray os2 = face.fontTable("OS/2");
    return os2.size() >= 6 ? (quint8(os2.at(4)) << 8) | quint8(os2.at(5)) : 0;
}

QString describe(const QGlyphRun &run)
{
    const QRawFont face = run.rawFont();
    QStringList glyphs;
    for (const quint32 glyph : run.glyphIndexes())
        glyphs.append(QString::number(glyph));
    return u"%1 %2 (%3) [%4]"_qs.arg(face.familyName(), face.styleName())
        .arg(designedWeight(face))
        .arg(glyphs.join(u' '));
}

// What every screen shows, drawn into `folder`: a picture of each and a list
// of the faces that draw each text. Run in a process of its own, because the
// fonts the system offers are settled when the first font is asked for.
int drawEveryScreen(const QString &folder)
{
    QDir().mkpath(folder);
    QFile listing(folder + u"/texts.txt"_qs);
    if (!listing.open(QIODevice::WriteOnly))
        return 1;
    QTextStream out(&listing);
    // A blinking cursor would be caught on or off.
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    ScreenHarness h;
    int shot = 0;
    ScreenTour::run(h, 0, Appearance::Dark, [&](const QString &screen, bool) {
        // What is still moving (rows flying in, a fade ending slowly on a
        // busy machine) comes to rest first: the same picture for half a
        // second.
        QImage picture = h.window->grabWindow();
        for (int same = 0, tries = 0; same < 2 && tries < 40; ++tries) {
            QTest::qWait(250);
            QImage next = h.window->grabWindow();
            same = next == picture ? same + 1 : 0;
            picture = std::move(next);
        }
        picture.save(u"%1/%2.png"_qs.arg(folder).arg(shot++, 2, 10, QChar(u'0')));
        for (const ShownText &shown : shownTexts(h.window)) {
            // Qt gives the runs of a line in no fixed order.
            QStringList runs;
            for (const QGlyphRun &run : glyphRuns(shown.font, shown.text))
                runs.append(describe(run));
            runs.sort();
            out << screen << u'\t' << shown.where << u'\t' << runs.join(u'\t') << u'\n';
        }
    });
    out << u"families offered: "_qs << QFontDatabase::families().size() << u'\n';
    return QTest::currentTestFailed() ? 1 : 0;
}

// Pixels that differ by more than a rounding: a scaled backdrop may come
// out a level apart from one run to the next; another face moves whole
// edges of glyphs.
int differingPixels(const QImage &a, const QImage &b)
{
    if (a.size() != b.size())
        return a.width() * a.height() + 1;
    const QImage x = a.convertToFormat(QImage::Format_RGB32);
    const QImage y = b.convertToFormat(QImage::Format_RGB32);
    int differing = 0;
    for (int row = 0; row < x.height(); ++row) {
        const auto *p = reinterpret_cast<const QRgb *>(x.constScanLine(row));
        const auto *q = reinterpret_cast<const QRgb *>(y.constScanLine(row));
        for (int column = 0; column < x.width(); ++column) {
            const int apart = std::max({std::abs(qRed(p[column]) - qRed(q[column])),
                                        std::abs(qGreen(p[column]) - qGreen(q[column])),
                                        std::abs(qBlue(p[column]) - qBlue(q[column]))});
            differing += apart > 2;
        }
    }
    return differing;
}

struct Drawing
{
    QStringList texts;
    QList<QImage> pictures;
    int familiesOffered = 0;
};

Drawing drawnWith(const QString &fontconfigFile)
{
    QTemporaryDir folder;
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    if (fontconfigFile.isEmpty())
        env.remove(u"FONTCONFIG_FILE"_qs);
    else
        env.insert(u"FONTCONFIG_FILE"_qs, fontconfigFile);
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(),
                {u"--draw-every-screen"_qs, folder.path()});
    if (!child.waitForFinished(120000) || child.exitCode() != 0)
        return {};
    Drawing drawing;
    QFile listing(folder.filePath(u"texts.txt"_qs));
    if (!listing.open(QIODevice::ReadOnly))
        return {};
    drawing.texts = QString::fromUtf8(listing.readAll()).split(u'\n', Qt::SkipEmptyParts);
    if (!drawing.texts.isEmpty())
        drawing.familiesOffered = drawing.texts.takeLast().section(u':', 1).toInt();
    for (const QString &file : QDir(folder.path()).entryList({u"*.png"_qs}, QDir::Files))
        drawing.pictures.append(QImage(folder.filePath(file)));
    return drawing;
}

// A start of its own, with `environment` added: the family that a text
// asking for Tavlo Sans is drawn in.
QString familyDrawnAtStart(const QStringList &environment)
{
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(u"FONTCONFIG_FILE"_qs);
    for (const QString &pair : environment)
        env.insert(pair.section(u'=', 0, 0), pair.section(u'=', 1));
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), {u"--bundled-family"_qs});
    if (!child.waitForFinished(60000) || child.exitCode() != 0)
        return u"(no answer)"_qs;
    return QString::fromUtf8(child.readAllStandardOutput()).trimmed();
}

} // namespace

class TestFonts : public QObject
{
    Q_OBJECT

private slots:
    // Each text on each screen, in each language, is drawn in a bundled face
    // at a bundled weight: never a system font found for a missing weight,
    // never a weight made up from a neighbour.
    void everyTextIsDrawnInABundledFace_data()
    {
        QTest::addColumn<QString>("language");
        for (const char *language : {"en-US", "de-DE", "ru-RU"})
            QTest::newRow(language) << QString::fromLatin1(language);
    }
    void everyTextIsDrawnInABundledFace()
    {
        QFETCH(QString, language);
        const QStringList families = BundledFonts::families();
        QStringList wrong;
        int texts = 0;
        ScreenHarness h;
        ScreenTour::run(
            h, 0, Appearance::Dark,
            [&](const QString &screen, bool) {
                for (const ShownText &shown : shownTexts(h.window)) {
                    ++texts;
                    const QString what = screen + u": "_qs + shown.where + u" \""_qs +
                                         shown.text.left(20) + u"\" "_qs;
                    if (!BundledFonts::weights().contains(shown.font.weight()))
                        wrong.append(what + u"asks for weight "_qs +
                                     QString::number(shown.font.weight()));
                    for (const QGlyphRun &run : glyphRuns(shown.font, shown.text)) {
                        const QRawFont face = run.rawFont();
                        const bool sans = face.familyName() == families.first();
                        if (!families.contains(face.familyName()) ||
                            (sans && designedWeight(face) != shown.font.weight()))
                            wrong.append(what + u"is drawn in "_qs + describe(run));
                    }
                }
            },
            language);
        QVERIFY(texts > 50);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
    }

    // The faces are kept as files in the user's cache, where fontconfig's
    // own cache learns them; whatever is wrong with that folder, or with
    // fontconfig's taking it, they are still there to draw with.
    void facesStayWhateverTheCacheHolds_data()
    {
        QTest::addColumn<QString>("damage");
        QTest::addColumn<bool>("copiesKept");
        QTest::newRow("first start") << QString() << true;
        QTest::newRow("a copy cut short") << u"truncate"_qs << true;
        QTest::newRow("an earlier set of faces") << u"old set"_qs << true;
        QTest::newRow("no cache to write to") << u"unwritable"_qs << false;
        QTest::newRow("files turned away by the configuration") << u"rejected"_qs << true;
    }
    void facesStayWhateverTheCacheHolds()
    {
        QFETCH(QString, damage);
        QFETCH(bool, copiesKept);
        QTemporaryDir home;
        const QDir cache(home.filePath(u"cache/tavlo"_qs));
        QStringList environment{u"XDG_CACHE_HOME="_qs + home.filePath(u"cache"_qs)};
        if (damage == u"unwritable") {
            // A file where the cache folder should be: nothing can go below it.
            QFile blocker(home.filePath(u"cache"_qs));
            QVERIFY(blocker.open(QIODevice::WriteOnly));
        } else if (damage == u"rejected") {
            environment << u"FONTCONFIG_FILE="_qs + QStringLiteral(TAVLO_BUNDLED_FONTS_ONLY);
        } else if (!damage.isEmpty()) {
            QCOMPARE(familyDrawnAtStart(environment), BundledFonts::families().first());
            const QStringList sets = cache.entryList({u"fonts-*"_qs}, QDir::Dirs);
            QCOMPARE(sets.size(), 1);
            if (damage == u"truncate") {
                QFile face(cache.filePath(sets.first() + u"/TavloSans-Light.otf"_qs));
                QVERIFY(face.resize(1000));
            } else {
                QVERIFY(QDir().rename(cache.filePath(sets.first()),
                                      cache.filePath(u"fonts-0.0.1-1"_qs)));
            }
        }
        QCOMPARE(familyDrawnAtStart(environment), BundledFonts::families().first());
        const QStringList sets = cache.entryList({u"fonts-*"_qs}, QDir::Dirs);
        QCOMPARE(sets.size(), copiesKept ? 1 : 0);
        if (copiesKept) {
            const QDir copies(cache.filePath(sets.first()));
            for (const QString &face : QDir(u":/qt/qml/Tavlo/screenBase/fonts"_qs).entryList()) {
                if (face.endsWith(u".otf") || face.endsWith(u".ttf"))
                    QCOMPARE(QFileInfo(copies.filePath(face)).size(),
                             QResource(u":/qt/qml/Tavlo/screenBase/fonts/"_qs + face)
                                 .uncompressedSize());
            }
        }
    }

    // The same pixels whether the system offers many fonts or none but the
    // colour emoji: nothing Tavlo draws depends on what else is installed.
    void drawsTheSameWhateverFontsAreInstalled()
    {
        const Drawing everyFont = drawnWith({});
        const Drawing bundledOnly = drawnWith(QStringLiteral(TAVLO_BUNDLED_FONTS_ONLY));
        QVERIFY(!everyFont.pictures.isEmpty());
        QCOMPARE(bundledOnly.pictures.size(), everyFont.pictures.size());
        // The test means something only where the system really offers
        // more than the bundled faces: the project's scripts install
        // several common font packages for it.
        QVERIFY2(everyFont.familiesOffered > bundledOnly.familiesOffered + 20,
                 qPrintable(u"%1 families against %2"_qs.arg(everyFont.familiesOffered)
                                .arg(bundledOnly.familiesOffered)));
        QCOMPARE(bundledOnly.texts, everyFont.texts);
        for (qsizetype i = 0; i < everyFont.pictures.size(); ++i) {
            const int differing =
                differingPixels(bundledOnly.pictures.at(i), everyFont.pictures.at(i));
            QVERIFY2(differing == 0,
                     qPrintable(u"screen %1: %2 pixels differ"_qs.arg(i).arg(differing)));
        }
    }
};

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    const QStringList arguments = app.arguments();
    if (arguments.size() == 3 && arguments.at(1) == u"--draw-every-screen")
        return drawEveryScreen(arguments.at(2));
    if (arguments.size() == 2 && arguments.at(1) == u"--bundled-family") {
        BundledFonts::install();
        std::printf("%s\n",
                    qPrintable(QFontInfo(QFont(BundledFonts::families().first())).family()));
        return 0;
    }
    TestFonts test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_fonts.moc"
