// The sums of one table per sale, asked for all sales at once and looked up in memory.
//
// A look-up gives what a query of that one sale would give. Account numbers that the store takes for equal
// need not be the same text, so a number that is met in another spelling is asked of the store after all.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/runtime/storedamount.h"

namespace veldona {

struct Session;

// What is asked: the rows of `tablo` that `kosul` (" WHERE …") lets through.
struct SaleQuery {
    std::string tablo;
    std::string kosul;
};

class SaleSums {
public:
    // False where the query fails; the operator has been told.
    [[nodiscard]] bool read(Session& session, SaleQuery query);
    // ODMIKTAR of the sale's rows, rounded to whole stored units; nothing where it has no row.
    [[nodiscard]] std::optional<StoredAmount> sumOfSale(Session& session, const std::string& mustno,
                                                        std::int16_t islemno) const;

private:
    struct Sum {
        std::string mustno;
        Value tutar;
    };
    SaleQuery query_;
    std::unordered_map<std::int64_t, std::vector<Sum>> sales_; // by sale number
};

// A stored sum in whole units, ties to the even number; error 94 for a sum of nothing but Null.
[[nodiscard]] StoredAmount wholeAmount(const Value& tutar);

} // namespace veldona
