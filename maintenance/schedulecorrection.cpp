#include "maintenance/schedulecorrection.h"

#include "core/session.h"
#include "maintenance/ledgerscreen.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr const char* kWhole = "###,###,###";

// The row as its button reads it: the old amount as a double or as money.
struct Former {
    int satir;
    std::string gun;
    double tutar;
};

void Form_Load(TaksitOdDuzelt& f) {
    const std::string islemno = ledgerScreen(f.forms()).Text5.text();
    dao::Database books = f.session.dbEngine.openDatabase(f.session.gVeritabaniYolu, f.session.connectText());
    f.rsTaksit = openForSale(books, "URUNSAT", islemno);
    f.rsHeader = openForSale(books, "ISLEMNOTABLO", islemno);
}

bool mayFallBelowPaid(TaksitOdDuzelt& f, const FrmMainVeldona& ledger, const std::string& oldAmount) {
    const Currency planned =
        sumOf(ledger.L5) + toCurrency(f.mskOdenecekMiktar.text()) - amountOrZero(oldAmount);
    return planned >= toCurrency(ledger.Label8.caption()) ||
           f.session.desktop.dialogs.confirm(kAmountQuestion);
}

void writeRow(TaksitOdDuzelt& f, FrmMainVeldona& ledger, const Former& former) {
    const auto sameDay = [&](const Value& odtrh) { return joinText(odtrh) == former.gun; };
    const auto sameAmount = [&](const Value& odmiktar) {
        return !odmiktar.isNull() && roundHalfEven(toDouble(odmiktar)) == former.tutar;
    };
    dao::Recordset& rs = *f.rsTaksit;
    if (!findRow(rs, {ledger.Text5.text(), sameDay, sameAmount})) return;
    rs.edit();
    rs.set("ODTRH", f.DTPicker1.value());
    rs.set("ODMIKTAR", toCurrency(f.mskOdenecekMiktar.text()));
    rs.update();
    patchRow(ledger.L4, ledger.L5, former.satir, f.DTPicker1.text(), f.mskOdenecekMiktar.text());
}

void correct(TaksitOdDuzelt& f, FrmMainVeldona& ledger, const Former& former) {
    writeRow(f, ledger, former);
    const Currency sum = sumOf(ledger.L5);
    if (findSale(*f.rsHeader, ledger.Text5.text())) {
        f.rsHeader->edit();
        f.rsHeader->set("TOPBORC", sum);
        f.rsHeader->update();
        f.session.desktop.dialogs.tell("DÜZELTME İŞLEMİ GERÇEKLEŞTİ", Icon::Information);
        f.forms().unload(f);
    }
    ledger.Label11.setCaption(format(sum, kWhole));
    showRemaining(ledger, kWhole);
}

void Command1_Click(TaksitOdDuzelt& f) {
    FrmMainVeldona& ledger = ledgerScreen(f.forms());
    const int row = ledger.L4.listIndex();
    const std::string old = ledger.L5.list(row);
    if (trim(ledger.Label8.caption()).empty()) ledger.Label8.setCaption("0");
    if (!mayFallBelowPaid(f, ledger, old)) return;
    correct(f, ledger, {row, ledger.L4.text(), trim(old).empty() ? 0 : toDouble(old)});
}

void Command3_Click(TaksitOdDuzelt& f) {
    FrmMainVeldona& ledger = ledgerScreen(f.forms());
    const int row = ledger.L5.listIndex();
    const std::string old = ledger.L5.text();
    if (!mayFallBelowPaid(f, ledger, old)) return;
    correct(f, ledger, {row, ledger.L4.list(row), amountOrZero(old).toDouble()});
}

} // namespace

TaksitOdDuzelt::TaksitOdDuzelt(Forms& itsForms, Session& itsSession)
    : Form(itsForms, "taksitodduzelt", "TAKSİT DÜZELTME"), session(itsSession) {
    onLoad = [this] { Form_Load(*this); };
    Command1.onClick = [this] { Command1_Click(*this); };
    Command3.onClick = [this] { Command3_Click(*this); };
    Command2.onClick = [this] { forms().unload(*this); };
}

void TaksitOdDuzelt::al(const RowToCorrect& satir) {
    DTPicker1.setValue(satir.gun);
    mskOdenecekMiktar.setText(satir.tutar);
    Command1.setVisible(satir.kaynak == CorrectionSource::Tarih);
    Command3.setVisible(satir.kaynak == CorrectionSource::Tutar);
}

std::unique_ptr<Form> makeTaksitOdDuzelt(Forms& forms, Session& session) {
    return std::make_unique<TaksitOdDuzelt>(forms, session);
}

} // namespace veldona
