#include "core/database.h"
#include "core/money.h"
#include "core/session.h"
#include "ledger/balances.h"
#include "ledger/collection.h"
#include "ledger/loading.h"
#include "ledger/overdue.h"
#include "platform/runtime/bytecounter.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kListDate = "DD/MM/YYYY";

// The load from the list leaves out rows without an amount, the load by number those without a date.
enum class Route { Near, Remote };

dao::Database openBooks(FrmMainVeldona& f) {
    return f.session.dbEngine.openDatabase(f.session.gVeritabaniYolu, f.session.connectText());
}

// Stands before a table's rows of one sale; the walk's own tests still decide, letter for letter.
std::vector<dao::Narrowing> ofSale(const FrmMainVeldona& f, const std::string& islemno) {
    return {{"MUSTNO", f.Text1.text()}, {"ISLEMNO", islemno}};
}

bool isOfSale(const FrmMainVeldona& f, dao::Recordset& rs, const std::string& islemno) {
    return joinText(rs.value("MUSTNO")) == f.Text1.text() && joinText(rs.value("ISLEMNO")) == islemno;
}

bool isPassedOver(dao::Recordset& rs, Route route, bool schedule) {
    if (route == Route::Remote) return rs.value("ODTRH").isNull();
    if (!schedule) return false;
    const Value amount = rs.value("ODMIKTAR");
    return amount.isNull() || toDouble(amount) == 0;
}

void fillSchedule(FrmMainVeldona& f, const std::string& islemno, Route route) {
    for (ListBox* list : {&f.L4, &f.L5, &f.lstYapilacakOdmID})
        list->clear();
    if (islemno.empty()) return;
    for (; !f.rsSatis->eof(); f.rsSatis->moveNext()) {
        if (!isOfSale(f, *f.rsSatis, islemno) || isPassedOver(*f.rsSatis, route, true)) continue;
        f.L4.add(format(f.rsSatis->value("ODTRH"), kListDate));
        f.lstYapilacakOdmID.add(joinText(f.rsSatis->value("ID")));
        f.L5.add(ParaGoster(f.session, storedIn(f.rsSatis->value("ODMIKTAR"))));
    }
}

void fillPayments(FrmMainVeldona& f, const std::string& islemno, Route route) {
    for (ListBox* list : {&f.L1, &f.L2, &f.lstOdemeTip})
        list->clear();
    if (islemno.empty()) return;
    for (; !f.rsOdenen->eof(); f.rsOdenen->moveNext()) {
        if (!isOfSale(f, *f.rsOdenen, islemno) || isPassedOver(*f.rsOdenen, route, false)) continue;
        f.L1.add(format(f.rsOdenen->value("ODTRH"), kListDate));
        f.lstOdemeTip.add("T");
        f.L2.add(ParaGoster(f.session, storedIn(f.rsOdenen->value("ODMIKTAR"))));
    }
}

void addLine(FrmMainVeldona& f, dao::Recordset& rs) {
    Err passedOver;
    f.lstID.add(joinText(rs.value("ID")));
    f.List1.add(joinText(rs.value("URKOD")));
    f.List5.add(joinText(rs.value("ADET")));
    f.List3.add(ParaGoster(f.session, storedIn(rs.value("FIYAT"))));
    f.List4.add(joinText(rs.value("TRH")));
    // On the stored value, so that the total is rounded once.
    attempt(passedOver, [&] {
        f.List6.add(
            ParaGoster(f.session, toDouble(rs.value("ADET")) * StoredAmount::ofColumn(rs.value("FIYAT"))));
    });
    f.List7.add(joinText(rs.value("ACIKLAMA")));
}

void sumLines(FrmMainVeldona& f) {
    Currency total;
    Err passedOver;
    for (int i = 0; i < f.List3.count(); ++i)
        attempt(passedOver, [&] { total += toCurrency(f.List6.list(i)); });
    f.Label11.setCaption(toText(total));
}

void loadLines(FrmMainVeldona& f, const std::string& islemno) {
    Err passedOver;
    f.gKayitSayaci = 1;
    for (ListBox* list : {&f.lstID, &f.List1, &f.List2, &f.List3, &f.List4, &f.List5, &f.List6, &f.List7})
        list->clear();
    if (!islemno.empty()) {
        attempt(passedOver, [&] {
            dao::Recordset rs = openBooks(f).openRecordset("URUNAL", ofSale(f, islemno));
            for (; !rs.eof(); rs.moveNext())
                if (isOfSale(f, rs, islemno)) addLine(f, rs);
        });
        attempt(passedOver, [&] { goster(f); });
    }
    sumLines(f);
}

// False where the sale has no header row.
bool findHeader(FrmMainVeldona& f, const std::string& islemno, Value& indirim, Value& topborc) {
    dao::Recordset rs = f.dbMain->openRecordset("ISLEMNOTABLO", {{"ISLEMNO", islemno}});
    while (!rs.eof() && joinText(rs.value("ISLEMNO")) != islemno)
        rs.moveNext();
    if (rs.eof()) return false;
    indirim = rs.value("INDIRIM_YTL");
    topborc = rs.value("TOPBORC");
    return true;
}

void openLedgerTables(FrmMainVeldona& f, const std::string& islemno) {
    f.dbMain = openBooks(f);
    f.rsOdenen = f.dbMain->openRecordset("Select * From TAKSITODENEN Order By ODTRH ASC", ofSale(f, islemno));
    f.rsSatis = f.dbMain->openRecordset("Select * From URUNSAT Order By ODTRH ASC", ofSale(f, islemno));
}

} // namespace

void CAGIR(FrmMainVeldona& f) {
    loadLines(f, f.L3.text());
}

void UZAK_ICIN_CAGIR(FrmMainVeldona& f) {
    loadLines(f, std::to_string(f.session.gISLEMNO));
}

void goster(FrmMainVeldona& f) {
    const dao::Database books = openBooks(f);
    countInByte(0, f.List1.count() - 1, [&](int i) {
        const std::string urkod = f.List1.list(i);
        dao::Recordset rs = dao::Database(books).openRecordset("URUNTANITIM", {{"URKOD", urkod}});
        for (; !rs.eof(); rs.moveNext())
            if (joinText(rs.value("URKOD")) == urkod) f.List2.add(joinText(rs.value("URUNCINS")));
    });
}

bool YAKIN_CAGIR(FrmMainVeldona& f) {
    f.Text5.setText("");
    if (!letEventsIntoLoad(f)) return false;
    const std::string islemno = f.L3.text();
    openLedgerTables(f, islemno);
    Err passedOver;
    f.Text5.setText(islemno);
    if (!islemno.empty()) attempt(passedOver, [&] { f.session.gISLEMNO = toLong(islemno); });
    CAGIR(f);
    resumeNext(
        passedOver, [&] { fillSchedule(f, islemno, Route::Near); },
        [&] { fillPayments(f, islemno, Route::Near); });
    Value indirim;
    Value topborc;
    bool found = true; // nothing is selected: nothing to look for, and the balances become 0
    if (!islemno.empty()) attempt(passedOver, [&] { found = findHeader(f, islemno, indirim, topborc); });
    if (found) BAKIYE_HESAPLA(f, indirim);
    if (!islemno.empty()) ++f.loadsRun;
    return true;
}

void UZAK_CAGIR(FrmMainVeldona& f) {
    f.Text5.setText("");
    if (!letEventsIntoLoad(f)) return;
    const std::string islemno = std::to_string(f.session.gISLEMNO);
    openLedgerTables(f, islemno);
    Err passedOver;
    f.Text5.setText(islemno);
    UZAK_ICIN_CAGIR(f);
    resumeNext(
        passedOver, [&] { fillSchedule(f, islemno, Route::Remote); },
        [&] { fillPayments(f, islemno, Route::Remote); });
    Value indirim;
    Value topborc;
    bool found = true;
    attempt(passedOver, [&] { found = findHeader(f, islemno, indirim, topborc); });
    if (!found) return;
    UZAK_BAKIYE_HESAPLA(f, topborc);
    TAKSITLENDIRILMEMIS_MIKTAR(f);
}

namespace {

void showHeader(FrmMainVeldona& f) {
    f.txtOdemeTipi.setText("");
    f.txtAciklama.setText("");
    if (f.Text5.text().empty()) return;
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs,
                "SELECT ISLEMNO,ODEME_TIPI,ACIKLAMA,TESLIMAT_TRH,TESLIM_EDILEN_TRH FROM ISLEMNOTABLO "
                "WHERE ISLEMNO= " +
                    f.Text5.text(),
                adodb::CursorLocation::Client);
    if (rs->eof()) return;
    f.txtOdemeTipi.setText(joinText(rs->value("ODEME_TIPI")));
    f.txtAciklama.setText(joinText(rs->value("ACIKLAMA")));
    f.dtTeslimatTarihi.setValue(format(rs->value("TESLIMAT_TRH"), "dd/mm/yyyy"));
    f.dtTeslimEdildigiTarih.setValue(format(rs->value("TESLIM_EDILEN_TRH"), "dd/mm/yyyy"));
}

} // namespace

void L3_Click(FrmMainVeldona& f) {
    f.Text5.setText(f.L3.text());
}

bool L3_DblClick(FrmMainVeldona& f) {
    f.lblVadeFarki.setCaption("");
    if (!YAKIN_CAGIR(f)) return false;
    GECIKEN_ODM(f);
    if (!TaksitKontrol(f)) return false;
    showHeader(f);
    GECIKME_UYARI(f);
    if (f.Text5.text().empty()) return true; // nothing was opened: there are no totals to refresh
    Err passedOver;
    attempt(passedOver, [&] { TAHSILAT_TOPLAM_YENILE(f); });
    f.cmdSozlesme.setVisible(true);
    f.frmTahsilatMakbuzu.setVisible(true);
    return true;
}

} // namespace veldona
