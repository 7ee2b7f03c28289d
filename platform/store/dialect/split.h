// Cutting a statement into its shape and its literals, with the choice that a saved query needs: it is kept
// in the file as text, so its literals stay where they are.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/literal.h"

namespace veldona::store {

inline constexpr const char* kTooNested = "Sorgu ifadesinde sözdizimi hatası: ifade fazla iç içe.";

struct SplitStatement {
    std::string shape; // the text with each bindable literal as "?", blanks and letters' case settled
    std::vector<Literal> literals;
    std::vector<std::size_t> places; // where the content of each literal begins in the text
};

enum class Literals { Bound, Kept };

// Raises StoreError{Syntax} for a text that cannot be cut into words (an apostrophe left open, a stray sign).
[[nodiscard]] SplitStatement split(std::string_view sql, Literals literals);
[[nodiscard]] SplitStatement splitStatement(std::string_view sql); // with its literals bound

} // namespace veldona::store
