// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/PhoneContacts.h"

#include <QDBusConnection>

// The address books of evolution-data-server (Phosh, GNOME), read over its
// D-Bus interface: the source registry names the enabled address books, the
// address-book factory opens each, and each gives all its cards as vCards.
// Without the service (or without a session bus) it reads nothing and says
// nothing: a phone without it imports from its other books alone.
namespace EvolutionAddressBooks {

void read(const QDBusConnection &bus, PhoneContactsRead &read);

// The phone's address books on this system: Plasma Mobile's folder and
// evolution-data-server's books on the session bus.
PhoneContactsRead readAll();

} // namespace EvolutionAddressBooks
