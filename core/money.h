// What an amount and a date look like in the books, on the screen and in a statement.
//
// Stored: the shown amount times 1,000,000. Shown: text under "#,##0.00". Worked with: Currency, which sums
// the shown texts, so that each addend is already rounded to two places. A date in a statement is month, day,
// year.
#pragma once

#include <string>

#include "core/session.h"
#include "platform/runtime/value.h"

namespace veldona {

inline constexpr const char* kParaMaskesi = "#,##0.00"; // of every shown amount

enum class ParaKipi { Deger = 1, Ifade = 2 };

// Stored amount → shown text (Deger; Null gives ""), or the fragment that divides `ifade` in a query (Ifade).
[[nodiscard]] std::string ParaYaz(const Session& session, const Value& value, const std::string& ifade,
                                  ParaKipi kip);
// Shown amount → stored amount as formatted text (Deger), or as plain number text (Ifade). "" counts as 0;
// error 13 for what does not read.
[[nodiscard]] std::string ParaOku(const Session& session, const Value& value, const std::string& ifade,
                                  ParaKipi kip);
// ParaYaz of an amount.
[[nodiscard]] std::string ParaGoster(const Session& session, const Value& stored);

[[nodiscard]] Value BosIseNull(const std::string& text);
// "NULL" for Null and for 0 or less, else the whole number.
[[nodiscard]] Value SifirIseNull(const Value& value);

// A day below 13 is taken for a month: the date is read again through "mm,dd,yyyy", which swaps the two.
// Together with the store's month-first literals the range comes out right. `date` is changed and returned.
DateTime TarihDuzelt(DateTime& date);
// "#mm,dd,yyyy#", with `saat` (a blank and a time, or nothing) inside the signs.
[[nodiscard]] std::string TarihSabiti(DateTime date, const std::string& saat = {});

inline constexpr const char* kGunBasi = " 00:00:01";
inline constexpr const char* kGunSonu = " 23:59:59";

} // namespace veldona
