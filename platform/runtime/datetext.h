// A date as it is typed and shown: reading that may miss, and the shown form.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/datetime.h"

namespace veldona {

// Which of the first two numbers is tried as the month first.
enum class DateOrder { DayFirst, MonthFirst };

// Nothing where the text is no date; the rule stands at readDate.
[[nodiscard]] std::optional<DateTime> findDate(std::string_view text, DateOrder order = DateOrder::DayFirst);

// `number` with at least `width` digits. It must not be negative.
void appendDigits(std::string& out, int number, int width);
// "dd/MM/yyyy", and " hh:mm:ss" where the time is not midnight.
void appendDate(std::string& out, DateTime date);

} // namespace veldona
