// An act in the words of the shop: what it did in a line, what kind of act it was, and each row in full.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "journal/acts.h"

namespace veldona::journal {

enum class ActKind { Collection, Sale, SaleRemoved, Plan, Customer, Other, TakenBack };
// In the order of ActKind.
inline constexpr std::array<const char*, 7> kActKinds = {"Tahsilatlar",      "Kaydedilen satışlar",
                                                         "Silinen satışlar", "Satış ve taksit düzeltmeleri",
                                                         "Müşteri kartları", "Ötekiler",
                                                         "Geri alınanlar"};

// By what it wrote, so that the same slip is found under one kind whichever screen it was made on.
[[nodiscard]] ActKind kindOf(const Act& act);

// "219 numaralı satış silindi: 1 satır, 5 taksit, 3 ödeme, 460,00 tahsilat".
[[nodiscard]] std::string summaryOf(const Act& act);
// The account that most of it belongs to; "" where it is nobody's.
[[nodiscard]] std::string accountOf(const Act& act);
// The caption of what was pressed, "Geri Al" where it took another act back.
[[nodiscard]] std::string nameOf(const Act& act);
// "23/11/2026 12:40, Tahsilat, kasa-2, ayse".
[[nodiscard]] std::string whenAndWho(const Act& act);

// The name under which an act is written that takes another one back; and which one that was, "" for others.
inline constexpr std::string_view kTakingBack = "Geri Al: ";
[[nodiscard]] std::string takingBackName(const std::string& id);
[[nodiscard]] std::string takenBackBy(const Act& act);

// "219 numaralı satışın ödemesi (150,00)".
[[nodiscard]] std::string rowWords(const Entry& entry);
[[nodiscard]] std::string rowWords(const std::string& table, const Fields& row);

// One value of a row of the act.
struct Detail {
    std::string row;     // on the first value of a row: what it is and what became of it
    std::string caption; // of the column
    std::string before, after;
};
[[nodiscard]] std::vector<Detail> detailsOf(const Act& act);

} // namespace veldona::journal
