// The schedule and the payments of every sale, read in a few large questions instead of a dozen a sale.
//
// A sale's rows stand together, in the order in which they were written.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/storedamount.h"

namespace veldona {

struct Session;

struct Hareket {
    std::int32_t ISLEMNO;
    std::optional<DateTime> ODTRH;
    StoredAmount ODMIKTAR; // 0 where the books have none
};

class SaleMovements {
public:
    // `devam` is asked between the questions; false gives the reading up, and isComplete() says so.
    SaleMovements(Session& session, std::string_view tablo, std::vector<std::int32_t> sales,
                  const std::function<bool()>& goOn);
    [[nodiscard]] bool isComplete() const { return complete_; }
    [[nodiscard]] std::span<const Hareket> ofSale(std::int32_t islemNo) const;

private:
    std::vector<Hareket> rows_;
    bool complete_ = true;
};

} // namespace veldona
