// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/ContactsFollow.h"

#include <QList>
#include <QObject>

// A place that holds address books and tells when they change: Plasma
// Mobile's contacts folder, evolution-data-server. Every call and signal is
// on the thread that made it, which must run an event loop.
class AddressBookSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Starts reading and watching; books() fills as the books are read.
    virtual void start() = 0;
    // Every book as read so far; a book still loading is not complete.
    virtual QList<ContactBook> books() const = 0;
    // Whether every book has been read once, or has failed.
    virtual bool settled() const = 0;

signals:
    // Some book changed, was read or failed.
    void changed();
};
