#include "ledger/overdue.h"

#include <algorithm>
#include <unordered_map>

#include "core/database.h"
#include "core/money.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

std::string dateFilter(const FrmMainVeldona& f) {
    const DateTime end = toDate(f.dtRaporTarihiSon.value());
    if (f.dtRaporTarihi.value().isNull()) return " WHERE ODTRH <=   " + dateLiteral(end, kDayEnd);
    const DateTime start = toDate(f.dtRaporTarihi.value());
    return " WHERE ODTRH >= " + dateLiteral(start, kDayBegin) + " And  ODTRH <" + dateLiteral(end, kDayEnd);
}

StoredAmount sumOf(const adodb::Recordset& rs, const char* field) {
    if (rs.eof() || rs.value(field).isNull()) return {};
    return StoredAmount::ofColumn(rs.value(field)).rounded();
}

// Cheques and cash-box receipts among the payments on show count for every sale.
StoredAmount otherReceipts(const FrmMainVeldona& f) {
    StoredAmount sum;
    for (int i = 0; i < f.L1.count(); ++i) {
        const std::string& mark = f.lstOdemeTip.list(i);
        if (mark == "Ç" || mark == "K") sum += StoredAmount::ofLira(toDouble(f.L2.list(i))).rounded();
    }
    return sum;
}

// What was paid for the account's sales, of which the first and the last one asked for are given.
std::unordered_map<std::int32_t, StoredAmount> paidFor(FrmMainVeldona& f, std::int32_t ilk,
                                                       std::int32_t son) {
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs,
                "SELECT  MUSTNO,ISLEMNO,SUM(ODMIKTAR) as OdenenPara From TAKSITODENEN  WHERE MUSTNO = '" +
                    f.Text1.text() + "' And ISLEMNO>=" + std::to_string(ilk) +
                    " And ISLEMNO<=" + std::to_string(son) + " GROUP BY MUSTNO,ISLEMNO",
                adodb::CursorLocation::Client);
    std::unordered_map<std::int32_t, StoredAmount> paid;
    for (; !rs->eof(); rs->moveNext())
        paid.emplace(toLong(rs->value("ISLEMNO")), sumOf(*rs, "OdenenPara"));
    return paid;
}

void collectSales(FrmMainVeldona& f) {
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs,
                "SELECT  MUSTNO,ISLEMNO,SUM(ODMIKTAR) as OdenmesiGerekenPara ,MAX(ODTRH) As ODEME_TARIHI   "
                ",MIN(ODTRH) As MIN_ODEME_TARIHI FROM URUNSAT " +
                    dateFilter(f) + " AND MUSTNO = '" + f.Text1.text() + "' GROUP BY MUSTNO,ISLEMNO",
                adodb::CursorLocation::Client);
    if (rs->eof()) return;
    RecordsetPtr customer;
    KayitSetiAc(f.session, customer, "Select AD,SOYAD from MUSTKAYIT where HSTNO='" + f.Text1.text() + "'",
                adodb::CursorLocation::Client);
    const std::string ad = customer->eof() ? "" : joinText(customer->value("AD"));
    const std::string soyad = customer->eof() ? "" : joinText(customer->value("SOYAD"));
    for (; !rs->eof(); rs->moveNext()) {
        OverdueSale sale;
        sale.MUSTNO = joinText(rs->value("MUSTNO"));
        sale.ISLEMNO = toLong(rs->value("ISLEMNO"));
        sale.Due = sumOf(*rs, "OdenmesiGerekenPara");
        sale.ODEME_TARIHI = rs->value("ODEME_TARIHI");
        sale.MIN_ODEME_TARIHI = rs->value("MIN_ODEME_TARIHI");
        sale.AD = ad;
        sale.SOYAD = soyad;
        f.overdueSales.push_back(std::move(sale));
    }
    const auto [first, last] = std::ranges::minmax(f.overdueSales, {}, &OverdueSale::ISLEMNO);
    const auto paid = paidFor(f, first.ISLEMNO, last.ISLEMNO);
    for (OverdueSale& sale : f.overdueSales) {
        const auto found = paid.find(sale.ISLEMNO);
        sale.Paid = (found == paid.end() ? StoredAmount{} : found->second) + otherReceipts(f);
        sale.Kalan = sale.Due - sale.Paid;
    }
}

double sumForCustomer(FrmMainVeldona& f, const std::string& sql, const char* alias) {
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs, sql, adodb::CursorLocation::Client);
    return rs->eof() || rs->value(alias).isNull() ? 0 : toDouble(rs->value(alias));
}

} // namespace

void GECIKME_UYARI(FrmMainVeldona& f) {
    f.overdueTotal = Currency{};
    f.dtRaporTarihiSon.setValue(f.session.desktop.clock.today());
    if (f.dtRaporTarihi.value().isNull() && f.dtRaporTarihiSon.value().isNull()) {
        f.session.desktop.dialogs.tell(" Tarih Aralığı Seçmelisiniz ");
        return;
    }
    if (trim(f.Text1.text()).empty()) return;
    f.overdueSales.clear();
    collectSales(f);
    for (const OverdueSale& sale : f.overdueSales)
        if (sale.Kalan > StoredAmount{}) f.overdueTotal += sale.Kalan.working();
    const bool overdue = f.overdueTotal > Currency{};
    if (overdue) f.lblVadeFarki.setCaption(toText(f.overdueTotal) + " YTL Günü Geçen Ödeme Var ");
    f.lblVadeFarki.setVisible(overdue);
}

void MUSTERI_BAKIYE(FrmMainVeldona& f) {
    const std::string hstno = f.Text1.text();
    if (trim(hstno).empty()) return;
    const double planned = sumForCustomer(f,
                                          " SELECT SUM( URUNSAT.ODMIKTAR/1000000) AS TUTAR  From URUNSAT "
                                          "WHERE   URUNSAT.MUSTNO = '" +
                                              hstno + "' GROUP BY  MUSTNO",
                                          "TUTAR");
    const double paid = sumForCustomer(f,
                                       " SELECT SUM( TAKSITODENEN.ODMIKTAR/1000000) AS TAHSILEDILEN_TUTAR  "
                                       "From TAKSITODENEN WHERE TAKSITODENEN.MUSTNO = '" +
                                           hstno + "' GROUP BY  MUSTNO",
                                       "TAHSILEDILEN_TUTAR");
    f.cyMusteriBakiye = Currency::ofDouble(planned) - Currency::ofDouble(paid);
}

bool GRUP_KONTROL(FrmMainVeldona& f) {
    RecordsetPtr rs;
    KayitSetiAc(
        f.session, rs,
        "SELECT GRUPLAR.GRUP_KOD, MUSTKAYIT.GURUP_ID, MUSTKAYIT.HSTNO  FROM GRUPLAR INNER JOIN MUSTKAYIT "
        "ON GRUPLAR.ID = MUSTKAYIT.GURUP_ID  WHERE  MUSTKAYIT.HSTNO = '" +
            trim(f.Text1.text()) + "'",
        adodb::CursorLocation::Client);
    return !rs->eof() && trim(joinText(rs->value("GRUP_KOD"))) == "YM";
}

void Command6_Click(FrmMainVeldona& f) {
    GECIKME_UYARI(f);
    MUSTERI_BAKIYE(f);
}

void tmrUyari_Timer(FrmMainVeldona& f) {
    if (!trim(f.m_Uyari).empty()) f.lbluyari.setVisible(!f.lbluyari.visible());
}

void lbluyari_Click(FrmMainVeldona& f) {
    f.session.desktop.dialogs.tell(f.m_Uyari);
}

} // namespace veldona
