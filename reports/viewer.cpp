#include "reports/viewer.h"

#include <array>
#include <utility>

#include "core/formframe.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/report/desk.h"
#include "platform/report/page.h"
#include "platform/runtime/conversion.h"
#include "reports/viewerzoom.h"

namespace veldona {

namespace {

struct BarTool {
    const char* key;
    const char* caption;
    void (*islem)(FrmCrNesne&); // nullptr: the tool does nothing
};

void openExportPanel(FrmCrNesne& f) {
    f.aktar.picExport.setVisible(true);
}

constexpr std::array<BarTool, 10> kTools = {{
    {"cmdIlk", "İlk", RaporIlkSayfa},
    {"cmdOnceki", "Önceki", RaporOncekiSayfa},
    {"cmdSonraki", "Sonraki", RaporSonrakiSayfa},
    {"cmdSon", "Son", RaporSonSayfa},
    {"cmdYeniden", "Yenile", refreshReport},
    {"cmdAra", "Ara", [](FrmCrNesne& f) { searchReport(f); }},
    {"cmdYazdir", "Yazdır", RaporYazdir},
    {"cmdExport", "Aktar", openExportPanel},
    {"cmdMail", "Mail", nullptr},
    {"cmdCikis", "Çıkış", RaporKapat},
}};

void BarIslemler_ToolClick(FrmCrNesne& f, const std::string& key) {
    for (const BarTool& toolName : kTools)
        if (toolName.key == key && toolName.islem) return toolName.islem(f);
}

void bekle(FrmCrNesne& f) {
    while (f.CRViewer1.isBusy())
        f.session.desktop.events.doEvents();
}

void showPage(FrmCrNesne& f, void (ReportView::*go)()) {
    bekle(f);
    (f.CRViewer1.*go)();
    migetCurrentPage(f);
}

void Form_Load(FrmCrNesne& f) {
    f.BarIslemler.setToolVisible("cmdExport", false);
    f.CRViewer1.refresh();
    FormuSifirla(f.aktar);
    GorunumAyarla(f.aktar);
    FillZoomFactor(f);
    f.aktar.cmdAdresBook.setVisible(true);
    f.aktar.cmdExport.setVisible(false);
}

// Opened with no report to show, it goes again.
void Form_Activate(FrmCrNesne& f) {
    if (!f.CRViewer1.source()) {
        f.setPointer(MousePointer::Default);
        return f.forms().unload(f);
    }
    if (!std::exchange(f.wasActivated, true)) f.CRViewer1.setFocus();
    f.setPointer(MousePointer::Default);
}

void Form_KeyPress(FrmCrNesne& f, KeyPress& press) {
    if (press.character != static_cast<char32_t>(Key::Escape)) return;
    press.swallowed = true;
    RaporKapat(f);
}

void Form_Unload(FrmCrNesne& f) {
    f.CRViewer1.setSource(nullptr);
    f.session.rapor.reset();
}

} // namespace

FrmCrNesne::FrmCrNesne(Forms& forms, Session& itsSession)
    : Form(forms, "frmCrNesne", "Vorel Rapor Gösterici"), session(itsSession) {
    for (const BarTool& toolName : kTools)
        BarIslemler.add(toolName.key, toolName.caption);
    BarIslemler.onToolClick = [this](const std::string& key) { BarIslemler_ToolClick(*this, key); };
    bindZoom(*this);
    CRViewer1.onPage = [this] { migetCurrentPage(*this); };
    CRViewer1.onNoData = [this] { evReport_NoData(*this); };
    onLoad = [this] { Form_Load(*this); };
    onActivate = [this] { Form_Activate(*this); };
    onUnload = [this] { Form_Unload(*this); };
    onKeyPress = [this](KeyPress& press) { Form_KeyPress(*this, press); };
}

std::unique_ptr<Form> makeFrmCrNesne(Forms& forms, Session& session) {
    return std::make_unique<FrmCrNesne>(forms, session);
}

void RaporIlkSayfa(FrmCrNesne& f) {
    showPage(f, &ReportView::showFirstPage);
}

void RaporOncekiSayfa(FrmCrNesne& f) {
    showPage(f, &ReportView::showPreviousPage);
}

void RaporSonrakiSayfa(FrmCrNesne& f) {
    showPage(f, &ReportView::showNextPage);
}

void RaporSonSayfa(FrmCrNesne& f) {
    showPage(f, &ReportView::showLastPage);
}

void migetCurrentPage(FrmCrNesne& f) {
    bekle(f);
    f.lblBookmark.setCaption(std::to_string(f.CRViewer1.currentPage()) + " / " +
                             std::to_string(f.CRViewer1.pageCount()) +
                             (f.CRViewer1.isCountFinal() ? "" : "+"));
}

void refreshReport(FrmCrNesne& f) {
    bekle(f);
    f.CRViewer1.refresh();
    RaporIlkSayfa(f);
}

void searchReport(FrmCrNesne& f, std::string text) {
    if (text.empty())
        text = f.session.desktop.dialogs.input("Aranacak metni giriniz", "Ne aranacak").value_or("");
    f.CRViewer1.searchForText(text);
}

void RaporYazdir(FrmCrNesne& f) {
    if (f.session.reportDesk && f.session.rapor) f.session.reportDesk->print(*f.session.rapor);
}

void RaporKapat(FrmCrNesne& f) {
    f.forms().unload(f);
}

void evReport_NoData(FrmCrNesne& f) {
    const std::string question = "Görüntülenecek veri yok. \nYine de raporu görüntülemek istiyor musunuz. ";
    const std::int32_t formatName = toLong(Value("Hata Oluştu"));
    f.session.desktop.dialogs.show({question, kProgramTitle, static_cast<Icon>(formatName), Buttons::Ok});
}

} // namespace veldona
