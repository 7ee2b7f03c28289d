// The words that a sample shop is made of. Nobody and nothing in it exists.
#pragma once

#include <span>

namespace veldona::hazirla {

struct FirstName {
    const char* text;
    bool woman;
};

// What the shop sells, with the range of its price in lira.
struct Product {
    const char* code;
    const char* name;
    int lowest;
    int highest;
};

[[nodiscard]] std::span<const FirstName> firstNames();
[[nodiscard]] std::span<const char* const> surnames();
[[nodiscard]] std::span<const char* const> occupations();
[[nodiscard]] std::span<const char* const> quarters();
[[nodiscard]] std::span<const char* const> streets();
[[nodiscard]] std::span<const char* const> warnings();
[[nodiscard]] std::span<const char* const> answers(); // on the telephone
[[nodiscard]] std::span<const Product> products();

} // namespace veldona::hazirla
