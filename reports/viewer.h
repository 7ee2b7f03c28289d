// The one window for reports that come from template files: paging, zoom, search, printing.
//
// It shows the session's report and gives it up when it unloads; who opens it has set the view's source. The
// tool of the export stays hidden, and the mail tool has nothing behind it.
#pragma once

#include <memory>
#include <string>

#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"
#include "platform/controls/reportview.h"
#include "reports/exportpanel.h"

namespace veldona {

struct Session;

struct FrmCrNesne : Form {
    FrmCrNesne(Forms& forms, Session& itsSession);

    Session& session;

    ToolBar BarIslemler{*this, "BarIslemler"};
    ComboBox cboZoom{*this, "cboZoom"};
    Label lblBookmark{*this, "lblBookmark"};
    ReportView CRViewer1{*this, "CRViewer1"};
    ExportPanel aktar{*this, session};

    bool wasActivated = false; // it has been in front before
    bool zoomKeyDown = false;  // a key is down in cboZoom
    bool writingZoom = false;  // code is setting its text
    bool zoomEdited = false;   // its text was edited and not applied yet
};

[[nodiscard]] std::unique_ptr<Form> makeFrmCrNesne(Forms& forms, Session& session);

void RaporIlkSayfa(FrmCrNesne& f);
void RaporOncekiSayfa(FrmCrNesne& f);
void RaporSonrakiSayfa(FrmCrNesne& f);
void RaporSonSayfa(FrmCrNesne& f);
// "3 / 12" into lblBookmark, with "+" behind it while the count is not final.
void migetCurrentPage(FrmCrNesne& f);
void refreshReport(FrmCrNesne& f);
// Asks for the text where it is empty; what comes back is looked for, whatever it is.
void searchReport(FrmCrNesne& f, std::string text = {});
void RaporYazdir(FrmCrNesne& f);
void RaporKapat(FrmCrNesne& f);
// The question whether to see a report without rows. Its title stands where a number belongs, so it is never
// asked: error 13, always.
void evReport_NoData(FrmCrNesne& f);

} // namespace veldona
