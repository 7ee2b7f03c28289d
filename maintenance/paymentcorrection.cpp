#include "maintenance/paymentcorrection.h"

#include "core/money.h"
#include "core/session.h"
#include "ledger/balances.h"
#include "ledger/overdue.h"
#include "maintenance/ledgerscreen.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

// What differs between the two buttons that save.
struct Twin {
    const char* question;
    int satir;
    std::string gun;
    std::string oldAmount;
};

void Form_Load(TaksitMustDuzelt& f) {
    dao::Database books = f.session.dbEngine.openDatabase(f.session.gVeritabaniYolu, f.session.connectText());
    f.rsOdenen = openForSale(books, "TAKSITODENEN", ledgerScreen(f.forms()).Text5.text());
}

double wholeOf(Currency amount) {
    return roundHalfEven(amount.toDouble());
}

bool findPayment(TaksitMustDuzelt& f, const FrmMainVeldona& ledger, const std::string& day, Currency amount) {
    const auto sameWhole = [&](const Value& odmiktar) {
        return wholeOf(shownAmount(f.session, odmiktar)) == wholeOf(amount);
    };
    return findRow(*f.rsOdenen, {ledger.Text5.text(), onDay(day), sameWhole});
}

void refreshLedger(FrmMainVeldona& ledger) {
    ledger.Label8.setCaption(format(sumOf(ledger.L2), kMoneyMask));
    showRemaining(ledger, kMoneyMask);
    GECIKEN_ODM(ledger);
    GECIKME_UYARI(ledger);
}

bool mayExceedDebt(TaksitMustDuzelt& f, const FrmMainVeldona& ledger, const Twin& twin) {
    const Currency paid = sumOf(ledger.L2) + toCurrency(f.Text1.text()) - amountOrZero(twin.oldAmount);
    return paid <= toCurrency(ledger.Label11.caption()) || f.session.desktop.dialogs.confirm(twin.question);
}

void writePayment(TaksitMustDuzelt& f) {
    dao::Recordset& rs = *f.rsOdenen;
    const DateTime now = f.session.desktop.clock.now();
    rs.edit();
    rs.set("ODTRH", f.DTPicker1.text() + " " + format(now, "hh:mm:ss"));
    rs.set("ODMIKTAR", ParaOku(f.session, f.Text1.text(), {}, MoneyMode::Deger));
    rs.set("KONTROL_KIM", trim(f.session.gKullanici));
    rs.set("KONTROL_NE_ZAMAN", now);
    rs.update();
}

// The ledger's balances follow also where no payment was found.
void save(TaksitMustDuzelt& f, FrmMainVeldona& ledger, const Twin& twin) {
    if (!mayExceedDebt(f, ledger, twin)) return;
    if (findPayment(f, ledger, twin.gun, amountOrZero(twin.oldAmount))) {
        writePayment(f);
        patchRow(ledger.L1, ledger.L2, twin.satir, f.DTPicker1.text(), f.Text1.text());
        f.session.desktop.dialogs.tell("DÜZELTME İŞLEMİ GERÇEKLEŞTİ", Icon::Information);
        f.forms().unload(f);
    }
    refreshLedger(ledger);
}

void Command1_Click(TaksitMustDuzelt& f) {
    FrmMainVeldona& ledger = ledgerScreen(f.forms());
    const int row = ledger.L1.listIndex();
    save(f, ledger, {kDateQuestion, row, ledger.L1.text(), ledger.L2.list(row)});
}

void Command3_Click(TaksitMustDuzelt& f) {
    FrmMainVeldona& ledger = ledgerScreen(f.forms());
    const int row = ledger.L2.listIndex();
    save(f, ledger, {kAmountQuestion, row, ledger.L1.list(row), ledger.L2.text()});
}

// By what stands in the fields, not by what was clicked.
void Command4_Click(TaksitMustDuzelt& f) {
    FrmMainVeldona& ledger = ledgerScreen(f.forms());
    if (!findPayment(f, ledger, f.DTPicker1.text(), amountOrZero(f.Text1.text()))) return;
    f.rsOdenen->remove();
    const int row = toLong(f.Text2.text());
    ledger.L1.remove(row);
    ledger.L2.remove(row);
    f.session.desktop.dialogs.tell("SILME  İŞLEMİ GERÇEKLEŞTİ", Icon::Information);
    f.forms().unload(f);
    refreshLedger(ledger);
}

} // namespace

TaksitMustDuzelt::TaksitMustDuzelt(Forms& itsForms, Session& itsSession)
    : Form(itsForms, "taksitmustduzelt", "DÜZELTME FORMU"), session(itsSession) {
    DTPicker1.placeIn(fraOdemeTarihiDuzelt);
    onLoad = [this] { Form_Load(*this); };
    onActivate = [this] { fraOdemeTarihiDuzelt.setEnabled(true); };
    Command1.onClick = [this] { Command1_Click(*this); };
    Command3.onClick = [this] { Command3_Click(*this); };
    Command4.onClick = [this] { Command4_Click(*this); };
    Command2.onClick = [this] { forms().unload(*this); };
}

void TaksitMustDuzelt::al(const RowToCorrect& satir) {
    DTPicker1.setValue(satir.gun);
    Text1.setText(satir.tutar);
    Text2.setText(std::to_string(satir.satir));
    Command1.setVisible(satir.kaynak == CorrectionSource::Tarih);
    Command3.setVisible(satir.kaynak == CorrectionSource::Tutar);
}

std::unique_ptr<Form> makeTaksitMustDuzelt(Forms& forms, Session& session) {
    return std::make_unique<TaksitMustDuzelt>(forms, session);
}

} // namespace veldona
