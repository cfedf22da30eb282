// SPDX-License-Identifier: MIT
#include "core/DebugLog.h"
#include "settings/HiddenLanguageSwitch.h"
#include "settings/MemorySettingsStore.h"

#include <QTest>

using namespace SettingsKeys;

// The taps on the version number: counted only in theme 6 with details off.
class TestHiddenLanguageSwitch : public QObject
{
    Q_OBJECT

    static HiddenLanguageSwitch::Answer tapTimes(HiddenLanguageSwitch &secret, int taps,
                                                 SettingsStore &settings)
    {
        HiddenLanguageSwitch::Answer answer;
        for (int i = 0; i < taps; ++i)
            answer = secret.tap(6, false, Language::English, 3, settings);
        return answer;
    }

private slots:
    void sequence_data()
    {
        QTest::addColumn<int>("taps");
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("stored"); // -1: nothing stored
        QTest::newRow("39: nothing yet") << 39 << "" << -1LL;
        QTest::newRow("40: diagnostics")
            << 40 << "language = en\nno events next time\n\nsaved birthdays: 3\n"
            << -1LL;
        QTest::newRow("43: German, 3 to go")
            << 43
            << "language = en\nnext language = ru, in 3 clicks\npress done, to change to german\n"
               "\nsaved birthdays: 3"
            << 1LL;
        QTest::newRow("45: German, 1 to go")
            << 45
            << "language = en\nnext language = ru, in 1 clicks\npress done, to change to german\n"
               "\nsaved birthdays: 3"
            << 1LL;
        QTest::newRow("46: Russian ends with a line feed")
            << 46
            << "language = en\nnext language = en, in 3 clicks\npress done, to change to russian\n"
               "\nsaved birthdays: 3\n"
            << 2LL;
        QTest::newRow("51: English")
            << 51
            << "language = en\nnext language = Default, in 1 clicks\nkill the app, to change to "
               "english\n\nsaved birthdays: 3"
            << 3LL;
        QTest::newRow("52: device language")
            << 52 << "language = en (default system)\n\nsaved birthdays: 3" << 0LL;
        QTest::newRow("57: still device language")
            << 57 << "language = en (default system)\n\nsaved birthdays: 3" << 0LL;
        QTest::newRow("58: quiet again") << 58 << "" << -1LL;
    }
    void sequence()
    {
        QFETCH(int, taps);
        QFETCH(QString, text);
        QFETCH(qint64, stored);
        MemorySettingsStore settings;
        settings.set(preferredLanguage, 9);
        QStringList log;
        const auto previous = DebugLog::setSink([&](const QString &line) { log << line; });
        HiddenLanguageSwitch secret;
        const HiddenLanguageSwitch::Answer answer = tapTimes(secret, taps, settings);
        DebugLog::setSink(previous);
        QCOMPARE(answer.text, text);
        QCOMPARE(answer.reveal, taps >= 40 && taps <= 42);
        if (stored >= 0)
            QCOMPARE(settings.value(preferredLanguage), stored);
        QCOMPARE(log.size(), taps);
        QCOMPARE(log.last(), QString::number(taps));
    }

    void wrongStateResetsTheCount_data()
    {
        QTest::addColumn<qint64>("color");
        QTest::addColumn<bool>("details");
        QTest::newRow("another theme") << 5LL << false;
        QTest::newRow("details on") << 6LL << true;
    }
    void wrongStateResetsTheCount()
    {
        QFETCH(qint64, color);
        QFETCH(bool, details);
        MemorySettingsStore settings;
        DebugLog::Sink previous = DebugLog::setSink([](const QString &) {});
        HiddenLanguageSwitch secret;
        tapTimes(secret, 39, settings);
        const HiddenLanguageSwitch::Answer answer =
            secret.tap(color, details, Language::English, 3, settings);
        QCOMPARE(secret.count(), 0);
        QCOMPARE(answer.text, QString());
        // Counting starts again from one.
        QCOMPARE(tapTimes(secret, 40, settings).text.isEmpty(), false);
        DebugLog::setSink(previous);
    }

    void diagnosticsListTheScheduledReminders()
    {
        MemorySettingsStore settings;
        settings.set(scheduledReminder(1), QStringLiteral("Selected notification: A"));
        settings.set(scheduledReminder(3), QStringLiteral("Selected notification: C"));
        QCOMPARE(HiddenLanguageSwitch::diagnostics(Language::Russian, 2, settings),
                 "language = ru\nSelected notification: A\nSelected notification: C\n"
                 "\nsaved birthdays: 2\n");
    }
};

QTEST_GUILESS_MAIN(TestHiddenLanguageSwitch)
#include "tst_hiddenlanguageswitch.moc"
