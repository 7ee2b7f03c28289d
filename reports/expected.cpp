#include "reports/expected.h"

#include <optional>

#include "core/database.h"
#include "core/session.h"
#include "platform/store/faces/adodb.h"
#include "reports/receivables.h"
#include "reports/salesums.h"

namespace veldona {

namespace {

std::string periodCondition(const DateRange& range) {
    return "  ODTRH >= #" + range.from + "# And  ODTRH <=#" + range.son + "# ";
}

// `planlanan` up to the end, `odenen` up to the end, `donem` in the period, or nothing where no row falls
// in it. What such a sale gets is of no account: its last date lies before the period, so the paper leaves it
// out.
StoredAmount expectedPart(StoredAmount planned, StoredAmount paid, std::optional<StoredAmount> period) {
    StoredAmount kalan = planned - paid;
    if (period)
        kalan = *period;
    else
        paid = {};
    return planned - paid <= kalan ? planned - paid : kalan;
}

bool compute(ReportScreen& f, const DateRange& range, OverdueArray& array) {
    Session& session = f.session;
    const std::string kosul = " WHERE ODTRH <=   #" + range.son + "# ";
    RecordsetPtr rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(session, rs, installmentGroups(kosul), hata) || rs->eof()) return false;
    SaleSums paidSums, periods;
    if (!paidSums.read(session, {"TAKSITODENEN", kosul})) return false;
    if (!periods.read(session, {"URUNSAT", "Where  " + periodCondition(range)})) return false;
    for (; !rs->eof(); rs->moveNext()) {
        GecikmeKaydi record;
        takeGroup(*rs, record);
        const auto paid = paidSums.sumOfSale(session, record.MUSTNO, record.ISLEMNO).value_or(StoredAmount{});
        record.KALAN = expectedPart(wholeAmount(rs->value(2)), paid,
                                    periods.sumOfSale(session, record.MUSTNO, record.ISLEMNO));
        array.extend() = std::move(record);
        array.advance();
    }
    return true;
}

void clearDetail(ReportScreen& f, const DateRange& range) {
    if (SqlCalistir(f.session, *f.session.gBaglanti,
                    "Delete from GUNUGECENODM WHERE NOT  (" + periodCondition(range) + "  )"))
        clearOverdue(f.session);
}

std::string reportQuery(const ReportScreen&, const DateRange& range) {
    return reportColumns("--") + "AND " + periodCondition(range) +
           "   ORDER BY [MUSTKAYIT].[AD], [MUSTKAYIT].[SOYAD],GUNUGECENODM.ISLEMNO,GUNUGECENODM.ODTRH";
}

} // namespace

void expectedReport(ReportScreen& f) {
    runReport(f, {compute, clearDetail, reportQuery});
}

} // namespace veldona
