#include "customers/findersearch.h"

#include <utility>

#include "core/customerfields.h"
#include "core/database.h"
#include "core/reporting.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "customers/cardrecord.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

// What the field's filter adds to the condition; "" where it is empty.
std::string testOf(const CustomerField& field, const std::string& typed) {
    std::string text = trim(typed);
    if (text.empty()) return {};
    if (field.test.match == FieldTest::Match::Equal) return field.test.words + text;
    const bool isAnywhere = field.test.match == FieldTest::Match::Anywhere;
    if (isAnywhere) text = replaceAll(text, " ", "");
    return field.test.words + ((isAnywhere ? "'%" : "'") + text) + "%'";
}

// The card opens above the finder; whose caller still waits for what was asked of the finder.
void openCard(FrmCarihesapSec& f, int durum, std::int32_t id) {
    const FormKayit asked = f.session.gFormKayit;
    FormKayitTemizle(f.session);
    f.session.gFormKayit.Kip = durum;
    f.session.gFormKayit.KayitID = id;
    if (durum == FormModu::Yeni) f.session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::Requested);
    showScreen(f.session, "frmCariEkle", Kip::Modal);
    const FormKayit answer = std::exchange(f.session.gFormKayit, asked);
    if (answer.Sonuc == Currency::ofWhole(FormResult::Chosen)) id = answer.KayitID;
    if (f.searched) f.record.rs->requery();
    if (id > 0 && f.record.rs->recordCount() > 0) {
        f.record.rs->find("ID = " + std::to_string(id));
        if (f.record.rs->eof()) f.record.rs->moveFirst();
    }
    f.grdList.refresh();
}

std::int32_t currentID(const FrmCarihesapSec& f) {
    return toLong(f.record.rs->value("ID"));
}

void openCurrentCard(FrmCarihesapSec& f) {
    if (f.record.rs->absolutePosition() > 0) openCard(f, FormModu::Navigation, currentID(f));
}

void deleteCurrent(FrmCarihesapSec& f) {
    KayitGoster(f.record);
    deleteRecord(f.record);
}

void search(FrmCarihesapSec& f) {
    const BusyGuard busy(f);
    if (openCustomers(f)) f.searched = true;
}

} // namespace

std::string SQLSelectHazirla(const FrmCarihesapSec&) {
    return std::string("(SELECT DISTINCT HSTNO") + "  FROM " + "MUSTKAYIT";
}

std::string SQLWhereHazirla(const FrmCarihesapSec& f) {
    std::string where;
    for (const CustomerField* field : testedFields())
        if (const std::string test = testOf(*field, f.filters.of(*field)->text()); !test.empty())
            where += (where.empty() ? " WHERE " : " AND ") + test;
    return SQLSelectHazirla(f) + where + ")";
}

std::string SQLOrderHazirla(const std::string& alan, const std::string& lastOrder) {
    const bool turns = alan == "HSTNO" || alan == "AD";
    const bool wasUp = upperTurkish(lastOrder).find(" ASC") != std::string::npos;
    return alan + (turns && wasUp ? " DESC" : " ASC");
}

bool openCustomers(FrmCarihesapSec& f, const std::string& kosul) {
    const std::string where = kosul.empty() ? kWithoutSystemAccounts + SQLWhereHazirla(f) : kosul;
    const std::string order =
        f.lastOrder.empty() ? " MUSTKAYIT.AD,MUSTKAYIT.SOYAD " : " MUSTKAYIT." + f.lastOrder;
    const std::string query = customerListQuery() + " WHERE " + where + " ORDER BY" + order;
    RecordsetPtr rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(f.session, rs, query, hata)) return false;
    f.query = query;
    f.grdList.bind(nullptr);
    f.record.rs = std::move(rs);
    f.rows.follow(f.record.rs.get());
    f.grdList.bind(&f.rows);
    return true;
}

void FrmCmdBul(FrmCarihesapSec& f, std::string_view cmd) {
    if (cmd == "cmdBul") search(f);
    if (cmd == "cmdTemizle") NesneleriTemizle(f);
    if (cmd == "cmdYeni") openCard(f, FormModu::Yeni, 0);
    if (cmd == "cmdDegistir") openCurrentCard(f);
    if (cmd == "cmdSil") deleteCurrent(f);
    if (cmd == "cmdKayitSec") cmdKayitSec_Click(f);
    if (cmd == "cmdCikis") FrmCmdExit(f);
}

void cmdYazici_Click(FrmCarihesapSec& f) {
    const BusyGuard busy(f);
    showTemplateReport(f.session, "\\Rapor\\CariListesi2.rpt", {f.query});
}

void NesneleriTemizle(FrmCarihesapSec& f) {
    for (const auto& filter : f.filters.all())
        filter->setText("");
}

void cmdKayitSec_Click(FrmCarihesapSec& f) {
    Err err;
    if (!attempt(err, [&] { f.record.KayitID = currentID(f); })) {
        f.session.desktop.dialogs.tell("Kayıt Seçmediniz  :  " + err.description);
        return;
    }
    if (f.record.KayitID != 0) giveResult(f.record, FormResult::Chosen);
}

void FrmCmdExit(FrmCarihesapSec& f) {
    f.forms().unload(f);
}

void grdList_HeadClick(FrmCarihesapSec& f, int column) {
    const std::string& alan = f.grdList.columns().at(static_cast<std::size_t>(column)).field;
    const std::string before = std::exchange(f.lastOrder, SQLOrderHazirla(alan, f.lastOrder));
    const BusyGuard busy(f);
    if (f.searched && !openCustomers(f)) f.lastOrder = before;
}

} // namespace veldona
