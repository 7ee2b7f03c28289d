#include "sales/deleting.h"

#include "core/recordcycle.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"
#include "sales/lifecycle.h"
#include "sales/salerows.h"

namespace veldona {

namespace {

// False where a product is missing, or the sale has no line.
bool takeBackFromStock(Session& session, const std::string& islemno) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs,
                "SELECT URUNAL.URKOD, Sum(URUNAL.ADET) AS Miktar From URUNAL WHERE (((URUNAL.ISLEMNO) =" +
                    islemno + "))GROUP BY URUNAL.URKOD",
                adodb::CursorLocation::Client);
    if (rs->eof()) return false;
    for (; !rs->eof(); rs->moveNext())
        if (!StokGuncelle(session, joinText(rs->value("URKOD")), toLong(rs->value("Miktar")),
                          StockMovement::TakeBack, StockDirection::In))
            return false;
    return true;
}

bool isConfirmed(Dialogs& dialogs) {
    return dialogs.confirmDeleting("Bu Kaydı Silmek İstediğinizden Eminmisiniz") &&
           dialogs.confirmDeleting("Bu Kaydı silmek İstediğinizden Eminmisiniz", "Kayıt Sil");
}

} // namespace

void SatisSil(FrmSatis& f, std::int32_t id) {
    Session& session = f.session;
    if (id <= 0 || !isConfirmed(session.desktop.dialogs)) return;
    const std::string islemno = trim(f.txtIslemNo.text());
    if (islemno.empty()) {
        session.desktop.dialogs.tell("İşlem Numarası Şeçiniz", Icon::Information);
        return;
    }
    const bool gone = inTransaction(session, [&] {
        return takeBackFromStock(session, islemno) && SatisKayitlariniSil(session, islemno);
    });
    if (!gone) return;
    f.m_KayitID = 0; // without another sale there is none to change or to delete
    f.rs->requery();
    FormGezinme(f, Navigation::Son);
}

} // namespace veldona
