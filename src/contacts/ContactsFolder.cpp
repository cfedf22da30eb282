// SPDX-License-Identifier: MIT
#include "contacts/ContactsFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int settleMs = 50;

struct FolderRead
{
    QList<ContactBook> books;
    // The folders and files to watch.
    QStringList watched;
};

void readFile(const QString &path, const QString &source, QList<ContactBook> &books)
{
    ContactBook book;
    book.source = source;
    book.problemAt = source.mid(7);
    QFile file(path);
    if (file.size() > VCardReader::maxBytes || !file.open(QIODevice::ReadOnly)) {
        book.problem = ContactBook::Problem::FileUnreadable;
        books.append(book);
        return;
    }
    const QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        book.problem = ContactBook::Problem::FileUnreadable;
        books.append(book);
        return;
    }
    VCardReader::Result result = VCardReader::read(data);
    if (result.error == VCardReader::Error::Truncated) {
        book.problem = ContactBook::Problem::FileCutOff;
    } else if (result.error != VCardReader::Error::None && !data.trimmed().isEmpty()) {
        book.problem = ContactBook::Problem::FileUnreadable;
    } else {
        book.complete = true;
        book.contacts = std::move(result.contacts);
        book.problemAt.clear();
    }
    books.append(book);
}

FolderRead readFolder(const QString &folder)
{
    FolderRead read;
    const QFileInfo top(folder);
    if (!top.exists())
        return read;
    read.watched.append(folder);
    const QDir dir(folder);
    const QStringList patterns{u"*.vcf"_s, u"*.vcard"_s};
    const auto readDir = [&](const QDir &at, const QString &prefix) {
        const QFileInfo info(at.path());
        if (!info.isReadable() || !info.isExecutable()) {
            read.books.append({u"folder:"_s + prefix,
                               false,
                               {},
                               {},
                               ContactBook::Problem::FolderUnreadable,
                               prefix.isEmpty() ? folder : prefix});
            return false;
        }
        for (const QString &name : at.entryList(patterns, QDir::Files, QDir::Name)) {
            read.watched.append(at.filePath(name));
            readFile(at.filePath(name), u"folder:"_s + prefix + name, read.books);
        }
        return true;
    };
    if (!readDir(dir, QString()))
        return read;
    for (const QString &sub : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        read.watched.append(dir.filePath(sub));
        readDir(QDir(dir.filePath(sub)), sub + u'/');
    }
    return read;
}

} // namespace

ContactsFolder::ContactsFolder(QString folder, QObject *parent)
    : AddressBookSource(parent), m_folder(std::move(folder))
{
    m_reader.setMaxThreadCount(1);
    m_settle.setSingleShot(true);
    m_settle.setInterval(settleMs);
    connect(&m_settle, &QTimer::timeout, this, &ContactsFolder::readAgain);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_settle,
            qOverload<>(&QTimer::start));
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_settle, qOverload<>(&QTimer::start));
}

ContactsFolder::~ContactsFolder()
{
    m_reader.waitForDone();
}

void ContactsFolder::start()
{
    // The folder may not exist yet: its parent tells when it comes.
    const QString parent = QFileInfo(m_folder).absolutePath();
    if (QFileInfo::exists(parent))
        m_watcher.addPath(parent);
    readAgain();
}

QList<ContactBook> ContactsFolder::read(const QString &folder)
{
    return readFolder(folder).books;
}

void ContactsFolder::readAgain()
{
    if (m_reading) {
        m_readAgain = true;
        return;
    }
    m_reading = true;
    m_reader.start([this, folder = m_folder] {
        FolderRead read = readFolder(folder);
        QMetaObject::invokeMethod(
            this, [this, read = std::move(read)] { take(read.books, read.watched); },
            Qt::QueuedConnection);
    });
}

void ContactsFolder::take(const QList<ContactBook> &books, const QStringList &watched)
{
    m_reading = false;
    const QString parent = QFileInfo(m_folder).absolutePath();
    QStringList stale = m_watcher.files() + m_watcher.directories();
    stale.removeAll(parent);
    for (const QString &path : watched)
        stale.removeAll(path);
    if (!stale.isEmpty())
        m_watcher.removePaths(stale);
    QStringList fresh;
    for (const QString &path : watched) {
        if (!m_watcher.files().contains(path) && !m_watcher.directories().contains(path))
            fresh.append(path);
    }
    if (!fresh.isEmpty())
        m_watcher.addPaths(fresh);
    if (m_readAgain) {
        m_readAgain = false;
        readAgain();
        return;
    }
    const bool changedNow = !m_settled || books.size() != m_books.size() || [&] {
        for (qsizetype i = 0; i < books.size(); ++i) {
            const ContactBook &a = books.at(i);
            const ContactBook &b = m_books.at(i);
            if (a.source != b.source || a.complete != b.complete || a.problem != b.problem ||
                a.contacts.size() != b.contacts.size())
                return true;
            for (qsizetype c = 0; c < a.contacts.size(); ++c) {
                const VCardContact &x = a.contacts.at(c);
                const VCardContact &y = b.contacts.at(c);
                if (x.uid != y.uid || x.name != y.name || x.birthday != y.birthday ||
                    x.omittedYear != y.omittedYear || x.birthdayIsText != y.birthdayIsText)
                    return true;
            }
        }
        return false;
    }();
    m_books = books;
    m_settled = true;
    if (changedNow)
        emit changed();
}
