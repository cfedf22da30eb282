// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

// Asks the person for a file to read birthdays from or to write them to,
// with the system's own chooser. The answer comes later, as one of the
// signals: the person may take as long as they like, and the app goes on
// drawing meanwhile. Where no system chooser answers, `unavailable` says
// so and the toolkit's own dialog is to ask instead.
class FileChooser : public QObject
{
    Q_OBJECT

public:
    enum class Mode { Open, Save };

    // A choice of the chooser's filter: a name and the files it shows.
    struct Filter
    {
        QString name;
        QStringList globs;     // "*.vcf"
        QStringList mimeTypes; // "text/vcard"
    };

    struct Request
    {
        Mode mode = Mode::Open;
        QString title;
        QList<Filter> filters;
        // Where the chooser starts: an existing folder, or empty.
        QString folder;
        // The file name offered when saving.
        QString suggestedName;
    };

    using QObject::QObject;

    // One question at a time: a new one ends one still open, which then
    // says nothing more.
    virtual void choose(const Request &request) = 0;

    // The folder a chooser starts in: the person's downloads folder to open
    // a file (where one sent to them lands), the documents folder to save
    // one; the other when that one is missing, else the home folder.
    static QString personalFolder(Mode mode);
    // The same among folders given, for tests: the first that exists.
    static QString firstExisting(const QStringList &folders);

    // A filter as the toolkit's dialog takes it: "vCard files (*.vcf *.vcard)".
    static QString nameFilter(const Filter &filter);

signals:
    // A file chosen: a local file's URL.
    void chosen(const QUrl &file);
    // The person closed the chooser without a file.
    void cancelled();
    // No system chooser took the question, or it went away while asking.
    void unavailable();
    // The chooser ended without a file for a reason of its own.
    void failed(const QString &reason);
};
