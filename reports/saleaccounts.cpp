#include "reports/saleaccounts.h"

#include <algorithm>

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr std::size_t kSalesAtOnce = 2000; // sales to one question

void read(Session& session, std::string_view tablo, std::int32_t ilk, std::int32_t son,
          std::vector<Hareket>& rows) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs,
                "SELECT ISLEMNO,ODTRH,ODMIKTAR FROM " + std::string(tablo) + " WHERE ISLEMNO>=" +
                    std::to_string(ilk) + " AND ISLEMNO<=" + std::to_string(son) + " ORDER BY ISLEMNO,ID",
                adodb::CursorLocation::Client);
    const int count = rs->recordCount();
    for (int i = 0; i < count; ++i) {
        const Value& date = rs->at(i, 1);
        const Value& amount = rs->at(i, 2);
        rows.push_back({toLong(rs->at(i, 0)), date.isNull() ? std::nullopt : std::optional(toDate(date)),
                        amount.isNull() ? StoredAmount{} : StoredAmount::ofColumn(amount)});
    }
}

} // namespace

SaleMovements::SaleMovements(Session& session, std::string_view tablo, std::vector<std::int32_t> sales,
                             const std::function<bool()>& goOn) {
    std::ranges::sort(sales);
    sales.erase(std::unique(sales.begin(), sales.end()), sales.end());
    for (std::size_t i = 0; i < sales.size() && complete_; i += kSalesAtOnce) {
        read(session, tablo, sales[i], sales[std::min(i + kSalesAtOnce, sales.size()) - 1], rows_);
        complete_ = goOn();
    }
}

std::span<const Hareket> SaleMovements::ofSale(std::int32_t islemNo) const {
    return {std::ranges::lower_bound(rows_, islemNo, {}, &Hareket::ISLEMNO),
            std::ranges::upper_bound(rows_, islemNo, {}, &Hareket::ISLEMNO)};
}

} // namespace veldona
