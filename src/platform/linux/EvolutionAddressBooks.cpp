// SPDX-License-Identifier: MIT
#include "platform/linux/EvolutionAddressBooks.h"

#include "core/DebugLog.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QMap>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <map>

// GLib's headers name a structure field "signals", which Qt defines away.
#pragma push_macro("signals")
#undef signals
#include <libebook/libebook.h>
#pragma pop_macro("signals")

#include <QLibrary>

using namespace Qt::Literals::StringLiterals;

namespace {

// The client library brings dozens of libraries of its own (HTTP, crypto,
// phone numbers, databases): loading and relocating them took longer than
// drawing the first frame, and held megabytes, in every start, while most
// starts never read an address book. It is opened when one is first read.
// GLib itself is loaded with Qt; GObject comes with the library.
#define TAVLO_EBOOK_FUNCTIONS(X)                                                                   \
    X(e_book_client_connect)                                                                       \
    X(e_book_client_connect_finish)                                                                \
    X(e_book_client_get_type)                                                                      \
    X(e_book_client_get_view)                                                                      \
    X(e_book_client_get_view_finish)                                                               \
    X(e_book_client_view_start)                                                                    \
    X(e_book_client_view_stop)                                                                     \
    X(e_book_query_any_field_contains)                                                             \
    X(e_book_query_to_string)                                                                      \
    X(e_book_query_unref)                                                                          \
    X(e_contact_get_const)                                                                         \
    X(e_contact_get_type)                                                                          \
    X(e_source_get_display_name)                                                                   \
    X(e_source_get_type)                                                                           \
    X(e_source_get_uid)                                                                            \
    X(e_source_has_extension)                                                                      \
    X(e_source_registry_check_enabled)                                                             \
    X(e_source_registry_list_enabled)                                                              \
    X(e_source_registry_new)                                                                       \
    X(e_source_registry_new_finish)                                                                \
    X(e_vcard_get_type)                                                                            \
    X(e_vcard_to_string)                                                                           \
    X(g_object_ref)                                                                                \
    X(g_object_unref)                                                                              \
    X(g_signal_connect_data)                                                                       \
    X(g_signal_handlers_disconnect_matched)                                                        \
    X(g_type_check_instance_cast)

struct ClientLibrary
{
#define TAVLO_EBOOK_POINTER(name) decltype(&::name) name = nullptr;
    TAVLO_EBOOK_FUNCTIONS(TAVLO_EBOOK_POINTER)
#undef TAVLO_EBOOK_POINTER

    // Whether the library and every function are there; tried once.
    bool load()
    {
        static const bool found = [this] {
            QLibrary library(u"ebook-1.2"_s, 21);
            if (!library.load())
                return false;
            bool all = true;
#define TAVLO_EBOOK_RESOLVE(name)                                                                  \
    name = reinterpret_cast<decltype(name)>(library.resolve(#name));                               \
    all = all && name;
            TAVLO_EBOOK_FUNCTIONS(TAVLO_EBOOK_RESOLVE)
#undef TAVLO_EBOOK_RESOLVE
            return all;
        }();
        return found;
    }
};

ClientLibrary ebook;

} // namespace

// Every call below, including those in GLib's and the library's macros,
// goes through the pointers; none is made before load() succeeded.
#define e_book_client_connect (ebook.e_book_client_connect)
#define e_book_client_connect_finish (ebook.e_book_client_connect_finish)
#define e_book_client_get_type (ebook.e_book_client_get_type)
#define e_book_client_get_view (ebook.e_book_client_get_view)
#define e_book_client_get_view_finish (ebook.e_book_client_get_view_finish)
#define e_book_client_view_start (ebook.e_book_client_view_start)
#define e_book_client_view_stop (ebook.e_book_client_view_stop)
#define e_book_query_any_field_contains (ebook.e_book_query_any_field_contains)
#define e_book_query_to_string (ebook.e_book_query_to_string)
#define e_book_query_unref (ebook.e_book_query_unref)
#define e_contact_get_const (ebook.e_contact_get_const)
#define e_contact_get_type (ebook.e_contact_get_type)
#define e_source_get_display_name (ebook.e_source_get_display_name)
#define e_source_get_type (ebook.e_source_get_type)
#define e_source_get_uid (ebook.e_source_get_uid)
#define e_source_has_extension (ebook.e_source_has_extension)
#define e_source_registry_check_enabled (ebook.e_source_registry_check_enabled)
#define e_source_registry_list_enabled (ebook.e_source_registry_list_enabled)
#define e_source_registry_new (ebook.e_source_registry_new)
#define e_source_registry_new_finish (ebook.e_source_registry_new_finish)
#define e_vcard_get_type (ebook.e_vcard_get_type)
#define e_vcard_to_string (ebook.e_vcard_to_string)
#undef g_object_ref
#define g_object_ref(object) ((ebook.g_object_ref)(object))
#define g_object_unref (ebook.g_object_unref)
#define g_signal_connect_data (ebook.g_signal_connect_data)
#define g_signal_handlers_disconnect_matched (ebook.g_signal_handlers_disconnect_matched)
#define g_type_check_instance_cast (ebook.g_type_check_instance_cast)

namespace {

// A phone may take a while to start the service.
constexpr guint32 connectWaitSeconds = 30;
// After a failure, the service is asked again after this long, then twice
// as long each time, up to the last.
constexpr int firstRetryMs = 2000;
constexpr int lastRetryMs = 60000;
// A one-off import waits this long at most for every book.
constexpr int readNowMs = 60000;

QString fromUtf8(const char *text)
{
    return QString::fromUtf8(text ? text : "");
}

} // namespace

struct EvolutionAddressBooks::Private
{
    struct Book
    {
        Private *owner = nullptr;
        QString uid;
        QString name;
        ESource *source = nullptr;
        EBookClient *client = nullptr;
        EBookClientView *view = nullptr;
        bool complete = false;
        ContactBook::Problem problem = ContactBook::Problem::Loading;
        QMap<QString, VCardContact> contacts;
        QSet<QString> unreadable;
        int retryMs = firstRetryMs;
        // Each connection attempt's number; an answer to an older one is late.
        int attempt = 0;
    };

    EvolutionAddressBooks *q = nullptr;
    ESourceRegistry *registry = nullptr;
    bool started = false;
    bool quiet = false;
    bool registryFailed = false;
    int registryRetryMs = firstRetryMs;
    std::map<QString, std::unique_ptr<Book>> books;

    // What an answer of the service needs to find its book, if both still
    // live: GLib calls back after we may be gone.
    struct Pending
    {
        QPointer<EvolutionAddressBooks> owner;
        QString uid;
        int attempt = 0;
    };

    void log(const QString &line) const
    {
        if (!quiet)
            DebugLog::line(line);
    }

    Book *find(const Pending &pending)
    {
        if (!pending.owner)
            return nullptr;
        const auto found = books.find(pending.uid);
        if (found == books.end() || found->second->attempt != pending.attempt)
            return nullptr;
        return found->second.get();
    }

    void askRegistry()
    {
        e_source_registry_new(nullptr, &Private::registryReady,
                              new Pending{QPointer<EvolutionAddressBooks>(q), {}, 0});
    }

    static void registryReady(GObject *, GAsyncResult *result, gpointer data)
    {
        std::unique_ptr<Pending> pending(static_cast<Pending *>(data));
        GError *error = nullptr;
        ESourceRegistry *registry = e_source_registry_new_finish(result, &error);
        if (!pending->owner) {
            if (registry)
                g_object_unref(registry);
            g_clear_error(&error);
            return;
        }
        Private *d = pending->owner->d.get();
        if (!registry) {
            d->log(u"evolution-data-server: no source registry (%1)"_s.arg(
                fromUtf8(error ? error->message : nullptr)));
            g_clear_error(&error);
            d->registryFailed = true;
            QTimer::singleShot(d->registryRetryMs, d->q, [d] { d->askRegistry(); });
            d->registryRetryMs = std::min(d->registryRetryMs * 2, lastRetryMs);
            emit d->q->changed();
            return;
        }
        d->registryFailed = false;
        d->registry = registry;
        g_signal_connect(registry, "source-added", G_CALLBACK(&Private::sourceAppeared), d);
        g_signal_connect(registry, "source-enabled", G_CALLBACK(&Private::sourceAppeared), d);
        g_signal_connect(registry, "source-removed", G_CALLBACK(&Private::sourceGone), d);
        g_signal_connect(registry, "source-disabled", G_CALLBACK(&Private::sourceGone), d);
        GList *sources = e_source_registry_list_enabled(registry, E_SOURCE_EXTENSION_ADDRESS_BOOK);
        for (GList *item = sources; item; item = item->next)
            d->add(E_SOURCE(item->data));
        g_list_free_full(sources, g_object_unref);
        emit d->q->changed();
    }

    static void sourceAppeared(ESourceRegistry *, ESource *source, gpointer data)
    {
        auto *d = static_cast<Private *>(data);
        if (!e_source_has_extension(source, E_SOURCE_EXTENSION_ADDRESS_BOOK) ||
            !e_source_registry_check_enabled(d->registry, source))
            return;
        d->add(source);
        emit d->q->changed();
    }

    static void sourceGone(ESourceRegistry *, ESource *source, gpointer data)
    {
        auto *d = static_cast<Private *>(data);
        const auto found = d->books.find(fromUtf8(e_source_get_uid(source)));
        if (found == d->books.end())
            return;
        d->drop(*found->second);
        d->books.erase(found);
        emit d->q->changed();
    }

    void add(ESource *source)
    {
        const QString uid = fromUtf8(e_source_get_uid(source));
        if (books.count(uid))
            return;
        auto book = std::make_unique<Book>();
        book->owner = this;
        book->uid = uid;
        book->name = fromUtf8(e_source_get_display_name(source));
        book->source = E_SOURCE(g_object_ref(source));
        Book &added = *book;
        books.emplace(uid, std::move(book));
        connect(added);
    }

    void connect(Book &book)
    {
        ++book.attempt;
        e_book_client_connect(
            book.source, connectWaitSeconds, nullptr, &Private::connected,
            new Pending{QPointer<EvolutionAddressBooks>(q), book.uid, book.attempt});
    }

    static void connected(GObject *, GAsyncResult *result, gpointer data)
    {
        std::unique_ptr<Pending> pending(static_cast<Pending *>(data));
        GError *error = nullptr;
        EClient *client = e_book_client_connect_finish(result, &error);
        Book *book = pending->owner ? pending->owner->d->find(*pending) : nullptr;
        if (!book) {
            if (client)
                g_object_unref(client);
            g_clear_error(&error);
            return;
        }
        if (!client) {
            book->owner->failed(*book, u"could not connect"_s, error);
            return;
        }
        book->client = E_BOOK_CLIENT(client);
        g_signal_connect(client, "backend-died", G_CALLBACK(&Private::backendDied), book);
        // Every card: the follower needs to see birthdays removed, too.
        EBookQuery *query = e_book_query_any_field_contains("");
        gchar *sexp = e_book_query_to_string(query);
        e_book_query_unref(query);
        e_book_client_get_view(book->client, sexp, nullptr, &Private::viewReady,
                               new Pending{pending->owner, book->uid, book->attempt});
        g_free(sexp);
    }

    static void viewReady(GObject *client, GAsyncResult *result, gpointer data)
    {
        std::unique_ptr<Pending> pending(static_cast<Pending *>(data));
        GError *error = nullptr;
        EBookClientView *view = nullptr;
        const bool ok = e_book_client_get_view_finish(E_BOOK_CLIENT(client), result, &view, &error);
        Book *book = pending->owner ? pending->owner->d->find(*pending) : nullptr;
        if (!book) {
            if (view)
                g_object_unref(view);
            g_clear_error(&error);
            return;
        }
        if (!ok || !view) {
            book->owner->failed(*book, u"could not open a view"_s, error);
            return;
        }
        book->view = view;
        g_signal_connect(view, "objects-added", G_CALLBACK(&Private::objectsChanged), book);
        g_signal_connect(view, "objects-modified", G_CALLBACK(&Private::objectsChanged), book);
        g_signal_connect(view, "objects-removed", G_CALLBACK(&Private::objectsRemoved), book);
        g_signal_connect(view, "complete", G_CALLBACK(&Private::viewComplete), book);
        // A view started again after the service came back sends every card
        // anew: what it had before is replaced once it is complete.
        book->contacts.clear();
        book->unreadable.clear();
        e_book_client_view_start(view, &error);
        if (error)
            book->owner->failed(*book, u"could not start the view"_s, error);
    }

    static void objectsChanged(EBookClientView *, const GSList *contacts, gpointer data)
    {
        auto *book = static_cast<Book *>(data);
        for (const GSList *item = contacts; item; item = item->next) {
            EContact *contact = E_CONTACT(item->data);
            const QString uid =
                fromUtf8(static_cast<const char *>(e_contact_get_const(contact, E_CONTACT_UID)));
            gchar *text = e_vcard_to_string(E_VCARD(contact), EVC_FORMAT_VCARD_30);
            VCardReader::Result read = VCardReader::read(QByteArray(text));
            g_free(text);
            if (read.error != VCardReader::Error::None || read.contacts.size() != 1) {
                book->contacts.remove(uid);
                book->unreadable.insert(uid);
                continue;
            }
            VCardContact card = std::move(read.contacts.first());
            if (card.uid.isEmpty())
                card.uid = uid;
            book->unreadable.remove(uid);
            book->contacts.insert(uid, std::move(card));
        }
        emit book->owner->q->changed();
    }

    static void objectsRemoved(EBookClientView *, const GSList *uids, gpointer data)
    {
        auto *book = static_cast<Book *>(data);
        for (const GSList *item = uids; item; item = item->next) {
            const QString uid = fromUtf8(static_cast<const char *>(item->data));
            book->contacts.remove(uid);
            book->unreadable.remove(uid);
        }
        emit book->owner->q->changed();
    }

    static void viewComplete(EBookClientView *, const GError *error, gpointer data)
    {
        auto *book = static_cast<Book *>(data);
        if (error) {
            GError *copy = g_error_copy(error);
            book->owner->failed(*book, u"the view failed"_s, copy);
            return;
        }
        book->complete = true;
        book->problem = ContactBook::Problem::None;
        book->retryMs = firstRetryMs;
        emit book->owner->q->changed();
    }

    static void backendDied(EClient *, gpointer data)
    {
        auto *book = static_cast<Book *>(data);
        book->owner->failed(*book, u"the address-book service stopped"_s, nullptr,
                            ContactBook::Problem::ServiceStopped);
    }

    // The book keeps the cards it had, as not complete, and is asked again.
    void failed(Book &book, const QString &what, GError *error,
                ContactBook::Problem problem = ContactBook::Problem::ServiceMissing)
    {
        log(u"evolution-data-server %1: %2%3"_s.arg(
            book.uid, what, error ? u" ("_s + fromUtf8(error->message) + u')' : QString()));
        g_clear_error(&error);
        drop(book);
        book.complete = false;
        book.problem = problem;
        ++book.attempt;
        const QString uid = book.uid;
        const int attempt = book.attempt;
        QTimer::singleShot(book.retryMs, q, [this, uid, attempt] {
            const auto found = books.find(uid);
            if (found != books.end() && found->second->attempt == attempt)
                connect(*found->second);
        });
        book.retryMs = std::min(book.retryMs * 2, lastRetryMs);
        emit q->changed();
    }

    // Lets go of the book's view and client; GLib tells it nothing more.
    static void drop(Book &book)
    {
        if (book.view) {
            g_signal_handlers_disconnect_by_data(book.view, &book);
            GError *ignored = nullptr;
            e_book_client_view_stop(book.view, &ignored);
            g_clear_error(&ignored);
            g_clear_object(&book.view);
        }
        if (book.client) {
            g_signal_handlers_disconnect_by_data(book.client, &book);
            g_clear_object(&book.client);
        }
    }
};

EvolutionAddressBooks::EvolutionAddressBooks(QObject *parent)
    : AddressBookSource(parent), d(std::make_unique<Private>())
{
    d->q = this;
}

EvolutionAddressBooks::~EvolutionAddressBooks()
{
    for (auto &[uid, book] : d->books) {
        Private::drop(*book);
        g_clear_object(&book->source);
    }
    if (d->registry) {
        g_signal_handlers_disconnect_by_data(d->registry, d.get());
        g_clear_object(&d->registry);
    }
}

bool EvolutionAddressBooks::eventLoopRunsGlib()
{
    const QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    return dispatcher && (dispatcher->inherits("QEventDispatcherGlib") ||
                          dispatcher->inherits("QPAEventDispatcherGlib"));
}

void EvolutionAddressBooks::start()
{
    if (d->started)
        return;
    d->started = true;
    if (!eventLoopRunsGlib()) {
        // Qt built without GLib, or QT_NO_GLIB set: no answer would arrive.
        d->log(u"evolution-data-server: the event loop does not run GLib's"_s);
        d->registryFailed = true;
        return;
    }
    if (!ebook.load()) {
        d->log(u"evolution-data-server: its client library libebook-1.2 is not installed"_s);
        d->registryFailed = true;
        return;
    }
    d->askRegistry();
}

QList<ContactBook> EvolutionAddressBooks::books() const
{
    if (!d->registry) {
        ContactBook whole;
        whole.source = u"eds:"_s;
        whole.problem = d->registryFailed ? ContactBook::Problem::ServiceMissing
                                          : ContactBook::Problem::Loading;
        return {whole};
    }
    QList<ContactBook> result;
    for (const auto &[uid, book] : d->books) {
        ContactBook read;
        read.source = u"eds:"_s + uid;
        read.complete = book->complete;
        read.contacts = book->contacts.values();
        read.unreadableUids = book->unreadable.values();
        read.problem = book->problem;
        read.problemAt = book->name;
        result.append(read);
    }
    return result;
}

bool EvolutionAddressBooks::settled() const
{
    if (!d->registry)
        return d->registryFailed;
    return std::all_of(d->books.cbegin(), d->books.cend(), [](const auto &entry) {
        return entry.second->complete || entry.second->problem != ContactBook::Problem::Loading;
    });
}

PhoneContactsRead EvolutionAddressBooks::readNow(EvolutionAddressBooks &books)
{
    PhoneContactsRead result;
    PhoneContacts::readFolder(PhoneContacts::plasmaFolder(), result);
    books.start();
    if (!books.settled()) {
        QEventLoop loop;
        QObject::connect(&books, &AddressBookSource::changed, &loop, [&] {
            if (books.settled())
                loop.quit();
        });
        QTimer::singleShot(readNowMs, &loop, &QEventLoop::quit);
        loop.exec();
    }
    for (const ContactBook &book : books.books()) {
        if (book.source == u"eds:")
            continue;
        result.contacts.append(book.contacts);
        result.sources.append(u"evolution-data-server %1: %2 cards%3"_s.arg(
            book.source.mid(4), QString::number(book.contacts.size()),
            book.complete ? QString() : u" (not all read)"_s));
    }
    return result;
}

void EvolutionAddressBooks::setQuiet(bool quiet)
{
    d->quiet = quiet;
}

PhoneContactsRead EvolutionAddressBooks::readAll()
{
    EvolutionAddressBooks books;
    books.setQuiet(true);
    return readNow(books);
}
