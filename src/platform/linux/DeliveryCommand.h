#pragma once

#include "main/ReminderStore.h"

#include <QString>

class Clock;
class DBusNotifier;

// `tavlo deliver-reminder <identifier>`, what a reminder's wake-up runs with
// the app closed: shows that reminder if it is due and still pending, unless
// a running app will.
namespace DeliveryCommand {

// A reminder shown while no screen is there to ask: what its content says,
// a banner that stays in the list, without sound.
inline const PresentationOptions backgroundPresentation{PresentationOption::Banner,
                                                        PresentationOption::List};

// Returns the exit status.
int deliver(const QString &identifier, ReminderStore &store, const Clock &clock,
            DBusNotifier &notifier);

// Whether a reminder is still worth showing at `now`: only on its own day.
bool shownToday(const PendingReminder &reminder, const QDateTime &now);

// Puts Tavlo's icon in `folder` (once) and returns its path, or an empty
// text when it cannot be written.
QString installIcon(const QString &folder);

} // namespace DeliveryCommand
