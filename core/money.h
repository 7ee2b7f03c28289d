// What an amount and a date look like in the books, on the screen and in a statement.
//
// Stored: StoredAmount. Shown: text under "#,##0.00". Worked with: Currency, which sums
// the shown texts, so that each addend is already rounded to two places. A date in a statement is month, day,
// year.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/runtime/storedamount.h"
#include "platform/runtime/value.h"

namespace veldona {

struct Session;

inline constexpr const char* kMoneyMask = "#,##0.00"; // of every shown amount

// A stored amount on its way into a column, as the text that the statement builder takes. It is a value of a
// column, and no text that a screen could show.
class StoredText {
public:
    explicit StoredText(std::string text) : text_(std::move(text)) {}
    [[nodiscard]] const std::string& inStatement() const { return text_; }
    operator Value() const { return text_; }

private:
    std::string text_;
};

enum class MoneyMode { Deger = 1, Ifade = 2 };

// What a column holds; nothing for Null. Error 13 for what does not read.
[[nodiscard]] std::optional<StoredAmount> storedIn(const Value& column);

// Stored amount → shown text (Deger; nothing gives ""), or the fragment that divides `ifade` in a query
// (Ifade).
[[nodiscard]] std::string ParaYaz(const Session& session, const std::optional<StoredAmount>& stored,
                                  const std::string& ifade, MoneyMode kip);
// Shown amount → stored amount as formatted text (Deger), or as plain number text (Ifade). "" counts as 0;
// error 13 for what does not read.
[[nodiscard]] StoredText ParaOku(const Session& session, const Value& value, const std::string& ifade,
                                 MoneyMode kip);
// ParaYaz of an amount.
[[nodiscard]] std::string ParaGoster(const Session& session, const std::optional<StoredAmount>& stored);

[[nodiscard]] Value BosIseNull(const std::string& text);
// "NULL" for Null and for 0 or less, else the whole number.
[[nodiscard]] Value SifirIseNull(const Value& value);

// A day below 13 is taken for a month: the date is read again through "mm,dd,yyyy", which swaps the two.
// Together with the store's month-first literals the range comes out right. `date` is changed and returned.
DateTime TarihDuzelt(DateTime& date);
// "#mm,dd,yyyy#", with `saat` (a blank and a time, or nothing) inside the signs.
[[nodiscard]] std::string dateLiteral(DateTime date, const std::string& timeOfDay = {});

inline constexpr const char* kDayBegin = " 00:00:01";
inline constexpr const char* kDayEnd = " 23:59:59";

} // namespace veldona
