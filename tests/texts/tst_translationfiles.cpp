// SPDX-License-Identifier: MIT
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Message
{
    QString context;
    QString source;
    QString comment;
    bool numerus = false;
    bool finished = true;
    QStringList forms;
};

QList<Message> messagesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<Message> messages;
    QString context;
    QXmlStreamReader xml(&file);
    while (xml.readNextStartElement() || !xml.atEnd()) {
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"name") {
            context = xml.readElementText();
        } else if (xml.name() == u"message") {
            Message m;
            m.context = context;
            m.numerus = xml.attributes().value(u"numerus"_s) == u"yes";
            while (xml.readNextStartElement()) {
                if (xml.name() == u"source") {
                    m.source = xml.readElementText();
                } else if (xml.name() == u"extracomment") {
                    m.comment = xml.readElementText();
                } else if (xml.name() == u"translation") {
                    m.finished = xml.attributes().value(u"type"_s).isEmpty();
                    if (!m.numerus) {
                        m.forms = {xml.readElementText()};
                        continue;
                    }
                    while (xml.readNextStartElement())
                        m.forms.append(xml.readElementText());
                } else {
                    xml.skipCurrentElement();
                }
            }
            messages.append(m);
        }
    }
    return messages;
}

QSet<QString> placeholders(const QString &text)
{
    static const QRegularExpression placeholder(u"%(n|[1-9])"_s);
    QSet<QString> found;
    for (const QRegularExpressionMatch &m : placeholder.globalMatch(text))
        found.insert(m.captured());
    return found;
}

QStringList translationFiles()
{
    const QDir folder(QStringLiteral(TAVLO_TRANSLATIONS_DIR));
    QStringList files;
    for (const QString &name : folder.entryList({u"tavlo_*.ts"_s}, QDir::Files))
        files.append(folder.filePath(name));
    return files;
}

} // namespace

// The translation files: complete, with the placeholders of their English
// texts, and in step with the texts in the code.
class TestTranslationFiles : public QObject
{
    Q_OBJECT

private slots:
    void everyTextIsTranslated_data()
    {
        QTest::addColumn<QString>("file");
        for (const QString &file : translationFiles())
            QTest::newRow(qPrintable(QFileInfo(file).fileName())) << file;
    }
    void everyTextIsTranslated()
    {
        QFETCH(QString, file);
        const QList<Message> messages = messagesOf(file);
        QVERIFY(messages.size() > 100 || file.endsWith(u"_en.ts"));
        QVERIFY(!messages.isEmpty());
        QStringList faults;
        for (const Message &m : messages) {
            const QString where = m.context + u": "_s + m.source.left(40);
            if (!m.finished || m.forms.isEmpty() || m.forms.contains(QString()))
                faults << where + u" is not translated"_s;
            // A translation says what the English says of each thing it is
            // given; only a word the language writes into its plural forms
            // may stand in for a placeholder, where the comment allows it.
            const QSet<QString> wanted = placeholders(m.source);
            for (const QString &form : m.forms) {
                const QSet<QString> found = placeholders(form);
                const QSet<QString> missing = wanted - found;
                const bool mayLeaveOut = m.numerus && m.comment.contains(u"may be left out"_s) &&
                                         missing == QSet<QString>{u"%1"_s};
                if (!(found - wanted).isEmpty() || (!missing.isEmpty() && !mayLeaveOut))
                    faults << where + u": placeholders of \""_s + form + u'"';
            }
        }
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    }

    // A text added or changed in the code without scripts/update-translations
    // would show in English, or not at all.
    void filesAreInStepWithTheCode()
    {
        QTemporaryDir scratch;
        QVERIFY(scratch.isValid());
        for (const QString &file : translationFiles()) {
            const QString copy = scratch.filePath(QFileInfo(file).fileName());
            QVERIFY(QFile::copy(file, copy));
            QStringList arguments{u"-silent"_s, u"-locations"_s, u"none"_s, u"-no-obsolete"_s};
            if (file.endsWith(u"_en.ts"))
                arguments << u"-pluralonly"_s;
            arguments << QStringLiteral(TAVLO_SOURCE_DIR "/src") << u"-ts"_s << copy;
            QProcess lupdate;
            lupdate.start(QStringLiteral(TAVLO_LUPDATE), arguments);
            QVERIFY(lupdate.waitForFinished(60000) && lupdate.exitCode() == 0);
            QFile before(file);
            QFile after(copy);
            QVERIFY(before.open(QIODevice::ReadOnly) && after.open(QIODevice::ReadOnly));
            QVERIFY2(before.readAll() == after.readAll(),
                     qPrintable(file + u" is not up to date: run scripts/update-translations"_s));
        }
    }
};

QTEST_GUILESS_MAIN(TestTranslationFiles)
#include "tst_translationfiles.moc"
