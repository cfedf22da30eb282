// SPDX-License-Identifier: MIT
#include "contacts/ContactsFollow.h"

#include "contacts/BirthdayImport.h"

#include <QHash>
#include <QSet>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

using State = FollowedContact::State;

constexpr std::array<std::pair<State, QStringView>, 3> stateNames{{
    {State::Following, u"follow"},
    {State::Kept, u"kept"},
    {State::Deleted, u"deleted"},
}};

// A contact is known by its UID. A card without one (a hand-written file)
// is known by its file and name, so a rename there is a new contact.
QString keyOf(const VCardContact &contact, const QString &source)
{
    return contact.uid.isEmpty() ? source + u'#' + contact.name : contact.uid;
}

// Name and birthday as a favorite compares them.
QString identity(const QString &name, const QString &birthday)
{
    const std::optional<DayOfBirth> day = DayOfBirth::fromStored(birthday);
    return name + u'\x1f' + (day ? day->stored() : birthday);
}

} // namespace

namespace ContactsFollow {

QList<FollowedContact> fromTable(const QList<QStringList> &table)
{
    QList<FollowedContact> result;
    result.reserve(table.size());
    for (const QStringList &row : table) {
        if (row.size() < 6 || row.at(0).isEmpty() || row.at(2).isEmpty())
            continue;
        const auto state =
            std::find_if(stateNames.cbegin(), stateNames.cend(),
                         [&](const auto &named) { return named.second == row.at(3); });
        if (state == stateNames.cend())
            continue;
        result.append({row.at(0), row.at(1), row.at(2), state->first, row.at(4), row.at(5)});
    }
    return result;
}

QList<QStringList> toTable(const QList<FollowedContact> &followed)
{
    QList<QStringList> table;
    table.reserve(followed.size());
    for (const FollowedContact &contact : followed) {
        const auto state =
            std::find_if(stateNames.cbegin(), stateNames.cend(),
                         [&](const auto &named) { return named.first == contact.state; });
        table.append({contact.uid, contact.source, contact.favoriteId, state->second.toString(),
                      contact.name, contact.birthday});
    }
    return table;
}

bool covers(const QString &incompleteSource, const QString &source)
{
    return source == incompleteSource ||
           ((incompleteSource.endsWith(u':') || incompleteSource.endsWith(u'/')) &&
            source.startsWith(incompleteSource));
}

Step follow(const QList<ContactBook> &books, const QList<FollowedContact> &followed,
            const QList<Favorite> &favorites, QDate today)
{
    Step step;
    step.favorites = favorites;
    QHash<QString, qsizetype> favoriteAt;
    favoriteAt.reserve(favorites.size());
    for (qsizetype i = 0; i < favorites.size(); ++i)
        favoriteAt.insert(favorites.at(i).id, i);

    // What the person did since the last step: a favorite that no longer
    // says what its contact said was changed, one that is gone was deleted.
    QList<FollowedContact> memory = followed;
    QHash<QString, qsizetype> memoryAt;
    QSet<QString> bound;
    for (qsizetype i = 0; i < memory.size(); ++i) {
        FollowedContact &contact = memory[i];
        memoryAt.insert(contact.uid, i);
        if (contact.state != State::Following)
            continue;
        const auto found = favoriteAt.constFind(contact.favoriteId);
        if (found == favoriteAt.cend()) {
            contact.state = State::Deleted;
            continue;
        }
        const Favorite &favorite = favorites.at(*found);
        if (favorite.name != contact.name || favorite.birthday != contact.birthday)
            contact.state = State::Kept;
        bound.insert(contact.favoriteId);
    }
    for (const FollowedContact &contact : std::as_const(memory)) {
        if (contact.state == State::Kept)
            bound.insert(contact.favoriteId);
    }

    // What the books say. The first book to name a contact is its source.
    QStringList incomplete;
    QSet<QString> unsure;
    QHash<QString, std::pair<const VCardContact *, QString>> seen;
    QStringList order;
    for (const ContactBook &book : books) {
        for (const QString &uid : book.unreadableUids) {
            unsure.insert(uid);
            step.unreadable.append(uid);
        }
        if (!book.complete) {
            incomplete.append(book.source);
            for (const VCardContact &contact : book.contacts)
                unsure.insert(keyOf(contact, book.source));
            continue;
        }
        for (const VCardContact &contact : book.contacts) {
            const QString key = keyOf(contact, book.source);
            if (seen.contains(key))
                continue;
            seen.insert(key, {&contact, book.source});
            order.append(key);
        }
    }

    // Favorites the person keeps by name and birthday, for a contact seen for
    // the first time: taken over, not doubled.
    QHash<QString, QList<qsizetype>> byIdentity;
    bool byIdentityMade = false;
    const auto sameAs = [&](const QString &name, const QString &birthday) -> qsizetype {
        if (!byIdentityMade) {
            for (qsizetype i = 0; i < favorites.size(); ++i)
                byIdentity[identity(favorites.at(i).name, favorites.at(i).birthday)].append(i);
            byIdentityMade = true;
        }
        for (const qsizetype i : byIdentity.value(identity(name, birthday))) {
            if (!bound.contains(favorites.at(i).id))
                return i;
        }
        return -1;
    };

    QSet<QString> withoutBirthday;
    for (const QString &key : std::as_const(order)) {
        const auto &[contact, source] = *seen.constFind(key);
        const BirthdayImport::Birthday born = BirthdayImport::birthday(*contact, today);
        const qsizetype remembered = memoryAt.value(key, -1);
        if (remembered >= 0)
            memory[remembered].source = source;
        if (born.outcome == ImportOutcome::NoBirthday) {
            withoutBirthday.insert(key);
            continue;
        }
        if (born.outcome != ImportOutcome::Added) {
            // A date that cannot be right is a fault of the card, not a
            // change: what was made of it before stays.
            unsure.insert(key);
            step.unreadable.append(contact->name.isEmpty() ? key : contact->name);
            continue;
        }
        const QString name = contact->name.trimmed().isEmpty() ? u"Unknown"_s : contact->name;
        const QString birthday = born.day->stored();
        if (remembered >= 0) {
            FollowedContact &known = memory[remembered];
            if (known.state == State::Following &&
                (known.name != name || known.birthday != birthday)) {
                Favorite &favorite = step.favorites[favoriteAt.value(known.favoriteId)];
                favorite.name = known.name = name;
                favorite.birthday = known.birthday = birthday;
                ++step.changed;
            }
            continue;
        }
        // A favorite with the card's UUID came from this contact (an earlier
        // import, or a card Tavlo exported) and follows it from now on; one
        // with the same name and birthday may be the person's own and is
        // only kept from doubling.
        const QString uuid = BirthdayImport::uuidOf(contact->uid);
        const auto withUuid = uuid.isEmpty() ? favoriteAt.cend() : favoriteAt.constFind(uuid);
        if (withUuid != favoriteAt.cend() && !bound.contains(uuid) &&
            *withUuid < favorites.size()) {
            const Favorite &favorite = favorites.at(*withUuid);
            const State state =
                identity(favorite.name, favorite.birthday) == identity(name, birthday)
                    ? State::Following
                    : State::Kept;
            memory.append({key, source, uuid, state, favorite.name, favorite.birthday});
        } else if (const qsizetype same = sameAs(name, birthday); same >= 0) {
            const Favorite &favorite = favorites.at(same);
            memory.append({key, source, favorite.id, State::Kept, name, birthday});
        } else {
            const QString id =
                !uuid.isEmpty() && !favoriteAt.contains(uuid) ? uuid : FavoritesStore::newId();
            favoriteAt.insert(id, step.favorites.size());
            step.favorites.append({name, birthday, id});
            memory.append({key, source, id, State::Following, name, birthday});
            ++step.added;
        }
        bound.insert(memory.constLast().favoriteId);
        memoryAt.insert(key, memory.size() - 1);
    }

    // Contacts that are gone, or have no birthday any more, take their
    // favorites with them; what the person chose stays theirs. A contact
    // that still lives keeps the person's choice remembered.
    QSet<QString> removedIds;
    QList<FollowedContact> kept;
    kept.reserve(memory.size());
    for (const FollowedContact &contact : std::as_const(memory)) {
        const bool present = seen.contains(contact.uid);
        const bool hasBirthday = present && !withoutBirthday.contains(contact.uid);
        const bool unknown =
            unsure.contains(contact.uid) ||
            (!present && std::any_of(incomplete.cbegin(), incomplete.cend(),
                                     [&](const QString &s) { return covers(s, contact.source); }));
        if (hasBirthday || unknown) {
            kept.append(contact);
            continue;
        }
        if (contact.state == State::Following) {
            removedIds.insert(contact.favoriteId);
            ++step.removed;
        } else if (present) {
            kept.append(contact);
        }
    }
    if (!removedIds.isEmpty()) {
        step.favorites.removeIf(
            [&](const Favorite &favorite) { return removedIds.contains(favorite.id); });
    }
    step.followed = std::move(kept);
    return step;
}

} // namespace ContactsFollow
