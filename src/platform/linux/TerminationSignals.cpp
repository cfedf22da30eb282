// SPDX-License-Identifier: MIT
#include "platform/linux/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::array handled{SIGTERM, SIGINT, SIGHUP};
// The handler may only write to a descriptor; the event loop reads the
// other end.
int wakeFds[2] = {-1, -1};

void onSignal(int number)
{
    const char byte = char(number);
    [[maybe_unused]] const ssize_t written = ::write(wakeFds[0], &byte, 1);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent) : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, wakeFds) != 0)
        return;
    m_notifier = new QSocketNotifier(wakeFds[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::received);
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int number : handled)
        ::sigaction(number, &action, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    // A second signal while the last writes finish ends the app as usual.
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    for (const int number : handled)
        ::sigaction(number, &action, nullptr);
    ::close(wakeFds[0]);
    ::close(wakeFds[1]);
    wakeFds[0] = wakeFds[1] = -1;
}

void TerminationSignals::received()
{
    char byte = 0;
    [[maybe_unused]] const ssize_t read = ::read(wakeFds[1], &byte, 1);
    QCoreApplication::quit();
}
