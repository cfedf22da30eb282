// SPDX-License-Identifier: MIT
#pragma once

#include "settings/StoredState.h"
#include "settings/WriteResult.h"

#include <QObject>
#include <QTimer>

class UiStrings;

// The short notice that a change could not be saved, and why. It shows for
// a few seconds after each failed write and goes away by itself; the
// screen stays as the user left it, and the change is written again with
// the next one. It also tells, when the app starts, what was wrong with
// the stored data: a damaged or unreadable settings file, a favorite that
// could not be shown.
class SaveNotice : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool shown READ shown NOTIFY changed)

public:
    static constexpr std::chrono::milliseconds showFor{5000};
    // What went wrong with the stored data takes longer to read.
    static constexpr std::chrono::milliseconds showStoredProblemsFor{10000};

    explicit SaveNotice(const UiStrings &strings, QObject *parent = nullptr);

    QString text() const { return m_text; }
    bool shown() const { return m_hide.isActive(); }

    // Shows the notice for `failure` in the interface language and writes
    // its debug line.
    void report(const WriteResult &failure);
    // Tells what was wrong with the settings file; nothing for a sound one.
    void report(const StoredState &state);
    // Shows `text` for `duration` and writes `debugLine`.
    void tell(const QString &text, const QString &debugLine,
              std::chrono::milliseconds duration = showFor);

signals:
    void changed();

private:
    const UiStrings &m_strings;
    QString m_text;
    QTimer m_hide;
};
