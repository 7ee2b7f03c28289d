#include "reports/salesums.h"

#include <utility>

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

std::string sumQuery(const SaleQuery& query, const std::string& sale) {
    return "SELECT  MUSTNO,ISLEMNO,SUM(ODMIKTAR) as OdenenPara From " + query.tablo + "  " + query.kosul +
           sale + " GROUP BY MUSTNO,ISLEMNO";
}

} // namespace

bool SaleSums::read(Session& session, SaleQuery query) {
    query_ = std::move(query);
    RecordsetPtr rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(session, rs, sumQuery(query_, ""), hata)) return false;
    sales_.reserve(static_cast<std::size_t>(rs->recordCount()));
    for (; !rs->eof(); rs->moveNext()) {
        if (rs->value(0).isNull() || rs->value(1).isNull()) continue; // belongs to no sale that is asked for
        sales_[toLong(rs->value(1))].push_back({toText(rs->value(0)), rs->value(2)});
    }
    return true;
}

std::optional<StoredAmount> SaleSums::sumOfSale(Session& session, const std::string& mustno,
                                                std::int16_t islemno) const {
    const auto sale = sales_.find(islemno);
    if (sale == sales_.end()) return std::nullopt;
    for (const Sum& total : sale->second)
        if (total.mustno == mustno) return wholeAmount(total.tutar);
    RecordsetPtr rs;
    KayitSetiAc(session, rs,
                sumQuery(query_, "  And MUSTNO='" + mustno + "' And ISLEMNO=" + std::to_string(islemno)),
                adodb::CursorLocation::Client);
    if (rs->eof()) return std::nullopt;
    return wholeAmount(rs->value(2));
}

StoredAmount wholeAmount(const Value& tutar) {
    return StoredAmount::ofColumn(tutar).rounded();
}

} // namespace veldona
