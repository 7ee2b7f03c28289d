// What a typed password is, and which ones are good enough to be a new one.
#pragma once

#include <string>
#include <string_view>

#include "platform/runtime/secret.h"

namespace veldona {

// The same letters are the same password however a keyboard or a machine puts them together: one sign, or a
// letter and its mark behind it.
[[nodiscard]] Secret passwordOf(std::string_view typed);

// Why it can't be a new password, in a sentence; "" where it can.
[[nodiscard]] std::string weaknessOf(const Secret& password);

// What weaknessOf asks for, for who is about to choose one.
inline constexpr const char* kPasswordRule =
    "En az 8 karakter; her alfabenin harfi, rakam, boşluk ve işaret olur. Başı ve sonu boşluk olamaz, "
    "hep aynı karakter olamaz. Büyük ve küçük harf ayrıdır.";

} // namespace veldona
