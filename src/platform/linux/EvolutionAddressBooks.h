// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/AddressBookSource.h"
#include "contacts/PhoneContacts.h"

#include <memory>

// The address books of evolution-data-server (Phosh, GNOME), through its
// client library libebook-1.2: the source registry names the enabled books
// (and tells when one is added, removed, enabled or disabled), each book is
// connected and followed through a live client view. Everything happens in
// callbacks of the GLib main context of the thread that made it, which Qt's
// event loop runs on Linux: nothing here waits for the service.
//
// Without the service, or without a session bus, there is one incomplete
// book "eds:" that says so, and the service is asked again later; a book
// whose service stops is asked again too, and meanwhile is incomplete with
// the cards it had.
class EvolutionAddressBooks : public AddressBookSource
{
    Q_OBJECT

public:
    explicit EvolutionAddressBooks(QObject *parent = nullptr);
    ~EvolutionAddressBooks() override;

    // Problems go to the debug log unless quiet (the command line, whose
    // standard output is its answer).
    void setQuiet(bool quiet);

    // Starts once; later calls do nothing.
    void start() override;
    QList<ContactBook> books() const override;
    bool settled() const override;

    // Whether this thread's event loop runs GLib's main context, without
    // which no answer of the service would ever arrive.
    static bool eventLoopRunsGlib();

    // The cards of the phone's address books now, for a one-off import:
    // Plasma Mobile's folder, and `books` (started if need be) once they have
    // all been read or have failed. Runs an event loop meanwhile.
    static PhoneContactsRead readNow(EvolutionAddressBooks &books);
    // The same with books of its own.
    static PhoneContactsRead readAll();

    struct Private;

private:
    std::unique_ptr<Private> d;
};
