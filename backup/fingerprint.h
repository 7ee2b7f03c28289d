// What the books hold, in figures: two files with the same fingerprint are taken for the same books.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/store/engine/engine.h"

namespace veldona::backup {

struct Fingerprint {
    std::map<std::string, std::int64_t> rows; // by table
    std::string newestPayment;                // its date as it is stored
    std::int64_t lastPaymentId = 0;
    std::int64_t lastSaleId = 0;

    friend bool operator==(const Fingerprint&, const Fingerprint&) = default;
};

[[nodiscard]] Fingerprint fingerprintOf(store::Engine& engine);

// "21 müşteri, 60 satış, 1.204 ödeme".
[[nodiscard]] std::string countsOf(const Fingerprint& fingerprint);

// "2026-11-22 14:30:05" as the program shows dates; the text itself where it is none.
[[nodiscard]] std::string shownDate(const std::string& stored);

} // namespace veldona::backup
