#include "customers/customercard.h"

#include <initializer_list>

#include "core/session.h"
#include "customers/cardfields.h"
#include "customers/cardrecord.h"
#include "platform/controls/handlers.h"

namespace veldona {

namespace {

void placeControls(FrmCariEkle& f) {
    place(f.fraGenel, {&f.chkKaydiKopyala});
    f.SSTab1.addPage(f.fraEvAdresi);
    f.SSTab1.addPage(f.fraIsAdresi);
    f.txtGrupID.setVisible(false);
}

// What a caller that waits for a customer gets of the one that was saved.
void fillAnswer(const FrmCariEkle& f, FormKayit& answer) {
    answer.HSTNO = f.txtKod.text();
    answer.Unvan = f.txtAd.text() + "  " + f.txtSoyad.text();
    answer.DogumTarihi = f.dtYas.value();
}

void bindCycle(FrmCariEkle& f) {
    RecordCycle& k = f.record;
    k.alanlariTemizle = [&f] { AlanlariTemizle(f); };
    k.beginNew = [&f] { beginNewCustomer(f); };
    k.goster = [&f] { showFields(f); };
    k.statusLine = [&f](std::string text) { f.lblBookmark.setCaption(std::move(text)); };
    k.minimumInput = [&f] { return MinimumInputKontrolu(f); };
    k.plausibleInput = [&f] { return MantikliInputKontrolu(f); };
    k.add = [&f] { return YeniCariEkle(f); };
    k.update = [&f] { return CariGuncelle(f); };
    k.remove = [&f](std::int32_t id) { return CariSil(f.session, id); };
    k.readAgain = [&f] { openCards(f); };
    k.fillResult = [&f](FormKayit& answer) { fillAnswer(f, answer); };
    f.BarIslemler.onToolClick = [&k](const std::string& toolName) { barClicked(k, toolName); };
}

void fieldChanged(FrmCariEkle& f) {
    if (f.fillingFields || f.record.durum != FormModu::Navigation) return;
    changeRecord(f.record);
    if (f.record.durum == FormModu::Navigation)
        enterState(f.record, FormModu::Yeni); // the last card was deleted
}

// What is typed on a card that is looked at begins its change, as F5 does, and on an empty one a new card: F2
// saves it, and no key drops it.
void beginChangesByTyping(FrmCariEkle& f) {
    for (FieldControl* each : fieldsOf(f))
        if (*each->field.column) each->alsoOnInput([&f] { fieldChanged(f); });
}

void Form_Load(FrmCariEkle& f) {
    const FormKayit& given = f.session.gFormKayit;
    f.record.isPicker = given.Sonuc == Currency::ofWhole(FormResult::Requested);
    if (given.KayitID > 0) f.cards.push_back(given.KayitID);
    const bool isNew = given.Kip == FormModu::Yeni;
    ListeleriYukle(f);
    beginChangesByTyping(f);
    openCards(f);
    if (isNew) {
        newRecord(f.record);
    } else {
        enterState(f.record, FormModu::Navigation);
        KayitGoster(f.record);
    }
}

void Form_KeyDown(FrmCariEkle& f, KeyEvent& event) {
    toolKeys(f.BarIslemler, event);
    if (event.key != Key::Enter) return;
    event.swallowed = true;
    nextField(f);
}

void Form_KeyPress(FrmCariEkle& f, KeyPress& press) {
    if (press.character != static_cast<char32_t>(Key::Escape)) return;
    press.swallowed = true;
    barClicked(f.record, toolOpen(f.BarIslemler, "cmdCikis") ? "cmdCikis" : "cmdVazgec");
}

} // namespace

FrmCariEkle::FrmCariEkle(Forms& forms, Session& itsSession)
    : Form(forms, "frmCariEkle", "Cari Ekleme Formu"), session(itsSession) {
    buildBar(BarIslemler);
    placeControls(*this);
    markFocus(*this);
    bindCycle(*this);
    onLoad = [this] { Form_Load(*this); };
    onUnload = [this] { KayitSetiKapat(record.rs); };
    onKeyDown = [this](KeyEvent& event) { Form_KeyDown(*this, event); };
    onKeyPress = [this](KeyPress& press) { Form_KeyPress(*this, press); };
}

std::unique_ptr<Form> makeFrmCariEkle(Forms& forms, Session& session) {
    return std::make_unique<FrmCariEkle>(forms, session);
}

} // namespace veldona
