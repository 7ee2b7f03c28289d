// A typed text as an amount and a number.
#pragma once

#include <string>

namespace veldona::fuzz {

void amountsHold(const std::string& text, const std::string& mask);

} // namespace veldona::fuzz
