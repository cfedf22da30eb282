// SPDX-License-Identifier: MIT
#include "contacts/BirthdayImport.h"

#include "core/DatePattern.h"

#include <QRegularExpression>
#include <QSet>

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
    case ImportOutcome::NoBirthYear:
        ++noBirthYear;
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

// A favorite told apart by name and day of birth; a stored birthday that is
// no record date is compared as its text.
QString identity(const QString &name, const QString &birthday)
{
    static const DatePattern record(u"dd MM yyyy");
    const std::optional<QDate> date = record.parse(birthday);
    return name + u'\x1f' + (date ? date->toString(Qt::ISODate) : birthday);
}

// As every favorite is stored: "12 3 1985", the year always of four digits.
QString recordText(QDate date)
{
    static const DatePattern record(u"d M yyyy");
    return record.format(date);
}

} // namespace

namespace BirthdayImport {

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
    static const QRegularExpression withoutYear(u"^--(\\d{2})-?(\\d{2})$"_s);
    const QString &text = *contact.birthday;
    if (withoutYear.match(text).hasMatch())
        return {ImportOutcome::NoBirthYear, {}};
    const QRegularExpressionMatch match = withYear.match(text);
    if (!match.hasMatch())
        return {ImportOutcome::UnreadableDate, {}};
    const int year = match.capturedView(1).toInt();
    // Some phones write the year 0000 (or 1604, with Apple's mark) for "unknown".
    if (contact.birthYearOmitted || year == 0)
        return {ImportOutcome::NoBirthYear, {}};
    const QDate date(year, match.capturedView(2).toInt(), match.capturedView(3).toInt());
    if (!date.isValid())
        return {ImportOutcome::ImpossibleDate, {}};
    if (date > today)
        return {ImportOutcome::FutureDate, {}};
    return {ImportOutcome::Added, date};
}

ImportPlan plan(const QList<VCardContact> &contacts, const QList<Favorite> &existing, QDate today)
{
    ImportPlan result;
    QSet<QString> known;
    known.reserve(existing.size() + contacts.size());
    for (const Favorite &favorite : existing)
        known.insert(identity(favorite.name, favorite.birthday));
    for (const VCardContact &contact : contacts) {
        const Birthday born = birthday(contact, today);
        if (born.outcome != ImportOutcome::Added) {
            result.summary.count(born.outcome);
            continue;
        }
        // As the add dialog does: a card without a name is someone "Unknown".
        const QString name = contact.name.trimmed().isEmpty() ? u"Unknown"_s : contact.name;
        const QString birthdayText = recordText(born.date);
        const QString key = identity(name, birthdayText);
        if (known.contains(key)) {
            result.summary.count(ImportOutcome::AlreadyThere);
            continue;
        }
        known.insert(key);
        result.additions.append({name, birthdayText});
        result.summary.count(ImportOutcome::Added);
    }
    return result;
}

ImportSummary importInto(FavoritesStore &store, const QList<VCardContact> &contacts, QDate today)
{
    store.load();
    const ImportPlan result = plan(contacts, store.all(), today);
    store.appendMany(result.additions);
    return result.summary;
}

QString summaryText(const ImportSummary &summary, const UiStrings &strings)
{
    QString text = strings[UiText::ImportAdded].arg(summary.added) + u", "_s +
                   strings[UiText::ImportAlreadyThere].arg(summary.alreadyThere) + u", "_s +
                   strings[UiText::ImportSkipped].arg(summary.skipped());
    const std::pair<qsizetype, UiText> reasons[] = {
        {summary.noBirthday, UiText::ImportNoBirthday},
        {summary.noBirthYear, UiText::ImportNoBirthYear},
        {summary.impossibleDate, UiText::ImportImpossibleDate},
        {summary.futureDate, UiText::ImportFutureDate},
        {summary.unreadableDate, UiText::ImportUnreadableDate},
    };
    QStringList named;
    for (const auto &[number, entry] : reasons) {
        if (number > 0)
            named.append(strings[entry].arg(number));
    }
    if (!named.isEmpty())
        text += u" ("_s + named.join(u", "_s) + u')';
    return text;
}

} // namespace BirthdayImport
