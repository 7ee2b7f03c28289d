// "Defterin Parolası": gives the books a password of the shop's own, another one, or the delivered one back.
//
// The books are exchanged for a copy under the new password when nobody has them open any more: the screen
// checks what was typed, asks once, offers the paper for the safe, and ends the run for it; the program then
// starts anew.
#pragma once

#include <memory>
#include <string>

#include "core/session.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"

namespace veldona {

struct FrmParola : Form {
    FrmParola(Forms& forms, Session& itsSession);

    Session& session;

    Label lblDurum{*this, "lblDurum"};       // whose password they have
    TextBox txtSimdiki{*this, "txtSimdiki"}; // the present one; usable where it is the shop's own
    TextBox txtYeni{*this, "txtYeni"};       // the new one
    TextBox txtTekrar{*this, "txtTekrar"};   // and once more
    Label lblKural{*this, "lblKural"};       // which ones are accepted
    CheckBox chkSorma{*this, "chkSorma", "Bu makinede &sorma"};
    Label lblUyari{*this, "lblUyari"}; // what is lost with it
    CommandButton cmdKoy{*this, "cmdKoy", "&Parolayı Koy"};
    CommandButton cmdKaldir{*this, "cmdKaldir", "Parolayı &Kaldır"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};
};

[[nodiscard]] std::unique_ptr<Form> makeFrmParola(Forms& forms, Session& session);

} // namespace veldona
