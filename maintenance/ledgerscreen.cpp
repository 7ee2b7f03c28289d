#include "maintenance/ledgerscreen.h"

namespace veldona {

FrmMainVeldona& ledgerScreen(Forms& forms) {
    auto* screen = dynamic_cast<FrmMainVeldona*>(forms.loaded("frmMainVeldona"));
    if (!screen) raise(ErrorNumber::ObjectNotSet);
    return *screen;
}

} // namespace veldona
