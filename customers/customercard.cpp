#include "customers/customercard.h"

#include <initializer_list>

#include "customers/cardfields.h"
#include "customers/cardrecord.h"
#include "platform/controls/handlers.h"

namespace veldona {

namespace {

void placeControls(FrmCariEkle& f) {
    place(f.fraGenel,
          {&f.txtKod, &f.txtAd, &f.txtSoyad, &f.dtYas, &f.txtYas, &f.cboMedeniHali, &f.cboCinsiyet,
           &f.txtMeslek, &f.txtVergiDairesi, &f.txtVergiNo, &f.cboGrup, &f.txtGrupID, &f.chkKaydiKopyala});
    f.SSTab1.addPage(f.fraEvAdresi);
    f.SSTab1.addPage(f.fraIsAdresi);
    place(f.fraEvAdresi, {&f.cboEvMahalle, &f.cboEvCdSk, &f.txtEvApt, &f.txtIlce, &f.txtil, &f.txtPostaKodu,
                          &f.txtEvTel, &f.txtEvTel2, &f.txtGSM});
    place(f.fraIsAdresi, {&f.cboIsMahalle, &f.txtCdSk, &f.txtIsApt, &f.txtIsIlce, &f.txtIsIl,
                          &f.txtIsPostaKodu, &f.txtIsTelefon, &f.txtFax});
    f.txtGrupID.setVisible(false);
}

// What a caller that waits for a customer gets of the one that was saved.
void fillAnswer(const FrmCariEkle& f, FormKayit& answer) {
    answer.HSTNO = f.txtKod.text();
    answer.Unvan = f.txtAd.text() + "  " + f.txtSoyad.text();
    answer.DogumTarihi = f.dtYas.value();
}

void bindCycle(FrmCariEkle& f) {
    KayitDongusu& k = f.kayit;
    k.alanlariTemizle = [&f] { AlanlariTemizle(f); };
    k.yeniBaslat = [&f] { YeniCariBaslat(f); };
    k.goster = [&f] { AlanlariGoster(f); };
    k.durumSatiri = [&f](std::string text) { f.lblBookmark.setCaption(std::move(text)); };
    k.minimumInput = [&f] { return MinimumInputKontrolu(f); };
    k.mantikliInput = [&f] { return MantikliInputKontrolu(f); };
    k.ekle = [&f] { return YeniCariEkle(f); };
    k.guncelle = [&f] { return CariGuncelle(f); };
    k.sil = [&f](std::int32_t id) { return CariSil(f.session, id); };
    k.yenidenOku = [&f] { kartlariAc(f); };
    k.sonucDoldur = [&f](FormKayit& answer) { fillAnswer(f, answer); };
    f.BarIslemler.onToolClick = [&k](const std::string& arac) { BarTiklandi(k, arac); };
}

void fieldChanged(FrmCariEkle& f) {
    if (f.alanlarDoluyor || f.kayit.durum != FormModu::Gezinme) return;
    KayitDegistir(f.kayit);
    if (f.kayit.durum == FormModu::Gezinme) DurumaGec(f.kayit, FormModu::Yeni); // the last card was deleted
}

// What is typed on a card that is looked at begins its change, as F5 does, and on an empty one a new card: F2
// saves it, and no key drops it.
void beginChangesByTyping(FrmCariEkle& f) {
    const auto also = [&f](std::function<void()>& event) {
        event = [&f, before = std::move(event)] {
            call(before);
            fieldChanged(f);
        };
    };
    for (const CariSutunu& s : cariSutunlari()) {
        if (s.metin) also((f.*s.metin).onChange);
        if (s.liste) also((f.*s.liste).onChange);
        if (s.liste) also((f.*s.liste).onClick);
    }
    also(f.dtYas.onChange);
}

void Form_Load(FrmCariEkle& f) {
    const FormKayit& given = f.session.gFormKayit;
    f.kayit.secici = given.Sonuc == Currency::ofWhole(FormSonucu::Istendi);
    if (given.KayitID > 0) f.kartlar.push_back(given.KayitID);
    const bool isNew = given.Kip == FormModu::Yeni;
    ListeleriYukle(f);
    beginChangesByTyping(f);
    kartlariAc(f);
    if (isNew) {
        YeniKayit(f.kayit);
    } else {
        DurumaGec(f.kayit, FormModu::Gezinme);
        KayitGoster(f.kayit);
    }
}

void Form_KeyDown(FrmCariEkle& f, KeyEvent& event) {
    AracTuslari(f.BarIslemler, event);
    if (event.key != Key::Enter) return;
    event.swallowed = true;
    SonrakiAlan(f);
}

void Form_KeyPress(FrmCariEkle& f, KeyPress& press) {
    if (press.character != static_cast<char32_t>(Key::Escape)) return;
    press.swallowed = true;
    BarTiklandi(f.kayit, aracAcik(f.BarIslemler, "cmdCikis") ? "cmdCikis" : "cmdVazgec");
}

} // namespace

FrmCariEkle::FrmCariEkle(Forms& forms, Session& itsSession)
    : Form(forms, "frmCariEkle", "Cari Ekleme Formu"), session(itsSession) {
    BarKur(BarIslemler);
    placeControls(*this);
    OdakIsaretle(*this);
    bindCycle(*this);
    onLoad = [this] { Form_Load(*this); };
    onUnload = [this] { KayitSetiKapat(kayit.rs); };
    onKeyDown = [this](KeyEvent& event) { Form_KeyDown(*this, event); };
    onKeyPress = [this](KeyPress& press) { Form_KeyPress(*this, press); };
}

std::unique_ptr<Form> makeFrmCariEkle(Forms& forms, Session& session) {
    return std::make_unique<FrmCariEkle>(forms, session);
}

} // namespace veldona
