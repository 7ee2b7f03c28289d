// "Günlüğü İncelt": how much the journal of the books holds, and its oldest entries taken out.
#pragma once

#include <memory>

#include "journal/thinning.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

struct FrmGunluk : Form {
    FrmGunluk(Forms& forms, Session& itsSession);

    Session& session;

    Label lblDurum{*this, "lblDurum"}; // how much there is
    ComboBox cboSure{*this, "cboSure", ComboBox::Style::ListOnly};
    Label lblEski{*this, "lblEski"}; // what is older than that
    CommandButton cmdIncelt{*this, "cmdIncelt", "İ&ncelt"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};

    journal::Thinning plan; // of the chosen time
};

[[nodiscard]] std::unique_ptr<Form> makeFrmGunluk(Forms& forms, Session& session);

} // namespace veldona
