/** Passes notifications on to handlers, whose parameters differ from registration to registration.
 */
#pragma once

#include "television/core/notification.h"

namespace television {

/** Calls every handler of `notification.to` with the notification's code and as many of its
 * arguments as the handlers of that registration take. No locks are held during the calls. */
void callHandlers(const Registrations& registrations, const Notification& notification);

}  // namespace television
