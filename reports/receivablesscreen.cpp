#include "reports/receivablesscreen.h"

#include "reports/expected.h"
#include "reports/overdue.h"

namespace veldona {

namespace {

void Form_Load(RaporEkrani& f) {
    f.raporKipi = f.session.gFormKayit.RaporKipi;
    const DateTime bugun = f.session.desktop.clock.today();
    f.dtRaporTarihi.setValue(bugun);
    if (f.tur == RaporEkraniTuru::GunuGecen) f.dtRaporTarihi.setValue(Null{});
    f.dtRaporTarihiSon.setValue(bugun.plusDays(1));
    RaporAraligiYukle(f.aralik);
}

void Form_KeyPress(RaporEkrani& f, KeyPress& press) {
    if (press.character != static_cast<char32_t>(Key::Escape)) return;
    press.swallowed = true;
    f.forms().unload(f);
}

// The detailed list would go from door to door.
void cboRapor_Click(RaporEkrani& f) {
    if (f.cboRapor.text() == "Detaylı Rapor") f.cboSiralamaKriteri->setText("Adrese Göre");
}

void cmdRapor_Click(RaporEkrani& f) {
    f.tur == RaporEkraniTuru::GunuGecen ? GunuGecenRaporu(f) : BeklenenRaporu(f);
}

void fillLists(RaporEkrani& f) {
    f.cboRapor.add("Basit Rapor");
    f.cboRapor.add("Detaylı Rapor");
    f.cboRapor.setListIndex(0);
    if (!f.cboSiralamaKriteri) return;
    for (const char* kriter : {"Tarih", "Ad Soyad", "Adrese Göre"})
        f.cboSiralamaKriteri->add(kriter);
    f.cboSiralamaKriteri->setListIndex(0);
}

const char* nameOf(RaporEkraniTuru tur) {
    return tur == RaporEkraniTuru::GunuGecen ? "rprodemesigecen" : "rprbeklenentahsilat";
}

const char* captionOf(RaporEkraniTuru tur) {
    return tur == RaporEkraniTuru::GunuGecen ? "Günü Geçen Ödemeler Raporu" : "Beklenen Taksitler";
}

} // namespace

RaporEkrani::RaporEkrani(Forms& forms, Session& itsSession, RaporEkraniTuru itsTur)
    : Form(forms, nameOf(itsTur), captionOf(itsTur)), session(itsSession), tur(itsTur),
      cboSiralamaKriteri(
          itsTur == RaporEkraniTuru::GunuGecen
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
    return std::make_unique<RaporEkrani>(forms, session, RaporEkraniTuru::GunuGecen);
}

std::unique_ptr<Form> makeRprBeklenenTahsilat(Forms& forms, Session& session) {
    return std::make_unique<RaporEkrani>(forms, session, RaporEkraniTuru::Beklenen);
}

} // namespace veldona
