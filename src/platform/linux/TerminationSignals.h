// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGTERM, SIGINT and SIGHUP (the session ending, Ctrl+C, a closed
// terminal) into an ordinary quit of the event loop. The app then writes its
// last changes before it goes, as when its window is closed; by default the
// signal would end it at once, with a change still on its way to the disk.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

private:
    void received();

    QSocketNotifier *m_notifier = nullptr;
};
