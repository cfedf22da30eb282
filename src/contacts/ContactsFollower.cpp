// SPDX-License-Identifier: MIT
#include "contacts/ContactsFollower.h"

#include "core/DebugLog.h"
#include "settings/SettingsStore.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

// Changes come in bursts (a view's batch, a file and its rename); one step
// takes them all, soon enough that a change shows at once.
constexpr int burstMs = 10;

} // namespace

ContactsFollower::ContactsFollower(SettingsStore &settings, FavoritesStore &favorites,
                                   const UiStrings &strings, std::function<QDate()> today,
                                   QObject *parent)
    : QObject(parent), m_settings(settings), m_favorites(favorites), m_strings(strings),
      m_today(std::move(today))
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(burstMs);
    connect(&m_soon, &QTimer::timeout, this, &ContactsFollower::followNow);
}

void ContactsFollower::addSource(AddressBookSource *source)
{
    m_sources.append(source);
    connect(source, &AddressBookSource::changed, this, [this] {
        if (!m_soon.isActive())
            m_sinceChange.start();
        m_soon.start();
    });
}

bool ContactsFollower::enabled() const
{
    return m_settings.value(SettingsKeys::followContacts);
}

WriteResult ContactsFollower::setEnabled(bool on)
{
    const WriteResult result = m_settings.set(SettingsKeys::followContacts, on);
    if (on)
        start();
    else
        m_soon.stop();
    emit statusChanged();
    return result;
}

void ContactsFollower::start()
{
    if (!enabled())
        return;
    if (!m_started) {
        m_started = true;
        for (AddressBookSource *source : std::as_const(m_sources))
            source->start();
    }
    m_sinceChange.start();
    m_soon.start();
}

void ContactsFollower::followNow()
{
    m_soon.stop();
    if (!enabled() || !m_started)
        return;
    QList<ContactBook> books;
    for (const AddressBookSource *source : std::as_const(m_sources))
        books.append(source->books());
    m_favorites.load();
    const QList<FollowedContact> followed = ContactsFollow::fromTable(
        m_settings.value(SettingsKeys::followedContacts).value_or(QList<QStringList>()));
    ContactsFollow::Step step =
        ContactsFollow::follow(books, followed, m_favorites.all(), m_today());
    m_unreadable = step.unreadable;
    m_following = std::count_if(step.followed.cbegin(), step.followed.cend(),
                                [](const FollowedContact &contact) {
                                    return contact.state == FollowedContact::State::Following;
                                });
    if (step.favoritesChanged() || step.followed != followed) {
        SettingsBatch batch(m_settings);
        if (step.favoritesChanged())
            m_favorites.replaceAll(step.favorites);
        m_settings.set(SettingsKeys::followedContacts, ContactsFollow::toTable(step.followed));
        // A failure is told by the save notice, as every change's is; the
        // next change makes the step again.
        if (const WriteResult stored = batch.finish(); stored) {
            DebugLog::line(u"contacts: %1 added, %2 changed, %3 removed in %4 ms"_s.arg(step.added)
                               .arg(step.changed)
                               .arg(step.removed)
                               .arg(m_sinceChange.elapsed()));
            emit stepStored(m_sinceChange.elapsed());
            if (step.favoritesChanged())
                emit favoritesChanged();
        }
    }
    if (const QString line = statusInEnglish(); line != m_lastLogged) {
        m_lastLogged = line;
        DebugLog::line(u"contacts: "_s + line);
    }
    emit statusChanged();
}

QString ContactsFollower::status() const
{
    return statusText(m_strings);
}

QString ContactsFollower::statusInEnglish() const
{
    static const UiStrings english;
    return statusText(english);
}

QString ContactsFollower::statusText(const UiStrings &strings) const
{
    if (!enabled())
        return {};
    // What is wrong comes first: the person learns why a change does not show.
    using Problem = ContactBook::Problem;
    bool loading = !m_started;
    for (const AddressBookSource *source : m_sources) {
        loading = loading || !source->settled();
        for (const ContactBook &book : source->books()) {
            switch (book.problem) {
            case Problem::None:
                break;
            case Problem::Loading:
                loading = true;
                break;
            case Problem::ServiceMissing:
                return strings[UiText::FollowContactsNoService];
            case Problem::ServiceStopped:
                return strings[UiText::FollowContactsStopped];
            case Problem::FolderUnreadable:
                return strings[UiText::FollowContactsNoFolder].arg(book.problemAt);
            case Problem::FileUnreadable:
                return strings[UiText::FollowContactsNoFile].arg(book.problemAt);
            case Problem::FileCutOff:
                return strings[UiText::FollowContactsCutOff].arg(book.problemAt);
            }
        }
    }
    if (!m_unreadable.isEmpty())
        return strings[UiText::FollowContactsBadCard].arg(m_unreadable.join(u", "_s));
    if (loading)
        return strings[UiText::FollowContactsLoading];
    return strings.counted(UiText::FollowContactsCount, m_following);
}
