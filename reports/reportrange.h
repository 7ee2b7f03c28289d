// The panel of the two report screens in which the range of the spreadsheet is chosen.
//
// Its texts follow its date pickers. The buttons Command6 and cmdDeneme are seen and do nothing.
#pragma once

#include "platform/controls/controls.h"
#include "platform/controls/forms.h"

namespace veldona {

struct Session;

struct ReportRange {
    ReportRange(Form& itsForm, Session& itsSession);

    Form& form;
    Session& session;

    Frame Frame1{form, "Frame1", "RAPOR   ARALIĞINI   SEÇİNİZ"};
    DateBox DTPicker1{form, "DTPicker1"};
    DateBox DTPicker2{form, "DTPicker2"};
    TextBox Text1{form, "Text1"};
    TextBox Text2{form, "Text2"};
    CommandButton cmdExcel{form, "cmdExcel", "&EXCEL"};
    CommandButton Command6{form, "Command6", "Rapor"};
    CommandButton cmdDeneme{form, "cmdDeneme", "Rapor"};

    bool writingSpreadsheet = false; // the spreadsheet is being written
};

// Today in both pickers and both texts.
void loadReportRange(ReportRange& range);

} // namespace veldona
