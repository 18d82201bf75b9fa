/** Calls the handlers of an event in the shape that their registration's type has. */
#pragma once

#include "notifier.h"

namespace television {

/** Calls every handler of `event.to` with the event's code and as many of its arguments as the
 * shape takes. No locks are held. */
void callHandlers(const Registrations& registrations, const Event& event);

}  // namespace television
