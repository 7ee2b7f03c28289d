#include "sales/lifecycle.h"

#include <initializer_list>

#include "platform/runtime/conversion.h"
#include "sales/deleting.h"
#include "sales/plan.h"
#include "sales/saving.h"

namespace veldona {

namespace {

constexpr int kSabitEn = 300; // twips
constexpr int kMiktarEni = 900;
constexpr int kTarihEni = 1300;

void prepareGrid(FlexGrid& grid, std::initializer_list<const char*> headings) {
    grid.setRows(2);
    grid.setColumns(4);
    grid.setColumnWidth(0, kSabitEn);
    grid.setColumnWidth(OdemeSutunu::Miktar, kMiktarEni);
    grid.setColumnWidth(OdemeSutunu::Tarih, kTarihEni);
    int column = OdemeSutunu::Miktar;
    for (const char* heading : headings)
        grid.setTextMatrix(0, column++, heading);
}

void readParameters(FrmSatis& f) {
    const FormKayit& kayit = f.session.gFormKayit;
    f.durum = kayit.Kip;
    f.secici = kayit.Sonuc == Currency::ofWhole(FormSonucu::Istendi);
    f.m_KayitID = kayit.KayitID;
    if (kayit.CariID > 0) f.cari = {std::to_string(kayit.CariID), kayit.HSTNO, kayit.Unvan};
}

void takeRow(FrmSatis& f) {
    if (!f.rs->bof() && !f.rs->eof()) f.m_KayitID = toLong(f.rs->value("ID"));
}

void yeni(FrmSatis& f) {
    DurumaGec(f, FormModu::Yeni);
    YeniKayitBaslat(f);
}

void vazgec(FrmSatis& f) {
    if (!f.imlec.empty() && ImlecGit(*f.rs, f.imlec)) takeRow(f);
    DurumaGec(f, FormModu::Gezinme);
    if (!f.secici) return;
    f.session.gFormKayit.Sonuc = Currency::ofWhole(FormSonucu::Vazgecildi);
    f.forms().unload(f);
}

} // namespace

void Form_Load(FrmSatis& f) {
    prepareGrid(f.grdYapilanOdeme, {"Miktar", "Tarih"});
    prepareGrid(f.grdYapilacakOdeme, {"Miktar", "Tarih", "Peşinat"});
    readParameters(f);
    KayitSetiAc(f.session, f.rs, "SELECT ID FROM ISLEMNOTABLO", adodb::CursorLocation::Client);
    DurumaGec(f, f.durum);
    YeniKayitBaslat(f);
}

void Form_Unload(FrmSatis& f) {
    KayitSetiKapat(f.rs);
}

void Form_KeyDown(FrmSatis& f, KeyEvent& event) {
    switch (event.key) {
    case Key::F2:
        if (f.durum == FormModu::Yeni || f.durum == FormModu::Degistir) SatisKomutu(f, "cmdKaydet");
        break;
    case Key::F3:
        SatisKomutu(f, "cmdYeni");
        break;
    case Key::F4:
        SatisKomutu(f, "cmdVazgec");
        break;
    case Key::F5:
        SatisKomutu(f, "cmdDegistir");
        break;
    case Key::F6:
        SatisKomutu(f, "cmdSil");
        break;
    default:
        break;
    }
}

void YeniKayitBaslat(FrmSatis& f) {
    if (f.durum == FormModu::Yeni) {
        AlanlariTemizle(f);
        const DateTime today = f.session.desktop.clock.today();
        f.dtIslemTarihi.setValue(today);
        f.dtTaksitBaslangicTarihi.setValue(today);
        SatisNumarala(f);
    }
    chkOtomatikTaksitHesapla_Click(f);
    if (!f.cari.ID.empty() && !f.cari.HSTNO.empty()) {
        f.txtKod.setText(f.cari.ID);
        f.txtCariKod.setText(f.cari.HSTNO);
        f.txtUnvan.setText(f.cari.Unvan);
    }
    chkTaksitAdetGir_Click(f);
}

void AlanlariTemizle(FrmSatis& f) {
    for (TextBox* box : {&f.txtIslemNo, &f.txtKod, &f.txtCariKod, &f.txtUnvan})
        box->setText("");
    f.dtIslemTarihi.setValue(Null{});
    for (TextBox* box :
         {&f.txtAciklama, &f.MskToplamUcret, &f.MskAlinanPesinat, &f.MskKalan, &f.MskTaksitAdedi})
        box->setText("");
    f.dtTaksitBaslangicTarihi.setValue(Null{});
}

double YeniIslemNo(Session& session, const std::string& alan, const std::string& tablo) {
    const std::string no = YeniNo(session, alan, tablo, {}, AlanTuru::Sayi);
    return no.empty() ? 0 : toDouble(no);
}

void SatisNumarala(FrmSatis& f) {
    const double no = YeniIslemNo(f.session, "ISLEMNO", "ISLEMNOTABLO");
    f.session.gISLEMNO = toLong(no);
    f.txtIslemNo.setText(no > 0 ? toText(no) : std::string());
}

void DurumaGec(FrmSatis& f, int durum) {
    f.durum = durum;
    BarDurumAyarla(durum, f.BarIslemler, 0);
    for (const char* arac : {"cmdOnceki", "cmdSonraki"})
        f.BarIslemler.setToolVisible(arac, false);
}

void FormGezinme(FrmSatis& f, Gezinme yon) {
    if (yon == Gezinme::Bul)
        f.rs->find("ID = " + std::to_string(f.m_KayitID));
    else
        KayitGez(*f.rs, yon);
    takeRow(f);
}

void SatislariYenidenOku(FrmSatis& f) {
    f.rs->requery();
    FormGezinme(f, Gezinme::Bul);
    f.imlec = ImlecAl(*f.rs);
}

void SatisKomutu(FrmSatis& f, std::string_view arac) {
    if (arac == "cmdKaydet") SatisKaydet(f);
    if (arac == "cmdYeni") yeni(f);
    if (arac == "cmdVazgec") vazgec(f);
    if (arac == "cmdDegistir" && f.m_KayitID > 0) DurumaGec(f, FormModu::Degistir);
    if (arac == "cmdSil") {
        SatisSil(f, f.m_KayitID);
        AlanlariTemizle(f);
    }
    if (arac == "cmdCikis") f.forms().unload(f);
}

} // namespace veldona
