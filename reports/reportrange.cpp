#include "reports/reportrange.h"

#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "reports/spreadsheet.h"

namespace veldona {

ReportRange::ReportRange(Form& itsForm, Session& itsSession) : form(itsForm), session(itsSession) {
    for (Control* control :
         {static_cast<Control*>(&DTPicker1), static_cast<Control*>(&DTPicker2), static_cast<Control*>(&Text1),
          static_cast<Control*>(&Text2), static_cast<Control*>(&cmdExcel), static_cast<Control*>(&Command6),
          static_cast<Control*>(&cmdDeneme)})
        control->placeIn(Frame1);
    DTPicker1.onChange = [this] { Text1.setText(DTPicker1.text()); };
    DTPicker2.onChange = [this] { Text2.setText(DTPicker2.text()); };
    cmdExcel.onClick = [this] { cmdExcel_Click(*this); };
}

void loadReportRange(ReportRange& range) {
    const DateTime today = range.session.desktop.clock.today();
    range.DTPicker1.setValue(today);
    range.DTPicker2.setValue(today);
}

} // namespace veldona
