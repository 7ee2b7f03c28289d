#include "core/salebalance.h"

#include <functional>

#include "platform/runtime/text.h"
#include "platform/store/engine/engine.h"

namespace veldona {

void SaleBalance::addLine(StoredAmount amount) {
    ++lineCount;
    lines += amount.roundedToKurus();
}

SaleBalance& SaleBalance::operator+=(const SaleBalance& other) {
    lineCount += other.lineCount;
    lines += other.lines;
    discount += other.discount;
    paid += other.paid;
    return *this;
}

std::map<std::int32_t, SaleBalance> balancesOf(adodb::Connection& books, const std::string& account) {
    std::map<std::int32_t, SaleBalance> sales;
    const auto eachRow = [&](const char* amount, const std::string& order,
                             const std::function<void(std::int32_t sale, StoredAmount)>& take) {
        books.walk(std::string("SELECT ISLEMNO,") + amount + " WHERE MUSTNO='" +
                       replaceAll(account, "'", "''") + "' AND ISLEMNO IS NOT NULL" + order,
                   [&](const store::Statement& row) {
                       take(static_cast<std::int32_t>(row.whole(0)), StoredAmount::ofColumn(row.number(1)));
                   });
    };
    eachRow("ADET*FIYAT FROM URUNAL", "", [&](auto sale, auto amount) { sales[sale].addLine(amount); });
    eachRow("INDIRIM_YTL FROM ISLEMNOTABLO", " ORDER BY ID DESC", [&](auto sale, auto amount) {
        if (const auto found = sales.find(sale); found != sales.end()) found->second.setDiscount(amount);
    });
    eachRow("ODMIKTAR FROM TAKSITODENEN", "",
            [&](auto sale, auto amount) { sales[sale].addPayment(amount); });
    return sales;
}

} // namespace veldona
