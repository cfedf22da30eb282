// SPDX-License-Identifier: MIT
// Importing 1,000 address-book cards (read, planned against the stored
// favorites, appended in one write of the settings file) and exporting
// 1,000 favorites (read from the settings file, written as vCards and as
// the birthdays calendar).

#include "SoftlyBrokenCard.h"
#include "contacts/BirthdayExport.h"
#include "contacts/BirthdayImport.h"
#include "contacts/ContactsFollower.h"
#include "core/DebugLog.h"
#include "settings/FileSettingsStore.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

constexpr int count = 1000;

// Cards as a phone's address book exports them: vCard 3.0 with a phone
// number, an e-mail address and a folded note.
QByteArray addressBook()
{
    QByteArray file;
    for (int i = 0; i < count; ++i) {
        const QByteArray n = QByteArray::number(i);
        file += "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Person" + n + ";Given;;;\r\nFN:Given Person" + n +
                "\r\nTEL;TYPE=CELL:+49 170 " + n + "\r\nEMAIL:p" + n +
                "@example.org\r\nBDAY:" + QByteArray::number(1940 + i % 80) + "-0" +
                QByteArray::number(1 + i % 9) + "-1" + QByteArray::number(i % 9) +
                "\r\nNOTE:Met at the conference in 2019\\, we talked about the weather for\r\n "
                "a very long time.\r\nEND:VCARD\r\n";
    }
    return file;
}

void importCards(benchmark::State &state)
{
    const QByteArray file = addressBook();
    QTemporaryDir dir;
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(dir.filePath("tavlo.conf"));
        FileSettingsStore settings(dir.filePath("tavlo.conf"));
        FavoritesStore favorites(settings);
        state.ResumeTiming();
        const VCardReader::Result read = VCardReader::read(file);
        const BirthdayImport::Imported imported =
            BirthdayImport::importInto(favorites, read.contacts, QDate(2026, 11, 22));
        if (imported.summary.added != count || !imported.stored)
            state.SkipWithError("not every card was added");
    }
}
BENCHMARK(importCards)->Unit(benchmark::kMillisecond);

void exportFavorites(benchmark::State &state)
{
    QTemporaryDir dir;
    FileSettingsStore settings(dir.filePath("tavlo.conf"));
    FavoritesStore favorites(settings);
    favorites.appendMany(
        BirthdayImport::plan(VCardReader::read(addressBook()).contacts, {}, QDate(2026, 11, 22))
            .additions);
    UiStrings strings;
    for (auto _ : state) {
        FileSettingsStore reading(dir.filePath("tavlo.conf"));
        FavoritesStore stored(reading);
        stored.load();
        const QList<Favorite> list = stored.all();
        const auto cards = BirthdayExport::vCards(list);
        const auto calendar = BirthdayExport::calendar(list, strings, QDateTime::currentDateTime());
        if (cards.written != count || calendar.written != count)
            state.SkipWithError("not every favorite was written");
        benchmark::DoNotOptimize(cards.text.size() + calendar.text.size());
    }
}
BENCHMARK(exportFavorites)->Unit(benchmark::kMillisecond);

// One 4 MB vCard 2.1 card: a long parameter part and a quoted-printable
// name with about 330,000 soft line breaks.
void readSoftlyBrokenCard(benchmark::State &state)
{
    const QByteArray file = softlyBrokenCard(4 * 1000 * 1000);
    for (auto _ : state) {
        const VCardReader::Result read = VCardReader::read(file);
        if (read.contacts.size() != 1)
            state.SkipWithError("the card was not read");
        benchmark::DoNotOptimize(read.contacts.constFirst().name.size());
    }
}
BENCHMARK(readSoftlyBrokenCard)->Unit(benchmark::kMillisecond);

} // namespace

// An address book as the follower sees it once read: 2,000 contacts, 1,500
// with a birthday.
class ReadBook : public AddressBookSource
{
public:
    ReadBook()
    {
        m_book.source = QStringLiteral("eds:system-address-book");
        m_book.complete = true;
        for (int i = 0; i < 2000; ++i) {
            VCardContact contact;
            contact.uid = QStringLiteral("contact-%1").arg(i);
            contact.name = QStringLiteral("Given Person%1").arg(i);
            if (i % 4 != 3)
                contact.birthday = QStringLiteral("%1-%2-%3")
                                       .arg(1940 + i % 80)
                                       .arg(1 + i % 12, 2, 10, QLatin1Char('0'))
                                       .arg(1 + i % 28, 2, 10, QLatin1Char('0'));
            m_book.contacts.append(contact);
        }
    }
    void start() override {}
    QList<ContactBook> books() const override { return {m_book}; }
    bool settled() const override { return true; }
    ContactBook m_book;
};

QCoreApplication &application()
{
    static int argc = 1;
    static char name[] = "bench_contacts";
    static char *argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    // The follower's log lines would drown the figures.
    DebugLog::setSink([](const QString &) {});
    return app;
}

// The first follow of a full address book, stored in the settings file.
void followFirst(benchmark::State &state)
{
    application();
    QTemporaryDir dir;
    ReadBook book;
    UiStrings strings;
    for (auto _ : state) {
        state.PauseTiming();
        QFile::remove(dir.filePath("tavlo.conf"));
        FileSettingsStore settings(dir.filePath("tavlo.conf"));
        settings.set(SettingsKeys::followContacts, true);
        FavoritesStore favorites(settings);
        ContactsFollower follower(settings, favorites, strings, [] { return QDate(2026, 11, 22); });
        follower.addSource(&book);
        follower.start();
        state.ResumeTiming();
        follower.followNow();
        state.PauseTiming();
        favorites.load();
        if (favorites.count() != 1500)
            state.SkipWithError("not every birthday was followed");
        state.ResumeTiming();
    }
}
BENCHMARK(followFirst)->Unit(benchmark::kMillisecond);

// One contact renamed in that address book, stored in the settings file.
void followOneChange(benchmark::State &state)
{
    application();
    QTemporaryDir dir;
    ReadBook book;
    UiStrings strings;
    FileSettingsStore settings(dir.filePath("tavlo.conf"));
    settings.set(SettingsKeys::followContacts, true);
    FavoritesStore favorites(settings);
    ContactsFollower follower(settings, favorites, strings, [] { return QDate(2026, 11, 22); });
    follower.addSource(&book);
    follower.start();
    follower.followNow();
    int round = 0;
    for (auto _ : state) {
        book.m_book.contacts[100].name = QStringLiteral("Renamed %1").arg(++round);
        follower.followNow();
    }
    favorites.load();
    const QList<Favorite> all = favorites.all();
    if (std::none_of(all.cbegin(), all.cend(), [&](const Favorite &favorite) {
            return favorite.name == QStringLiteral("Renamed %1").arg(round);
        }))
        state.SkipWithError("the change was not followed");
}
BENCHMARK(followOneChange)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
