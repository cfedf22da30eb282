// SPDX-License-Identifier: MIT
#include "settings/IniFormat.h"

#include <QFile>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

// Qt's QSettings wrote the files of earlier versions and reads ours in any
// other Qt program: it is the judge of every case here.
class TestIniFormat : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    int m_files = 0;

    // A new file name each time: QSettings keeps what it read of a file
    // for the rest of the process.
    QString fileWith(const QByteArray &text)
    {
        const QString path = m_dir.filePath(QStringLiteral("f%1.ini").arg(++m_files));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    QByteArray textOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // Ours written, QSettings reading, and the other way round, for a name
    // as a plain value, inside the favorites list and in a key.
    void checkBothWays(const QString &text)
    {
        // A slash in a key is a path separator for QSettings.
        const QString key = "odd/k" + QString(text).replace(u'/', u'_');
        const IniFormat::Values ours{
            {"Name", text},
            {"color", 7},
            {"star", true},
            {"person",
             QVariantList{QVariantList{text, "12 3 1985"}, QVariantList{"B", "1 1 2000"}}},
            {key, text},
        };
        QSettings theirsReading(fileWith(IniFormat::serialize(ours)), QSettings::IniFormat);
        QCOMPARE(theirsReading.status(), QSettings::NoError);
        QCOMPARE(theirsReading.value("Name").toString(), text);
        QCOMPARE(theirsReading.value("color").toString(), "7");
        QCOMPARE(theirsReading.value("star").toString(), "true");
        QCOMPARE(theirsReading.value("person/size").toString(), "2");
        QCOMPARE(theirsReading.value("person/1/1").toString(), text);
        QCOMPARE(theirsReading.value("person/2/size").toString(), "2");
        QCOMPARE(theirsReading.value(key).toString(), text);

        const QString path = m_dir.filePath(QStringLiteral("q%1.ini").arg(++m_files));
        {
            QSettings theirsWriting(path, QSettings::IniFormat);
            // As earlier versions wrote the favorites.
            theirsWriting.setValue("Name", text);
            theirsWriting.setValue("person/1/1", text);
            theirsWriting.setValue("person/1/size", 1);
            theirsWriting.setValue("person/size", 1);
        }
        const IniFormat::Values read = IniFormat::parse(textOf(path));
        QCOMPARE(read.value("Name"), QVariant(text));
        QCOMPARE(read.value("person"), QVariant(QVariantList{QVariantList{text}}));
    }

private slots:
    void namesOfEveryKind_data()
    {
        QTest::addColumn<QString>("text");
        const char16_t nul[] = {u'A', 0, u'7', u'b', 0};
        QTest::newRow("plain") << "Anna";
        QTest::newRow("empty") << "";
        QTest::newRow("blanks around") << "  Anna  ";
        QTest::newRow("blank only") << " ";
        QTest::newRow("tab around") << "\tAnna\t";
        QTest::newRow("comma") << "Doe, Jane";
        QTest::newRow("only a comma") << ",";
        QTest::newRow("semicolon") << "a; b";
        QTest::newRow("equals") << "a=b";
        QTest::newRow("quotes") << "\"Jr\" \"";
        QTest::newRow("backslashes") << "C:\\new\\x41\\";
        QTest::newRow("line breaks") << "one\ntwo\r\nthree";
        QTest::newRow("control then hex digit") << "\x01"
                                                   "abc\x1f"
                                                   "9";
        QTest::newRow("nul then digit") << QString::fromUtf16(nul, 4);
        QTest::newRow("at sign") << "@home";
        QTest::newRow("two at signs") << "@@x";
        QTest::newRow("looks typed") << "@Variant(x)";
        QTest::newRow("looks invalid") << "@Invalid()";
        QTest::newRow("percent and brackets") << "%41 [General] %U0416";
        QTest::newRow("cyrillic") << "Ольга Петровна";
        QTest::newRow("german") << "Jürgen Groß";
        QTest::newRow("emoji") << "Mama 🎂👩‍👧";
        QTest::newRow("delete character") << "a\x7f"
                                             "b";
        QTest::newRow("markup") << "<i>Anna</i>";
        QTest::newRow("general") << "General";
    }
    void namesOfEveryKind()
    {
        QFETCH(QString, text);
        checkBothWays(text);
    }

    // Texts no one thought of: drawn from the characters that matter to the
    // dialect, with a fixed seed so that a failure can be repeated.
    void randomNames()
    {
        const QString alphabet = QString::fromUtf16(
            u" \t\n\r\"\\,;=@%[]/#aZ09fF\x01\x1f\x7f\u00e4\u0416\u20ac\U0001F382");
        QRandomGenerator random(20261123);
        for (int round = 0; round < 200; ++round) {
            QString text;
            const int length = random.bounded(12);
            for (int i = 0; i < length; ++i) {
                qsizetype at = random.bounded(alphabet.size());
                // Keep surrogate pairs whole.
                if (alphabet.at(at).isLowSurrogate())
                    --at;
                text += alphabet.at(at);
                if (alphabet.at(at).isHighSurrogate())
                    text += alphabet.at(at + 1);
            }
            checkBothWays(text);
            if (QTest::currentTestFailed())
                qFatal("failed for the text \"%s\"", qPrintable(text.toUtf8().toPercentEncoding()));
        }
    }

    // Files written by hand or by other programs: every key QSettings finds,
    // we find with the same value; values QSettings does not give as text,
    // we do not either.
    void handWrittenFiles_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("comments and blank lines")
            << QByteArray("; a comment\n\n[General]\ncolor=3 ; after\n  ;indented\nstar=true\n");
        QTest::newRow("windows line ends and a byte order mark")
            << QByteArray("\xef\xbb\xbf[General]\r\ncolor=4\r\nName=Anna\r\n");
        QTest::newRow("quoted value over two lines") << QByteArray("Name=\"one\ntwo\"\nday=5\n");
        QTest::newRow("continued line") << QByteArray("Name=one\\\ntwo\nday=5\n");
        QTest::newRow("list of texts") << QByteArray("arrayName=a, \"b, c\" ,d\n");
        QTest::newRow("empty list") << QByteArray("arrayName=@Invalid()\n");
        QTest::newRow("typed values")
            << QByteArray("a=@ByteArray(xyz)\nb=@Variant(\\0\\0\\0\\x7f)\nc=@String(s)\n");
        QTest::newRow("escaped keys and sections")
            << QByteArray("[%General]\nx=1\n[a%20b]\nk%U0416=2\nsub\\key=3\n");
        QTest::newRow("octal and hex escapes") << QByteArray("Name=\\101\\x42\\x043 z\\?\\'\n");
        QTest::newRow("blanks kept by quotes and escapes")
            << QByteArray("a=  x  \nb=\"  x  \"\nc=x\\t  \n");
        QTest::newRow("section without end") << QByteArray("[person\nsize=1\n");
        QTest::newRow("line without equals") << QByteArray("garbage\ncolor=2\n");
        QTest::newRow("key repeated") << QByteArray("color=1\ncolor=2\n");
    }
    void handWrittenFiles()
    {
        QFETCH(QByteArray, text);
        const IniFormat::Values ours = IniFormat::parse(text);
        QSettings theirs(fileWith(text), QSettings::IniFormat);
        QCOMPARE(QStringList(ours.keys()), theirs.allKeys());
        for (const QString &key : theirs.allKeys()) {
            const QVariant expected = theirs.value(key);
            const QVariant actual = ours.value(key);
            const bool isText = expected.typeId() == QMetaType::QString ||
                                expected.typeId() == QMetaType::QStringList;
            if (isText)
                QCOMPARE(actual, expected);
            else
                QVERIFY2(actual.typeId() != QMetaType::QString, qPrintable(key));
        }
        // And what we read we write back so that QSettings reads it alike.
        QSettings again(fileWith(IniFormat::serialize(ours)), QSettings::IniFormat);
        QCOMPARE(again.allKeys(), theirs.allKeys());
        for (const QString &key : theirs.allKeys())
            QCOMPARE(again.value(key), theirs.value(key));
    }

    // A group of the shape of a list is one value; anything else stays as
    // its entries.
    void lists_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QVariant>("person");
        const QVariantList anna{QVariantList{"Anna", "12 3 1985"}};
        QTest::newRow("favorites") << QByteArray("[person]\n1\\1=Anna\n1\\2=12 3 1985\n"
                                                 "1\\size=2\nsize=1\n")
                                   << QVariant(anna);
        QTest::newRow("empty") << QByteArray("[person]\nsize=0\n") << QVariant(QVariantList());
        QTest::newRow("size beyond the entries")
            << QByteArray("[person]\n1\\1=A\n1\\size=1\nsize=2\n") << QVariant();
        QTest::newRow("entry missing") << QByteArray("[person]\n2=A\nx=B\nsize=1\n") << QVariant();
        QTest::newRow("size not a number") << QByteArray("[person]\n1=A\nsize=one\n") << QVariant();
        QTest::newRow("negative size") << QByteArray("[person]\nsize=-1\n") << QVariant();
        QTest::newRow("invalid entry")
            << QByteArray("[person]\n1=@Invalid()\nsize=1\n") << QVariant();
    }
    void lists()
    {
        QFETCH(QByteArray, text);
        QFETCH(QVariant, person);
        const IniFormat::Values values = IniFormat::parse(text);
        QCOMPARE(values.value("person"), person);
        // Not folded: its entries stay, to be written back as they were.
        if (!person.isValid())
            QVERIFY(values.lastKey().startsWith("person/"));
    }
};

QTEST_GUILESS_MAIN(TestIniFormat)
#include "tst_iniformat.moc"
