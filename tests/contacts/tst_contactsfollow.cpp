// SPDX-License-Identifier: MIT
#include "TestFiles.h"
#include "contacts/ContactsFolder.h"
#include "contacts/ContactsFollow.h"
#include "contacts/ContactsFollower.h"
#include "settings/MemorySettingsStore.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;
using State = FollowedContact::State;

Q_DECLARE_METATYPE(QList<Favorite>)
Q_DECLARE_METATYPE(QList<FollowedContact>)
Q_DECLARE_METATYPE(QList<ContactBook>)

namespace {

const QDate today(2026, 6, 1);

VCardContact card(const QString &uid, const QString &name, const QString &birthday = {})
{
    VCardContact contact;
    contact.uid = uid;
    contact.name = name;
    if (!birthday.isEmpty())
        contact.birthday = birthday;
    return contact;
}

ContactBook book(const QString &source, QList<VCardContact> cards, bool complete = true)
{
    ContactBook result;
    result.source = source;
    result.complete = complete;
    result.contacts = std::move(cards);
    return result;
}

const QString uuid = u"0b7a8d3e-1f2c-4d5e-8a9b-1c2d3e4f5a6b"_s;
const Favorite own{u"Own"_s, u"1 1 2000"_s, u"own"_s};
const Favorite jane{u"Jane"_s, u"12 3 1985"_s, u"f1"_s};
const FollowedContact followingJane{u"jane"_s,        u"eds:a"_s, u"f1"_s,
                                    State::Following, u"Jane"_s,  u"12 3 1985"_s};

FollowedContact with(FollowedContact contact, State state)
{
    contact.state = state;
    return contact;
}

// The favorites without the identities that following makes up.
QStringList shown(const QList<Favorite> &favorites)
{
    QStringList result;
    for (const Favorite &favorite : favorites)
        result.append(favorite.name + u'=' + favorite.birthday);
    return result;
}

QStringList states(const QList<FollowedContact> &followed)
{
    static const char *names[] = {"follow", "kept", "deleted"};
    QStringList result;
    for (const FollowedContact &contact : followed)
        result.append(contact.uid + u':' + QLatin1String(names[int(contact.state)]) + u'@' +
                      contact.source);
    return result;
}

} // namespace

class TestContactsFollow : public QObject
{
    Q_OBJECT

private slots:
    void follow_data();
    void follow();
    void storedTableRoundTrips();
    void followerKeepsThePersonsRename();
};

void TestContactsFollow::follow_data()
{
    QTest::addColumn<QList<Favorite>>("favorites");
    QTest::addColumn<QList<FollowedContact>>("followed");
    QTest::addColumn<QList<ContactBook>>("books");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("expectedStates");

    const QList<FollowedContact> following{followingJane};
    // Favorites, what was followed and the books read; the favorites and
    // the followed contacts after.
    const auto row = [](const char *tag, const QList<Favorite> &favorites,
                        const QList<FollowedContact> &followed, const QList<ContactBook> &books,
                        const QStringList &expected, const QStringList &states) {
        QTest::newRow(tag) << favorites << followed << books << expected << states;
    };

    row("a new contact comes at the end", {own}, {},
        {book(u"eds:a"_s, {card(u"jane"_s, u"Jane"_s, u"1985-03-12"_s)})},
        {u"Own=1 1 2000"_s, u"Jane=12 3 1985"_s}, {u"jane:follow@eds:a"_s});
    row("without a year", {}, {}, {book(u"folder:a.vcf"_s, {card(u"y"_s, u"Yara"_s, u"--0415"_s)})},
        {u"Yara=15 4"_s}, {u"y:follow@folder:a.vcf"_s});
    row("no birthday, nothing to follow", {own}, {},
        {book(u"eds:a"_s, {card(u"n"_s, u"Nobody"_s)})}, {u"Own=1 1 2000"_s}, {});
    row("renamed contact", {own, jane}, following,
        {book(u"eds:a"_s, {card(u"jane"_s, u"Jane Smith"_s, u"1985-03-12"_s)})},
        {u"Own=1 1 2000"_s, u"Jane Smith=12 3 1985"_s}, {u"jane:follow@eds:a"_s});
    row("new birthday, now without a year", {jane}, following,
        {book(u"eds:a"_s, {card(u"jane"_s, u"Jane"_s, u"--0401"_s)})}, {u"Jane=1 4"_s},
        {u"jane:follow@eds:a"_s});
    row("birthday removed", {own, jane}, following,
        {book(u"eds:a"_s, {card(u"jane"_s, u"Jane"_s)})}, {u"Own=1 1 2000"_s}, {});
    row("contact removed", {jane, own}, following, {book(u"eds:a"_s, {})}, {u"Own=1 1 2000"_s}, {});
    row("book disabled or removed", {jane}, following, {book(u"eds:b"_s, {})}, {}, {});
    row("renamed here, then the contact changes", {{u"Janey"_s, u"12 3 1985"_s, u"f1"_s}},
        following, {book(u"eds:a"_s, {card(u"jane"_s, u"Jane Smith"_s, u"1985-03-13"_s)})},
        {u"Janey=12 3 1985"_s}, {u"jane:kept@eds:a"_s});
    row("redated here, then the contact is removed", {{u"Jane"_s, u"13 3 1985"_s, u"f1"_s}},
        following, {book(u"eds:a"_s, {})}, {u"Jane=13 3 1985"_s}, {});
    row("deleted here, then the contact changes", {own}, following,
        {book(u"eds:a"_s, {card(u"jane"_s, u"Jane Smith"_s, u"1985-03-12"_s)})},
        {u"Own=1 1 2000"_s}, {u"jane:deleted@eds:a"_s});
    row("deleted here, birthday removed and given again", {}, {with(followingJane, State::Deleted)},
        {book(u"eds:a"_s, {card(u"jane"_s, u"Jane"_s)})}, {}, {u"jane:deleted@eds:a"_s});
    row("the person's own favorite of the same name and birthday is not doubled",
        {{u"Jane"_s, u"12 3 1985"_s, u"own"_s}}, {},
        {book(u"eds:a"_s, {card(u"jane"_s, u"Jane"_s, u"1985-03-12"_s)})}, {u"Jane=12 3 1985"_s},
        {u"jane:kept@eds:a"_s});
    row("an earlier import of the card follows it", {{u"Jane"_s, u"12 3 1985"_s, uuid}}, {},
        {book(u"eds:a"_s, {card(u"urn:uuid:"_s + uuid, u"Jane"_s, u"1985-03-12"_s)})},
        {u"Jane=12 3 1985"_s}, {u"urn:uuid:"_s + uuid + u":follow@eds:a"_s});
    row("book still loading", {jane}, following, {book(u"eds:a"_s, {}, false)},
        {u"Jane=12 3 1985"_s}, {u"jane:follow@eds:a"_s});
    row("service missing covers its books", {jane}, following,
        {book(u"eds:"_s, {}, false), book(u"folder:x.vcf"_s, {})}, {u"Jane=12 3 1985"_s},
        {u"jane:follow@eds:a"_s});
    row("unreadable folder covers its files", {jane},
        {{u"jane"_s, u"folder:own/j.vcf"_s, u"f1"_s, State::Following, u"Jane"_s, u"12 3 1985"_s}},
        {book(u"folder:own/"_s, {}, false)}, {u"Jane=12 3 1985"_s},
        {u"jane:follow@folder:own/j.vcf"_s});
    row("impossible date keeps the favorite", {jane}, following,
        {book(u"eds:a"_s, {card(u"jane"_s, u"Jane"_s, u"1985-02-30"_s)})}, {u"Jane=12 3 1985"_s},
        {u"jane:follow@eds:a"_s});
    ContactBook malformed = book(u"eds:a"_s, {});
    malformed.unreadableUids = {u"jane"_s};
    row("card that cannot be read keeps the favorite", {jane}, following, {malformed},
        {u"Jane=12 3 1985"_s}, {u"jane:follow@eds:a"_s});
    row("moved to another book", {jane}, following,
        {book(u"eds:a"_s, {}),
         book(u"folder:j.vcf"_s, {card(u"jane"_s, u"Jane"_s, u"19850312"_s)})},
        {u"Jane=12 3 1985"_s}, {u"jane:follow@folder:j.vcf"_s});
    row("the first book to name a contact wins", {}, {},
        {book(u"eds:a"_s, {card(u"j"_s, u"Jane"_s, u"1985-03-12"_s)}),
         book(u"eds:b"_s, {card(u"j"_s, u"Janet"_s, u"1985-03-12"_s)})},
        {u"Jane=12 3 1985"_s}, {u"j:follow@eds:a"_s});
    row("cards without a UID, by file and name", {}, {},
        {book(u"folder:x.vcf"_s,
              {card({}, u"Ann"_s, u"19700506"_s), card({}, u"Bob"_s, u"19700507"_s)})},
        {u"Ann=6 5 1970"_s, u"Bob=7 5 1970"_s},
        {u"folder:x.vcf#Ann:follow@folder:x.vcf"_s, u"folder:x.vcf#Bob:follow@folder:x.vcf"_s});
}

void TestContactsFollow::follow()
{
    QFETCH(QList<Favorite>, favorites);
    QFETCH(QList<FollowedContact>, followed);
    QFETCH(QList<ContactBook>, books);
    QFETCH(QStringList, expected);
    QFETCH(QStringList, expectedStates);

    const ContactsFollow::Step step = ContactsFollow::follow(books, followed, favorites, today);
    QCOMPARE(shown(step.favorites), expected);
    QCOMPARE(states(step.followed), expectedStates);
    // A favorite keeps its identity through every change; the person's own
    // favorites are never touched.
    for (const Favorite &after : step.favorites) {
        for (const Favorite &before : favorites) {
            if (before.id == after.id && before.id == u"own")
                QCOMPARE(after, before);
        }
    }
    // Counted as what happened.
    QCOMPARE(step.favorites.size(), favorites.size() + step.added - step.removed);
    // Following again without a change changes nothing.
    const ContactsFollow::Step again =
        ContactsFollow::follow(books, step.followed, step.favorites, today);
    QVERIFY(!again.favoritesChanged());
    QCOMPARE(again.followed, step.followed);
}

void TestContactsFollow::storedTableRoundTrips()
{
    const QList<FollowedContact> followed{followingJane, with(followingJane, State::Kept),
                                          with(followingJane, State::Deleted)};
    QCOMPARE(ContactsFollow::fromTable(ContactsFollow::toTable(followed)), followed);
    // Rows that make no sense are dropped, not guessed at.
    QCOMPARE(ContactsFollow::fromTable({{u"a"_s, u"eds:a"_s, u"f"_s, u"maybe"_s, u"A"_s, u"1 1"_s},
                                        {u"a"_s, u"eds:a"_s, u"f"_s, u"follow"_s},
                                        {{}, u"eds:a"_s, u"f"_s, u"follow"_s, u"A"_s, u"1 1"_s}}),
             QList<FollowedContact>{});
}

// The follower with the real contacts folder: a file appears, the person
// renames its favorite, the contact changes; the rename stays, and what is
// remembered is written with the favorites.
void TestContactsFollow::followerKeepsThePersonsRename()
{
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    MemorySettingsStore settings;
    settings.set(SettingsKeys::followContacts, true);
    FavoritesStore favorites(settings);
    UiStrings strings;
    ContactsFollower follower(settings, favorites, strings, [] { return today; });
    ContactsFolder contacts(folder.path());
    follower.addSource(&contacts);
    QSignalSpy changed(&follower, &ContactsFollower::favoritesChanged);

    writeFile(folder.filePath(u"ann.vcf"_s),
              "BEGIN:VCARD\r\nVERSION:4.0\r\nUID:ann\r\nFN:Ann\r\nBDAY:19700506\r\nEND:VCARD\r\n");
    follower.start();
    QTRY_COMPARE(changed.size(), 1);
    favorites.load();
    QCOMPARE(shown(favorites.all()), QStringList{u"Ann=6 5 1970"_s});
    QCOMPARE(follower.status(), u"Up to date: 1 birthdays from contacts"_s);

    QVERIFY(favorites.update(0, u"Annie"_s, u"6 5 1970"_s));
    writeFile(
        folder.filePath(u"ann.vcf"_s),
        "BEGIN:VCARD\r\nVERSION:4.0\r\nUID:ann\r\nFN:Ann B\r\nBDAY:19700507\r\nEND:VCARD\r\n");
    QTRY_COMPARE(settings.value(SettingsKeys::followedContacts).value_or(QList<QStringList>()),
                 (QList<QStringList>{{u"ann"_s, u"folder:ann.vcf"_s, favorites.at(0).id, u"kept"_s,
                                      u"Ann"_s, u"6 5 1970"_s}}));
    favorites.load();
    QCOMPARE(shown(favorites.all()), QStringList{u"Annie=6 5 1970"_s});

    // Cut off while being written: nothing changes, and the row says why.
    writeFile(folder.filePath(u"bob.vcf"_s), "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Bob\r\n");
    QTRY_COMPARE(follower.status(),
                 u"The contacts file bob.vcf is cut off; its birthdays stay as they are."_s);
    // Turned off: the favorites stay, and nothing follows.
    QVERIFY(follower.setEnabled(false));
    QVERIFY(follower.status().isEmpty());
    QFile::remove(folder.filePath(u"ann.vcf"_s));
    QTest::qWait(300);
    favorites.load();
    QCOMPARE(shown(favorites.all()), QStringList{u"Annie=6 5 1970"_s});
    QCOMPARE(changed.size(), 1);
}

QTEST_GUILESS_MAIN(TestContactsFollow)
#include "tst_contactsfollow.moc"
