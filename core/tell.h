// What the operator is told: boxes, and the surface of an error that nobody has handled.
#pragma once

#include "platform/desktop/dialogs.h"
#include "platform/runtime/error.h"

namespace veldona {

struct Session;

// Shows a box; inside a transaction of the shared connection it is kept until behind the end of that one. A
// box stands until somebody answers it, and the saves of the other tills would wait as long.
void tell(Session& session, Message message);
void tellDeferred(Session& session); // for whoever ends the transaction

// Rolls back what an uncaught error left open on the shared connection and shows the error's surface.
void uncaughtError(Session& session, const RuntimeError& error);

// Shows the error's surface for a failure of the disk that the event's procedures passed over: what they then
// show or call done may be wrong. For the end of each event.
void untoldError(Session& session);

} // namespace veldona
