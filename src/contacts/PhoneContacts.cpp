// SPDX-License-Identifier: MIT
#include "contacts/PhoneContacts.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace PhoneContacts {

QString plasmaFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           u"/kpeoplevcard"_s;
}

PhoneContactsRead readForImport(const PhoneContactsReader &platform)
{
    if (platform)
        return platform();
    PhoneContactsRead folderOnly;
    readFolder(plasmaFolder(), folderOnly);
    return folderOnly;
}

void readFolder(const QString &folder, PhoneContactsRead &read)
{
    const QDir top(folder);
    if (!top.exists())
        return;
    const QStringList patterns{u"*.vcf"_s, u"*.vcard"_s};
    QStringList files;
    const auto addFiles = [&](const QDir &dir) {
        for (const QString &name :
             dir.entryList(patterns, QDir::Files | QDir::Readable, QDir::Name))
            files.append(dir.filePath(name));
    };
    addFiles(top);
    for (const QString &sub : top.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        addFiles(QDir(top.filePath(sub)));

    qsizetype cards = 0;
    QStringList passedOver;
    for (const QString &path : files) {
        QFile file(path);
        if (file.size() > VCardReader::maxBytes || !file.open(QIODevice::ReadOnly)) {
            passedOver.append(path);
            continue;
        }
        const VCardReader::Result result = VCardReader::read(file.readAll());
        if (result.error != VCardReader::Error::None) {
            passedOver.append(path);
            continue;
        }
        cards += result.contacts.size();
        read.contacts.append(result.contacts);
    }
    QString line = u"%1: %2 files, %3 cards"_s.arg(folder).arg(files.size()).arg(cards);
    if (!passedOver.isEmpty())
        line += u", passed over: "_s + passedOver.join(u", "_s);
    read.sources.append(line);
}

void readTexts(const QString &source, const QList<QByteArray> &texts, PhoneContactsRead &read)
{
    qsizetype cards = 0;
    for (const QByteArray &text : texts) {
        const VCardReader::Result result = VCardReader::read(text);
        cards += result.contacts.size();
        read.contacts.append(result.contacts);
    }
    read.sources.append(u"%1: %2 cards"_s.arg(source).arg(cards));
}

} // namespace PhoneContacts
