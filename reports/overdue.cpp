#include "reports/overdue.h"

#include <string>
#include <utility>
#include <vector>

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"
#include "reports/receivables.h"
#include "reports/salesums.h"

namespace veldona {

namespace {

std::string dateCondition(const DateRange& range) {
    if (range.fromChosen && range.toChosen)
        return " WHERE ODTRH >= #" + range.from + "# And  ODTRH <#" + range.son + "# ";
    return " WHERE ODTRH <=   #" + range.from + "# ";
}

// The cheques of one customer after another. A shop without cheques asks once.
class Cheques {
public:
    bool read(Session& session) {
        std::string hata;
        RecordsetPtr rs;
        if (!KayitSetiAcKontrollu(session, rs, query(""), hata)) return false;
        var_ = !rs->eof();
        return true;
    }
    // The sums of the customer's cheques, one a row of the store's answer.
    const std::vector<Value>& sumOfSale(Session& session, const std::string& mustno) {
        if (!var_ || (asked_ && mustno == mustno_)) return totals_;
        totals_.clear();
        RecordsetPtr rs;
        KayitSetiAc(session, rs, query(" And ALINANCEK.FIRMANO= '" + mustno + "'"),
                    adodb::CursorLocation::Client);
        for (; !rs->eof(); rs->moveNext())
            totals_.push_back(rs->value(1));
        mustno_ = mustno;
        asked_ = true;
        return totals_;
    }

private:
    static std::string query(const std::string& firma) {
        return "SELECT  FIRMANO,SUM(TUTAR) as CariAlacakCarininVerdigiCek   From ALINANCEK   WHERE "
               "ALINANCEK.CARI_HESAP_ISLE='1'" +
               firma + " GROUP BY FIRMANO";
    }
    bool var_ = false;
    bool asked_ = false;
    std::string mustno_;
    std::vector<Value> totals_;
};

// Each cheque row takes an element of the array for itself, which stays empty.
Currency chequeTotal(Session& session, Cheques& cheques, const std::string& mustno, OverdueArray& array) {
    Currency total;
    for (const Value& tutar : cheques.sumOfSale(session, mustno)) {
        total += toCurrency(tutar);
        array.advance();
    }
    return total;
}

bool compute(ReportScreen& f, const DateRange& range, OverdueArray& array) {
    Session& session = f.session;
    const std::string kosul = dateCondition(range);
    RecordsetPtr rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(session, rs, installmentGroups(kosul), hata) || rs->eof()) return false;
    Cheques cheques;
    SaleSums paidSums;
    if (!cheques.read(session) || !paidSums.read(session, {"TAKSITODENEN", kosul})) return false;
    for (; !rs->eof(); rs->moveNext()) {
        GecikmeKaydi record;
        takeGroup(*rs, record);
        const Currency cheque = chequeTotal(session, cheques, record.MUSTNO, array);
        const auto paid = paidSums.sumOfSale(session, record.MUSTNO, record.ISLEMNO).value_or(StoredAmount{});
        // The stored amount counts as one of lira here, and so do the cheques: both on purpose.
        const Currency difference = Currency::ofDouble((wholeAmount(rs->value(2)) - paid).column());
        record.KALAN = StoredAmount::ofColumn((difference - cheque).toDouble());
        array.extend() = std::move(record);
        array.advance();
    }
    return true;
}

void clearDetail(ReportScreen& f, const DateRange&) {
    clearOverdue(f.session);
}

std::string reportQuery(const ReportScreen& f, const DateRange&) {
    const std::string query = reportColumns("@");
    if (f.cboSiralamaKriteri->text() == "Ad Soyad")
        return query + " ORDER BY [MUSTKAYIT].[AD], [MUSTKAYIT].[SOYAD],GUNUGECENODM.ODTRH,GUNUGECENODM."
                       "ISLEMNO";
    return query + " ORDER BY GUNUGECENODM.ODTRH,[MUSTKAYIT].[AD], [MUSTKAYIT].[SOYAD],GUNUGECENODM.ISLEMNO";
}

} // namespace

void overdueReport(ReportScreen& f) {
    runReport(f, {compute, clearDetail, reportQuery});
}

} // namespace veldona
