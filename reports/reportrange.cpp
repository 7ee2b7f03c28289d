#include "reports/reportrange.h"

#include "reports/spreadsheet.h"

namespace veldona {

RaporAraligi::RaporAraligi(Form& itsForm, Session& itsSession) : form(itsForm), session(itsSession) {
    for (Control* control :
         {static_cast<Control*>(&DTPicker1), static_cast<Control*>(&DTPicker2), static_cast<Control*>(&Text1),
          static_cast<Control*>(&Text2), static_cast<Control*>(&cmdExcel), static_cast<Control*>(&Command6),
          static_cast<Control*>(&cmdDeneme)})
        control->placeIn(Frame1);
    DTPicker1.onChange = [this] { Text1.setText(DTPicker1.text()); };
    DTPicker2.onChange = [this] { Text2.setText(DTPicker2.text()); };
    cmdExcel.onClick = [this] { cmdExcel_Click(*this); };
}

void RaporAraligiYukle(RaporAraligi& aralik) {
    const DateTime bugun = aralik.session.desktop.clock.today();
    aralik.DTPicker1.setValue(bugun);
    aralik.DTPicker2.setValue(bugun);
}

} // namespace veldona
