#include "ledger/correctionsdelete.h"

#include "core/database.h"
#include "core/money.h"
#include "core/session.h"
#include "ledger/correctionswalk.h"
#include "ledger/loading.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kRowQuestion = "Satır Silmek İstediğinizden Eminmisiniz ?";
constexpr const char* kChooseRow = "Silmek İstediğiniz Satırı Seçiniz";
constexpr const char* kChooseSale = "İşlem No Seçiniz";
constexpr int kUntilWritten = 1000; // milliseconds before the ledger reads through its own recordsets

// False where the totals of a product could not be moved.
bool putStockBack(FrmMainVeldona& f, std::int32_t islemno) {
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs,
                "SELECT URUNAL.URKOD, Sum(URUNAL.ADET) AS Miktar From URUNAL WHERE (((URUNAL.ISLEMNO) =" +
                    std::to_string(islemno) + "))GROUP BY URUNAL.URKOD",
                adodb::CursorLocation::Client);
    for (; !rs->eof(); rs->moveNext())
        if (!StokGuncelle(f.session, joinText(rs->value("URKOD")), toInteger(rs->value("Miktar")),
                          StockMovement::TakeBack, StockDirection::In))
            return false;
    return true;
}

bool deleteSale(FrmMainVeldona& f, Err& err) {
    if (!IslemBaslat(f.session)) return false;
    bool deleted = false;
    attempt(err, [&] {
        const std::int32_t islemno = toLong(trim(f.Text5.text()));
        if (!putStockBack(f, islemno)) return;
        SATIS_KAYIT_SIL(f, islemno);
        deleted = IslemOnayla(f.session);
    });
    if (!deleted) IslemGeriAl(f.session);
    return deleted;
}

void reportFailure(FrmMainVeldona& f, const Err& err) {
    const std::string words = err.number == 0 ? "Satış silinemedi, kayıtlar olduğu gibi duruyor."
                                              : std::to_string(err.number) + " " + err.description;
    f.session.desktop.dialogs.show({words, f.name(), Icon::None, Buttons::Ok});
}

// What the operator opened during the wait was read behind the write.
void reloadSale(FrmMainVeldona& f, Err& err, int sale) {
    const unsigned before = f.loadsRun;
    attempt(err, [&] { f.session.desktop.clock.wait(kUntilWritten); });
    if (f.loadsRun != before) return;
    resumeNext(
        err, [&] { f.L3.setListIndex(sale); }, [&] { L3_DblClick(f); });
}

// The row's ID; nothing where the lists hold none.
std::optional<std::int32_t> idOf(Err& err, const ListBox& ids, int row) {
    std::optional<std::int32_t> id;
    if (!ids.list(row).empty()) attempt(err, [&] { id = toLong(ids.list(row)); });
    return id;
}

// What is owed for the lines that are left, in the stored form.
std::string debtLeft(const FrmMainVeldona& f) {
    const Currency debt = sumOf(f.List6) - amountOrZero(f.lblIndirim.caption());
    return ParaOku(f.session, debt, {}, MoneyMode::Ifade).inStatement();
}

} // namespace

void cmdIslemNoSil_Click(FrmMainVeldona& f) {
    Dialogs& dialogs = f.session.desktop.dialogs;
    if (trim(f.Text5.text()).empty()) {
        dialogs.tell("İşlem Numarası Şeçiniz", Icon::Information);
        return;
    }
    if (dialogs.confirmDeleting("Bu Satışı silmek İstediğinizden Eminmisiniz", "Kayıt Sil")) {
        Err err;
        if (!deleteSale(f, err)) {
            reportFailure(f, err);
            return;
        }
        if (!letEventsIntoLoad(f) || !ISLEMNUMARALARI_YUKLE(f)) return;
        f.Text6.setText("");
    }
    f.Text1.setText(f.Text1.text());
}

void SATIS_KAYIT_SIL(FrmMainVeldona& f, std::int32_t islemno) {
    for (const char* table : {"URUNSAT", "TAKSITODENEN", "URUNAL", "ISLEMNOTABLO"})
        f.session.gBaglanti->execute(std::string("Delete from ") + table +
                                     " Where ISLEMNO= " + std::to_string(islemno));
}

void mnuSatirSil_Click(FrmMainVeldona& f) {
    Dialogs& dialogs = f.session.desktop.dialogs;
    const int sale = f.L3.listIndex();
    const int row = f.List2.listIndex();
    if (trim(f.Text5.text()).empty()) return dialogs.tell(kChooseSale, Icon::Information);
    if (f.List2.count() == 1)
        return dialogs.tell("Tek satır olduğu için bu satırı silmemeniz önerilir.", Icon::Information);
    if (row < 0) return dialogs.tell(kChooseRow, Icon::Exclamation);
    if (!dialogs.confirmDeleting(kRowQuestion)) return;

    Err err;
    std::string n, debt;
    attempt(err, [&] { n = std::to_string(toLong(f.Text5.text())); });
    const std::optional<std::int32_t> id = idOf(err, f.lstID, row);
    for (ListBox* list : {&f.lstID, &f.List1, &f.List2, &f.List3, &f.List4, &f.List5, &f.List6, &f.List7})
        attempt(err, [&] { list->remove(row); });
    attempt(err, [&] { debt = debtLeft(f); });
    if (id) {
        adodb::Connection& books = *f.session.gBaglanti;
        resumeNext(
            err,
            [&] {
                books.execute("Delete from URUNAL WHERE ISLEMNO=  " + n + " AND ID=" + std::to_string(*id));
            },
            [&] { books.execute("UPDATE ISLEMNOTABLO SET TOPBORC= " + debt + " Where ISLEMNO = " + n); });
    }
    reloadSale(f, err, sale);
    if (err.number != 0) dialogs.tell(err.description);
}

void mnuYapilacakOdmSatirSil_Click(FrmMainVeldona& f) {
    Dialogs& dialogs = f.session.desktop.dialogs;
    const int sale = f.L3.listIndex();
    const int row = f.L5.listIndex();
    if (trim(f.Text5.text()).empty()) return dialogs.tell(kChooseSale, Icon::Information);
    if (row < 0) return dialogs.tell(kChooseRow, Icon::Exclamation);
    if (!dialogs.confirmDeleting(kRowQuestion)) return;

    Err passedOver;
    const std::int32_t id = idOf(passedOver, f.lstYapilacakOdmID, row).value_or(0);
    for (ListBox* list : {&f.L4, &f.L5, &f.lstYapilacakOdmID})
        attempt(passedOver, [&] { list->remove(row); });
    SqlCalistir(f.session, *f.session.gBaglanti, "Delete from URUNSAT WHERE ID=  " + std::to_string(id));
    reloadSale(f, passedOver, sale);
}

} // namespace veldona
