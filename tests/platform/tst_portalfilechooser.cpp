// SPDX-License-Identifier: MIT
#include "PortalStandIn.h"
#include "platform/linux/PortalFileChooser.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

// The stand-in is a Python process: on a busy machine its answers can take
// seconds. Waits end as soon as they come.
constexpr int patience = 20000;

const FileChooser::Filter vCards{u"vCard files"_s, {u"*.vcf"_s, u"*.VCF"_s}, {u"text/vcard"_s}};

QJsonArray rules(std::initializer_list<std::pair<int, const char *>> list)
{
    QJsonArray out;
    for (const auto &[kind, pattern] : list)
        out.append(QJsonArray{kind, QString::fromUtf8(pattern)});
    return out;
}

} // namespace

// Tavlo's side of the desktop portal's file chooser, against a stand-in
// portal on a private bus: what it asks, what it makes of each answer, and
// that a portal that is missing, hangs or goes away hands over to the
// toolkit's dialog instead of leaving the person waiting.
class TestPortalFileChooser : public QObject
{
    Q_OBJECT

    std::unique_ptr<PortalStandIn> portal;
    std::unique_ptr<PortalFileChooser> chooser;
    std::unique_ptr<QSignalSpy> chosen, cancelled, unavailable, failed;

    bool start(PortalStandIn::Behaviour behaviour = PortalStandIn::Behaviour::Ask,
               bool withPortal = true)
    {
        portal = std::make_unique<PortalStandIn>();
        if (!portal->startBus(u"app"_s))
            return false;
        chooser = std::make_unique<PortalFileChooser>(portal->connection());
        chosen = std::make_unique<QSignalSpy>(chooser.get(), &FileChooser::chosen);
        cancelled = std::make_unique<QSignalSpy>(chooser.get(), &FileChooser::cancelled);
        unavailable = std::make_unique<QSignalSpy>(chooser.get(), &FileChooser::unavailable);
        failed = std::make_unique<QSignalSpy>(chooser.get(), &FileChooser::failed);
        return !withPortal || portal->startPortal(portal->connection(), behaviour);
    }
    int answers() const
    {
        return int(chosen->size() + cancelled->size() + unavailable->size() + failed->size());
    }
    // Asks and waits until the stand-in has the question.
    bool ask(const FileChooser::Request &request)
    {
        const qsizetype before = portal->asked().size();
        chooser->choose(request);
        return QTest::qWaitFor([&] { return portal->asked().size() > before; }, patience);
    }

private slots:
    void cleanup()
    {
        chosen.reset();
        cancelled.reset();
        unavailable.reset();
        failed.reset();
        chooser.reset();
        if (portal)
            portal->stop();
        portal.reset();
    }

    // What the portal is asked: the method, the title, the window, the
    // filters with their globs and MIME types, the folder as the file
    // system's bytes with the closing NUL, one file only when opening, the
    // suggested name when saving, and a token that names the request.
    void asksThePortal_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("method");
        QTest::newRow("open") << int(FileChooser::Mode::Open) << u"/home/anna/Downloads"_s
                              << QString() << "OpenFile";
        QTest::newRow("save, a folder with a blank and an umlaut")
            << int(FileChooser::Mode::Save) << u"/home/anna/Meine Dokumente/Jürgen"_s
            << u"birthdays.vcf"_s << "SaveFile";
        QTest::newRow("open, no folder")
            << int(FileChooser::Mode::Open) << QString() << QString() << "OpenFile";
    }
    void asksThePortal()
    {
        QFETCH(int, mode);
        QFETCH(QString, folder);
        QFETCH(QString, name);
        QFETCH(QString, method);
        QVERIFY(start());
        chooser->setParentWindow([] { return u"x11:3a00007"_s; });
        const FileChooser::Filter calendar{u"iCalendar files"_s, {u"*.ics"_s}, {}};
        QVERIFY(ask(
            {FileChooser::Mode(mode), u"Import a vCard file"_s, {vCards, calendar}, folder, name}));
        const QJsonObject asked = portal->asked().last().toObject();
        QCOMPARE(asked["method"].toString(), method);
        QCOMPARE(asked["title"].toString(), u"Import a vCard file"_s);
        QCOMPARE(asked["parent"].toString(), u"x11:3a00007"_s);
        QCOMPARE(asked["modal"].toBool(), true);
        const QJsonArray filters{
            QJsonArray{u"vCard files"_s, rules({{0, "*.vcf"}, {0, "*.VCF"}, {1, "text/vcard"}})},
            QJsonArray{u"iCalendar files"_s, rules({{0, "*.ics"}})}};
        QCOMPARE(asked["filters"].toArray(), filters);
        QCOMPARE(asked["filter"].toArray(), filters.first().toArray());
        QCOMPARE(asked["folder"].isNull(), folder.isEmpty());
        if (!folder.isEmpty())
            QCOMPARE(asked["folder"].toString(), (folder.toUtf8() + '\0').toHex());
        if (method == u"OpenFile") {
            QCOMPARE(asked["multiple"].toBool(true), false);
            QVERIFY(asked["name"].isNull());
        } else {
            QVERIFY(asked["multiple"].isNull());
            QCOMPARE(asked["name"].toString(), name);
        }
        QVERIFY(
            QRegularExpression(u"^[A-Za-z0-9_]+$"_s).match(asked["token"].toString()).hasMatch());
        QCOMPARE(answers(), 0);
    }

    // The person's answer on the request object: the file (percent-encoded
    // as the portal sends it, read back as the file's own name), closed
    // without a file, or ended by the chooser itself.
    void theAnswer_data()
    {
        QTest::addColumn<bool>("ownPath");
        QTest::addColumn<uint>("response");
        QTest::addColumn<QStringList>("uris");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("outcome");
        QTest::newRow("chosen") << false << 0u << QStringList{u"file:///home/anna/cards.vcf"_s}
                                << u"/home/anna/cards.vcf"_s << "chosen";
        QTest::newRow("percent-encoded")
            << false << 0u
            << QStringList{u"file:///home/anna/Meine%20Karten%20%2350%25/J%C3%BCrgen%3F.vcf"_s}
            << u"/home/anna/Meine Karten #50%/Jürgen?.vcf"_s << "chosen";
        QTest::newRow("the document portal's copy")
            << false << 0u << QStringList{u"file:///run/user/1000/doc/4f2a/cards.vcf"_s}
            << u"/run/user/1000/doc/4f2a/cards.vcf"_s << "chosen";
        QTest::newRow("cancelled") << false << 1u << QStringList() << QString() << "cancelled";
        QTest::newRow("ended otherwise") << false << 2u << QStringList() << QString() << "failed";
        QTest::newRow("not a local file")
            << false << 0u << QStringList{u"https://example.invalid/cards.vcf"_s} << QString()
            << "failed";
        QTest::newRow("a portal before 0.9: the request where it says")
            << true << 0u << QStringList{u"file:///home/anna/cards.vcf"_s}
            << u"/home/anna/cards.vcf"_s << "chosen";
        QTest::newRow("no file in a success")
            << false << 0u << QStringList() << QString() << "failed";
    }
    void theAnswer()
    {
        QFETCH(bool, ownPath);
        QFETCH(uint, response);
        QFETCH(QStringList, uris);
        QFETCH(QString, file);
        QFETCH(QString, outcome);
        QVERIFY(start(ownPath ? PortalStandIn::Behaviour::OwnRequestPath
                              : PortalStandIn::Behaviour::Ask));
        QVERIFY(ask({FileChooser::Mode::Open, u"Import"_s, {vCards}, {}, {}}));
        // Such a portal names its request only in its reply: the person's
        // answer can come once Tavlo listens there.
        QVERIFY(portal->lastRequest().contains(u"/request/old/"_s) == ownPath);
        QTRY_COMPARE_WITH_TIMEOUT(chooser->openRequest(), portal->lastRequest(), patience);
        QVERIFY(portal->respond(response, uris));
        QTRY_COMPARE_WITH_TIMEOUT(answers(), 1, patience);
        if (outcome == u"chosen") {
            QCOMPARE(chosen->size(), 1);
            const QUrl url = chosen->first().first().toUrl();
            QVERIFY(url.isLocalFile());
            QCOMPARE(url.toLocalFile(), file);
        } else {
            QCOMPARE(outcome == u"cancelled" ? cancelled->size() : failed->size(), 1);
        }
        // One answer only, even if the portal said it twice.
        QVERIFY(portal->respond(0, {u"file:///tmp/second.vcf"_s}));
        QVERIFY(ask({FileChooser::Mode::Open, u"Again"_s, {vCards}, {}, {}}));
        QCOMPARE(answers(), 1);
    }

    // A second question withdraws the first: its chooser is closed and a
    // late answer to it is not taken for the second.
    void aNewQuestionWithdrawsTheOpenOne()
    {
        QVERIFY(start());
        QVERIFY(ask({FileChooser::Mode::Open, u"First"_s, {vCards}, {}, {}}));
        const QString first = portal->lastRequest();
        QVERIFY(ask({FileChooser::Mode::Save, u"Second"_s, {vCards}, {}, u"b.vcf"_s}));
        QVERIFY(portal->lastRequest() != first);
        QTRY_COMPARE_WITH_TIMEOUT(portal->closes(first), 1, patience);
        QVERIFY(portal->respond(0, {u"file:///tmp/b.vcf"_s}));
        QTRY_COMPARE_WITH_TIMEOUT(chosen->size(), 1, patience);
        QCOMPARE(chosen->first().first().toUrl().toLocalFile(), u"/tmp/b.vcf"_s);
        QCOMPARE(answers(), 1);
    }

    // No portal on the bus, one that does not take the question in time,
    // and one that goes away while the person chooses: each hands over to
    // the toolkit's dialog, once.
    void handsOverWhenThePortalFails_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("no portal") << "none";
        QTest::newRow("never takes the question") << "hangs";
        QTest::newRow("goes away while choosing") << "vanishes";
    }
    void handsOverWhenThePortalFails()
    {
        QFETCH(QString, how);
        QVERIFY(start(how == u"hangs" ? PortalStandIn::Behaviour::NeverReply
                                      : PortalStandIn::Behaviour::Ask,
                      how != u"none"));
        chooser->setCallTimeout(500);
        if (how == u"vanishes") {
            chooser->setCallTimeout(PortalFileChooser::defaultCallTimeoutMs);
            QVERIFY(ask({FileChooser::Mode::Open, u"Import"_s, {vCards}, {}, {}}));
            QCOMPARE(answers(), 0);
            portal->stopPortal();
        } else {
            chooser->choose({FileChooser::Mode::Open, u"Import"_s, {vCards}, {}, {}});
        }
        QTRY_COMPARE_WITH_TIMEOUT(unavailable->size(), 1, patience);
        QCOMPARE(answers(), 1);
    }
};

// 77 tells ctest the test was skipped: without dbus-daemon there is no bus.
int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    {
        PrivateBus probe;
        if (!probe.startBus(u"probe"_s)) {
            qWarning("dbus-daemon cannot run here");
            return 77;
        }
        probe.stopBus();
    }
    TestPortalFileChooser test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_portalfilechooser.moc"
