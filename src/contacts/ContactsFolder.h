// SPDX-License-Identifier: MIT
#pragma once

#include "contacts/AddressBookSource.h"

#include <QFileSystemWatcher>
#include <QThreadPool>
#include <QTimer>

// Plasma Mobile's contacts folder (PhoneContacts::plasmaFolder()) as address
// books: each *.vcf and *.vcard file in it and one folder level below is a
// book ("folder:own/a.vcf"). The folder and its files are watched; after a
// change the files are read again on a thread of their own, so a large file
// never holds up the screen. A file replaced by renaming another over it, as
// address books write, is read once it is in place.
class ContactsFolder : public AddressBookSource
{
    Q_OBJECT

public:
    explicit ContactsFolder(QString folder, QObject *parent = nullptr);
    ~ContactsFolder() override;

    void start() override;
    QList<ContactBook> books() const override { return m_books; }
    bool settled() const override { return m_settled; }

    // Reads the folder at once, on this thread: for a one-off import.
    static QList<ContactBook> read(const QString &folder);

private:
    void readAgain();
    void take(const QList<ContactBook> &books, const QStringList &watched);

    QString m_folder;
    QFileSystemWatcher m_watcher;
    // Changes come in bursts (a temporary file, then its rename).
    QTimer m_settle;
    QThreadPool m_reader;
    bool m_reading = false;
    bool m_readAgain = false;
    bool m_settled = false;
    QList<ContactBook> m_books;
};
