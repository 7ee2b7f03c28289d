#include "core/tell.h"

#include <utility>

#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/store/faces/adodb.h"
#include "platform/store/faces/daoerror.h"

namespace veldona {

namespace {

bool inTransaction(const Session& session) {
    return session.gBaglanti && session.gBaglanti->isOpen() && session.gBaglanti->inTransaction();
}

} // namespace

void tell(Session& session, Message message) {
    if (inTransaction(session))
        session.deferredBoxes.push_back(std::move(message));
    else
        session.desktop.dialogs.show(message);
}

void tellDeferred(Session& session) {
    for (const Message& message : std::exchange(session.deferredBoxes, {}))
        session.desktop.dialogs.show(message);
}

void uncaughtError(Session& session, const RuntimeError& error) {
    if (inTransaction(session)) {
        Err ignored; // the surface below tells of the error that matters
        attempt(ignored, [&] { session.gBaglanti->rollbackTrans(); });
    }
    tellDeferred(session);
    session.desktop.dialogs.runtimeError(error);
}

void untoldError(Session& session) {
    session.workspace.endAct();
    const auto failure = session.workspace.takeDiskFailure();
    const bool told = !failure || session.desktop.dialogs.hasShown(failure->description());
    session.desktop.dialogs.forgetShown();
    if (!told)
        session.desktop.dialogs.runtimeError(
            RuntimeError(dao::numberOf(failure->kind()), failure->description()));
}

} // namespace veldona
