// SPDX-License-Identifier: MIT
#include "contacts/BirthdayImport.h"

#include "core/DayOfBirth.h"

#include <QRegularExpression>
#include <QSet>
#include <QUuid>

using namespace Qt::Literals::StringLiterals;

void ImportSummary::count(ImportOutcome outcome)
{
    switch (outcome) {
    case ImportOutcome::Added:
        ++added;
        break;
    case ImportOutcome::AlreadyThere:
        ++alreadyThere;
        break;
    case ImportOutcome::NoBirthday:
        ++noBirthday;
        break;
    case ImportOutcome::ImpossibleDate:
        ++impossibleDate;
        break;
    case ImportOutcome::FutureDate:
        ++futureDate;
        break;
    case ImportOutcome::UnreadableDate:
        ++unreadableDate;
        break;
    }
}

namespace {

// A favorite told apart by name and day of birth; a stored birthday that
// cannot be read is compared as its text.
QString identity(const QString &name, const QString &birthday)
{
    const std::optional<DayOfBirth> day = DayOfBirth::fromStored(birthday);
    return name + u'\x1f' + (day ? day->stored() : birthday);
}

} // namespace

namespace BirthdayImport {

QString uuidOf(const QString &uid)
{
    QStringView text = uid;
    if (text.startsWith(u"urn:uuid:"_s, Qt::CaseInsensitive))
        text = text.sliced(9);
    const QUuid uuid = QUuid::fromString(text);
    return uuid.isNull() ? QString() : uuid.toString(QUuid::WithoutBraces);
}

Birthday birthday(const VCardContact &contact, QDate today)
{
    if (!contact.birthday || contact.birthday->isEmpty())
        return {ImportOutcome::NoBirthday, {}};
    if (contact.birthdayIsText)
        return {ImportOutcome::UnreadableDate, {}};
    // The date part of a date or date-time: 19850312, 1985-03-12,
    // 1985-03-12T00:00:00Z, and without a year --0312 or --03-12.
    static const QRegularExpression withYear(
        u"^(\\d{4})-?(\\d{2})-?(\\d{2})(?:T[0-9:.,]*(?:Z|[+-][0-9:]*)?)?$"_s);
    static const QRegularExpression withoutYear(
        u"^--(\\d{2})-?(\\d{2})(?:T[0-9:.,]*(?:Z|[+-][0-9:]*)?)?$"_s);
    const QString &text = *contact.birthday;
    if (const QRegularExpressionMatch match = withoutYear.match(text); match.hasMatch()) {
        const std::optional<DayOfBirth> day =
            DayOfBirth::withoutYear(match.capturedView(2).toInt(), match.capturedView(1).toInt());
        if (!day)
            return {ImportOutcome::ImpossibleDate, {}};
        return {ImportOutcome::Added, *day};
    }
    const QRegularExpressionMatch match = withYear.match(text);
    if (!match.hasMatch())
        return {ImportOutcome::UnreadableDate, {}};
    const int year = match.capturedView(1).toInt();
    const int month = match.capturedView(2).toInt();
    const int dayOfMonth = match.capturedView(3).toInt();
    // Apple marks the year it writes for "not known" (1604); other address
    // books write 1604, 0000 or 0001 without a mark. A date in another year
    // than the marked one is a date with its year.
    const bool yearOmitted = contact.omittedYear
                                 ? (*contact.omittedYear == -1 || *contact.omittedYear == year)
                                 : DayOfBirth::isPlaceholderYear(year);
    if (yearOmitted) {
        const std::optional<DayOfBirth> day = DayOfBirth::withoutYear(dayOfMonth, month);
        if (!day)
            return {ImportOutcome::ImpossibleDate, {}};
        return {ImportOutcome::Added, *day};
    }
    const QDate date(year, month, dayOfMonth);
    if (!date.isValid())
        return {ImportOutcome::ImpossibleDate, {}};
    if (date > today)
        return {ImportOutcome::FutureDate, {}};
    return {ImportOutcome::Added, DayOfBirth::of(date)};
}

ImportPlan plan(const QList<VCardContact> &contacts, const QList<Favorite> &existing, QDate today)
{
    ImportPlan result;
    // Favorites and the cards before: by name and birthday, and by identity.
    // A card Tavlo exported carries its favorite's identity, so that it is
    // known again after a rename on either side.
    QSet<QString> known;
    QSet<QString> knownIds;
    known.reserve(existing.size() + contacts.size());
    knownIds.reserve(existing.size() + contacts.size());
    for (const Favorite &favorite : existing) {
        known.insert(identity(favorite.name, favorite.birthday));
        knownIds.insert(favorite.id);
    }
    // The cards added by this import, by name and birthday: a card without a
    // UID that repeats one is the same person again, but two cards with
    // their own UIDs are two people, even of the same name and birthday.
    QSet<QString> added;
    for (const VCardContact &contact : contacts) {
        const Birthday born = birthday(contact, today);
        if (born.outcome != ImportOutcome::Added) {
            result.summary.count(born.outcome);
            continue;
        }
        // As the add dialog does: a card without a name is someone "Unknown".
        const QString name = contact.name.trimmed().isEmpty() ? u"Unknown"_s : contact.name;
        const QString birthdayText = born.day->stored();
        const QString key = identity(name, birthdayText);
        const QString id = uuidOf(contact.uid);
        if ((!id.isEmpty() && knownIds.contains(id)) || known.contains(key) ||
            (id.isEmpty() && added.contains(key))) {
            result.summary.count(ImportOutcome::AlreadyThere);
            continue;
        }
        added.insert(key);
        if (!id.isEmpty())
            knownIds.insert(id);
        // A card's own UUID stays the favorite's identity, so that the same
        // person is the same on every device its file reaches.
        result.additions.append({name, birthdayText, id});
        result.summary.count(ImportOutcome::Added);
    }
    return result;
}

Imported importInto(FavoritesStore &store, const QList<VCardContact> &contacts, QDate today)
{
    store.load();
    const ImportPlan result = plan(contacts, store.all(), today);
    return {result.summary, store.appendMany(result.additions)};
}

QString summaryText(const ImportSummary &summary, const UiStrings &strings)
{
    QString text = strings.counted(UiText::ImportAdded, summary.added) + u", "_s +
                   strings.counted(UiText::ImportAlreadyThere, summary.alreadyThere) + u", "_s +
                   strings.counted(UiText::ImportSkipped, summary.skipped());
    const std::pair<qsizetype, UiText> reasons[] = {
        {summary.noBirthday, UiText::ImportNoBirthday},
        {summary.impossibleDate, UiText::ImportImpossibleDate},
        {summary.futureDate, UiText::ImportFutureDate},
        {summary.unreadableDate, UiText::ImportUnreadableDate},
    };
    QStringList named;
    for (const auto &[number, entry] : reasons) {
        if (number > 0)
            named.append(strings.counted(entry, number));
    }
    if (!named.isEmpty())
        text += u" ("_s + named.join(u", "_s) + u')';
    return text;
}

} // namespace BirthdayImport
