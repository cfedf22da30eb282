// SPDX-License-Identifier: MIT
#pragma once

// `tavlo COMMAND ...` with this machine's services: the settings file, the
// clock, the notification centre, the address books, the Secret Service and
// the birthdays calendar, which follows every change a command makes. Needs
// a QCoreApplication; returns the exit status.
int runCommandLineProcess();
