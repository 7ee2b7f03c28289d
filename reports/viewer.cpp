#include "reports/viewer.h"

#include <array>
#include <utility>

#include "core/formframe.h"
#include "platform/runtime/conversion.h"
#include "reports/viewerzoom.h"

namespace veldona {

namespace {

struct Arac {
    const char* key;
    const char* caption;
    void (*islem)(FrmCrNesne&); // nullptr: the tool does nothing
};

void AktarPaneliAc(FrmCrNesne& f) {
    f.aktar.picExport.setVisible(true);
}

constexpr std::array<Arac, 10> kAraclar = {{
    {"cmdIlk", "İlk", RaporIlkSayfa},
    {"cmdOnceki", "Önceki", RaporOncekiSayfa},
    {"cmdSonraki", "Sonraki", RaporSonrakiSayfa},
    {"cmdSon", "Son", RaporSonSayfa},
    {"cmdYeniden", "Yenile", RaporYenile},
    {"cmdAra", "Ara", [](FrmCrNesne& f) { RaporAra(f); }},
    {"cmdYazdir", "Yazdır", RaporYazdir},
    {"cmdExport", "Aktar", AktarPaneliAc},
    {"cmdMail", "Mail", nullptr},
    {"cmdCikis", "Çıkış", RaporKapat},
}};

void BarIslemler_ToolClick(FrmCrNesne& f, const std::string& key) {
    for (const Arac& arac : kAraclar)
        if (arac.key == key && arac.islem) return arac.islem(f);
}

void bekle(FrmCrNesne& f) {
    while (f.CRViewer1.isBusy())
        f.session.desktop.events.doEvents();
}

void sayfaGoster(FrmCrNesne& f, void (ReportView::*git)()) {
    bekle(f);
    (f.CRViewer1.*git)();
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
    if (!std::exchange(f.etkinlesti, true)) f.CRViewer1.setFocus();
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
    for (const Arac& arac : kAraclar)
        BarIslemler.add(arac.key, arac.caption);
    BarIslemler.onToolClick = [this](const std::string& key) { BarIslemler_ToolClick(*this, key); };
    zoomBagla(*this);
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
    sayfaGoster(f, &ReportView::showFirstPage);
}

void RaporOncekiSayfa(FrmCrNesne& f) {
    sayfaGoster(f, &ReportView::showPreviousPage);
}

void RaporSonrakiSayfa(FrmCrNesne& f) {
    sayfaGoster(f, &ReportView::showNextPage);
}

void RaporSonSayfa(FrmCrNesne& f) {
    sayfaGoster(f, &ReportView::showLastPage);
}

void migetCurrentPage(FrmCrNesne& f) {
    bekle(f);
    f.lblBookmark.setCaption(std::to_string(f.CRViewer1.currentPage()) + " / " +
                             std::to_string(f.CRViewer1.pageCount()) +
                             (f.CRViewer1.isCountFinal() ? "" : "+"));
}

void RaporYenile(FrmCrNesne& f) {
    bekle(f);
    f.CRViewer1.refresh();
    RaporIlkSayfa(f);
}

void RaporAra(FrmCrNesne& f, std::string metin) {
    if (metin.empty())
        metin = f.session.desktop.dialogs.input("Aranacak metni giriniz", "Ne aranacak").value_or("");
    f.CRViewer1.searchForText(metin);
}

void RaporYazdir(FrmCrNesne& f) {
    if (f.session.reportDesk && f.session.rapor) f.session.reportDesk->print(*f.session.rapor);
}

void RaporKapat(FrmCrNesne& f) {
    f.forms().unload(f);
}

void evReport_NoData(FrmCrNesne& f) {
    const std::string soru = "Görüntülenecek veri yok. \nYine de raporu görüntülemek istiyor musunuz. ";
    const std::int32_t bicim = toLong(Value("Hata Oluştu"));
    f.session.desktop.dialogs.show({soru, kProgramTitle, static_cast<Icon>(bicim), Buttons::Ok});
}

} // namespace veldona
