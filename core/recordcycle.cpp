#include "core/recordcycle.h"

#include "core/session.h"
#include "platform/controls/handlers.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

constexpr const char* kNewRecord = "Yeni kayıt giriliyor";
constexpr const char* kAskDelete = "Bu Kaydı silmek İstediğinizden Eminmisiniz";
constexpr const char* kDeleteTitle = "Kayıt Silinecek Emin misiniz ";

bool hasRow(const RecordCycle& k) {
    return k.rs && k.rs->isOpen() && k.rs->absolutePosition() > 0;
}

bool passes(const std::function<bool()>& test) {
    return !test || test();
}

void showNoRow(RecordCycle& k) {
    k.KayitID = 0;
    k.cursor.clear();
    call(k.statusLine, kNewRecord);
    call(k.alanlariTemizle);
}

void readAgain(RecordCycle& k) {
    if (k.readAgain)
        call(k.readAgain);
    else if (k.rs)
        k.rs->requery();
}

// The row just written is looked for; one that the recordset does not hold leaves it where it stands.
void standOn(RecordCycle& k, std::int32_t id) {
    if (!hasRow(k)) return;
    k.rs->find("ID = " + std::to_string(id));
    if (k.rs->eof()) k.rs->moveFirst();
}

// Behind the rows that are left, so that the previous one is the last.
void standBefore(RecordCycle& k, int position) {
    if (!k.rs || k.rs->recordCount() == 0) return;
    if (position <= k.rs->recordCount()) {
        k.rs->setAbsolutePosition(position);
    } else {
        k.rs->moveLast();
        k.rs->moveNext();
    }
}

} // namespace

void giveResult(RecordCycle& k, int sonuc) {
    FormKayit& record = k.session.gFormKayit;
    record.Sonuc = Currency::ofWhole(sonuc);
    if (sonuc == FormResult::Chosen) {
        record.KayitID = k.KayitID;
        call(k.fillResult, record);
    }
    k.form.forms().unload(k.form);
}

bool inTransaction(Session& session, const std::function<bool()>& steps) {
    if (!IslemBaslat(session)) return false;
    if (steps() && IslemOnayla(session)) return true;
    IslemGeriAl(session);
    return false;
}

void enterState(RecordCycle& k, int durum) {
    k.durum = durum;
    if (k.bar) BarDurumAyarla(durum, *k.bar, 0);
}

Err KayitGoster(RecordCycle& k) {
    Err err;
    if (!hasRow(k)) {
        showNoRow(k);
        return err;
    }
    const bool read = attempt(err, [&] {
        k.KayitID = toLong(k.rs->value("ID"));
        k.cursor = ImlecAl(*k.rs);
        call(k.goster);
    });
    const std::string place =
        std::to_string(k.rs->absolutePosition()) + ":" + std::to_string(k.rs->recordCount());
    call(k.statusLine, read ? place : saveStatus(err));
    return err;
}

void FormGezinme(RecordCycle& k, Navigation yon) {
    if (k.rs && k.rs->isOpen()) walkRecords(*k.rs, yon);
    if (const Err err = KayitGoster(k); err.number != 0) k.session.desktop.dialogs.tell(saveStatus(err));
}

void newRecord(RecordCycle& k) {
    enterState(k, FormModu::Yeni);
    k.KayitID = 0;
    call(k.statusLine, kNewRecord);
    call(k.alanlariTemizle);
    call(k.beginNew);
}

void changeRecord(RecordCycle& k) {
    if (hasRow(k) && k.KayitID > 0) enterState(k, FormModu::Change);
}

void saveRecord(RecordCycle& k) {
    {
        const BusyGuard busy(k.form);
        if (!passes(k.minimumInput) || !passes(k.plausibleInput)) return;
        if (!passes(k.durum == FormModu::Yeni ? k.add : k.update)) return;
        const std::int32_t id = k.KayitID;
        enterState(k, k.viewState);
        readAgain(k);
        standOn(k, id);
        KayitGoster(k);
    }
    if (k.isPicker) giveResult(k, FormResult::Chosen);
}

void cancelRecord(RecordCycle& k) {
    if (k.isPicker) {
        giveResult(k, FormResult::GivenUp);
        return;
    }
    if (k.rs && k.rs->isOpen()) ImlecGit(*k.rs, k.cursor);
    enterState(k, k.viewState);
    KayitGoster(k);
}

void deleteRecord(RecordCycle& k) {
    if (!hasRow(k) || k.KayitID <= 0) return;
    const BusyGuard busy(k.form);
    if (!k.session.desktop.dialogs.confirmDeleting(kAskDelete, kDeleteTitle)) return;
    const int position = k.rs->absolutePosition();
    if (!inTransaction(k.session, [&] { return k.remove && k.remove(k.KayitID); })) return;
    enterState(k, k.viewState);
    readAgain(k);
    standBefore(k, position);
    FormGezinme(k, Navigation::Previous);
}

void barClicked(RecordCycle& k, std::string_view toolName) {
    const BusyGuard busy(k.form);
    if (toolName == "cmdYeni") newRecord(k);
    if (toolName == "cmdDegistir") changeRecord(k);
    if (toolName == "cmdSil") deleteRecord(k);
    if (toolName == "cmdKaydet") saveRecord(k);
    if (toolName == "cmdVazgec") cancelRecord(k);
    if (toolName == "cmdCikis") k.form.forms().unload(k.form);
    if (toolName == "cmdOnceki") FormGezinme(k, Navigation::Previous);
    if (toolName == "cmdSonraki") FormGezinme(k, Navigation::Next);
}

} // namespace veldona
