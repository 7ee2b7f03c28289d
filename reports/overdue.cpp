#include "reports/overdue.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "platform/store/engine/alphabet.h"
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

// The sums of the cheques, one a customer, asked for all customers at once.
class Cheques {
public:
    bool read(Session& session) {
        std::string hata;
        RecordsetPtr rs;
        if (!KayitSetiAcKontrollu(session, rs, query(""), hata)) return false;
        for (; !rs->eof(); rs->moveNext())
            if (!rs->value(0).isNull()) sums_.push_back({toText(rs->value(0)), rs->value(1)});
        // Each customer stands there once, in the alphabet of this machine, by which it is looked for.
        std::ranges::sort(sums_, isBefore, &Sum::mustno);
        return true;
    }
    // The customer's, in one row of the store's answer or none.
    [[nodiscard]] std::vector<Value> sumOfSale(Session& session, const std::string& mustno) const {
        if (sums_.empty()) return {};
        if (mustno.find('\'') != mustno.npos) return ask(session, mustno); // which the store has to answer
        const auto found = std::ranges::lower_bound(sums_, mustno, isBefore, &Sum::mustno);
        if (found == sums_.end() || isBefore(mustno, found->mustno)) return {};
        return {found->tutar};
    }

private:
    struct Sum {
        std::string mustno;
        Value tutar;
    };
    static bool isBefore(const std::string& left, const std::string& right) {
        return store::Alphabet::turkish().compare(left, right) < 0;
    }
    static std::vector<Value> ask(Session& session, const std::string& mustno) {
        std::vector<Value> totals;
        RecordsetPtr rs;
        KayitSetiAc(session, rs, query(" And ALINANCEK.FIRMANO= '" + mustno + "'"),
                    adodb::CursorLocation::Client);
        for (; !rs->eof(); rs->moveNext())
            totals.push_back(rs->value(1));
        return totals;
    }
    static std::string query(const std::string& firma) {
        return "SELECT  FIRMANO,SUM(TUTAR) as CariAlacakCarininVerdigiCek   From ALINANCEK   WHERE "
               "ALINANCEK.CARI_HESAP_ISLE='1'" +
               firma + " GROUP BY FIRMANO";
    }
    std::vector<Sum> sums_;
};

// Each cheque row takes an element of the array for itself, which stays empty.
Currency chequeTotal(Session& session, const Cheques& cheques, const std::string& mustno,
                     OverdueArray& array) {
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
