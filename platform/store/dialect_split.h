// Cutting a statement into its shape and its literals, with the choice that a saved query needs: it is kept
// in the file as text, so its literals stay where they are.
#pragma once

#include <string_view>

#include "platform/store/dialect.h"

namespace veldona::store {

inline constexpr const char* kTooNested = "Sorgu ifadesinde sözdizimi hatası: ifade fazla iç içe.";

enum class Literals { Bound, Kept };

[[nodiscard]] SplitStatement split(std::string_view sql, Literals literals);

} // namespace veldona::store
