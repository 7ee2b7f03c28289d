#include "reports/receivablesscreen.h"

#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "reports/expected.h"
#include "reports/overdue.h"

namespace veldona {

namespace {

void Form_Load(ReportScreen& f) {
    f.reportMode = f.session.gFormKayit.ReportMode;
    const DateTime today = f.session.desktop.clock.today();
    f.dtRaporTarihi.setValue(today);
    if (f.kind == ReportScreenKind::Overdue) f.dtRaporTarihi.setValue(Null{});
    f.dtRaporTarihiSon.setValue(today.plusDays(1));
    loadReportRange(f.range);
}

void Form_KeyPress(ReportScreen& f, KeyPress& press) {
    if (press.character != static_cast<char32_t>(Key::Escape)) return;
    press.swallowed = true;
    f.forms().unload(f);
}

// The detailed list would go from door to door.
void cboRapor_Click(ReportScreen& f) {
    if (f.cboRapor.text() == "Detaylı Rapor") f.cboSiralamaKriteri->setText("Adrese Göre");
}

void cmdRapor_Click(ReportScreen& f) {
    f.kind == ReportScreenKind::Overdue ? overdueReport(f) : expectedReport(f);
}

void fillLists(ReportScreen& f) {
    f.cboRapor.add("Basit Rapor");
    f.cboRapor.add("Detaylı Rapor");
    f.cboRapor.setListIndex(0);
    if (!f.cboSiralamaKriteri) return;
    for (const char* criterion : {"Tarih", "Ad Soyad", "Adrese Göre"})
        f.cboSiralamaKriteri->add(criterion);
    f.cboSiralamaKriteri->setListIndex(0);
}

const char* nameOf(ReportScreenKind kind) {
    return kind == ReportScreenKind::Overdue ? "rprodemesigecen" : "rprbeklenentahsilat";
}

const char* captionOf(ReportScreenKind kind) {
    return kind == ReportScreenKind::Overdue ? "Günü Geçen Ödemeler Raporu" : "Beklenen Taksitler";
}

} // namespace

ReportScreen::ReportScreen(Forms& forms, Session& itsSession, ReportScreenKind itsKind)
    : Form(forms, nameOf(itsKind), captionOf(itsKind)), session(itsSession), kind(itsKind),
      cboSiralamaKriteri(
          itsKind == ReportScreenKind::Overdue
              ? std::make_unique<ComboBox>(*this, "cboSiralamaKriteri", ComboBox::Style::ListOnly)
              : nullptr) {
    fillLists(*this);
    if (cboSiralamaKriteri) cboRapor.onClick = [this] { cboRapor_Click(*this); };
    cmdRapor.onClick = [this] { cmdRapor_Click(*this); };
    for (CommandButton* button : {&cmdCikis, &Command1})
        button->onClick = [this] { this->forms().unload(*this); };
    onLoad = [this] { Form_Load(*this); };
    onKeyPress = [this](KeyPress& press) { Form_KeyPress(*this, press); };
}

std::unique_ptr<Form> makeRprOdemesiGecen(Forms& forms, Session& session) {
    return std::make_unique<ReportScreen>(forms, session, ReportScreenKind::Overdue);
}

std::unique_ptr<Form> makeRprBeklenenTahsilat(Forms& forms, Session& session) {
    return std::make_unique<ReportScreen>(forms, session, ReportScreenKind::Expected);
}

} // namespace veldona
