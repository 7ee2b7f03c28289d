// A statement's text, read once: its words, the values in it, and the key by which a plan made for it is
// found again when the text comes with other values.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/lexer.h"
#include "platform/store/dialect/literal.h"

namespace veldona::store {

inline constexpr const char* kTooNested = "Sorgu ifadesinde sözdizimi hatası: ifade fazla iç içe.";

struct Reading {
    // The text as it stands, with a mark in the place of each bound value: texts with equal keys are one
    // statement. A control character begins each mark, which no word can hold.
    std::string key;
    std::vector<Literal> literals; // the bound values
    // The words, to the one that ends them. They point into the text, which must outlive them; a bound value
    // is a Parameter.
    std::vector<sql::Token> tokens;
};

// A saved query keeps its literals where they are, since it is kept in the file as text.
enum class Literals { Bound, Kept };

// Raises StoreError{Syntax} for a text that cannot be cut into words (an apostrophe left open, a stray sign).
// What `into` held is forgotten, its room is used again.
void readStatement(std::string_view sql, Reading& into, Literals literals = Literals::Bound);
[[nodiscard]] Reading readStatement(std::string_view sql, Literals literals = Literals::Bound);

} // namespace veldona::store
