// Whether a password is a file's own, told by the seals of its pages: the engine has one answer for a wrong
// password and for a damaged first page, and each page is sealed by itself.
#pragma once

#include <string>
#include <string_view>

namespace veldona::store {

enum class Fit {
    Fits,
    FitsDamaged, // the first page is damaged; others were written under this password
    Unknown,     // another password, or all that could tell is damaged: the salt, most of the file
};

// Costs what the opening of the file costs. Nothing is written.
[[nodiscard]] Fit fitOf(const std::string& nativePath, std::string_view password);

// Whether a password may be what is missing: there are whole pages, and the first is not plain to everybody.
[[nodiscard]] bool looksSealed(const std::string& nativePath);

} // namespace veldona::store
