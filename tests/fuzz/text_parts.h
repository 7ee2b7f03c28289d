// The conversions under test, by what they read.
#pragma once

#include <string>

namespace veldona::fuzz {

void amountsHold(const std::string& text, const std::string& mask);
void datesHold(const std::string& text, const std::string& mask);
void lettersHold(const std::string& text, const std::string& keys);

} // namespace veldona::fuzz
