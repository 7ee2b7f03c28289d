#include "apps/screens.h"

#include "ledger/mainscreen.h"

namespace veldona {

void registerScreens(Forms& forms, Session& session) {
    forms.add("frmMainVeldona", [&session](Forms& f) { return makeFrmMainVeldona(f, session); });
}

} // namespace veldona
