// Values on their way between a statement, the program and the file: the form in which each is stored.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/value.h"
#include "platform/store/dialect/definition.h"

namespace veldona::store {

struct Literal {
    enum class Kind : std::uint8_t { Number, Text, Date };
    Kind kind;
    std::string text; // as written, without apostrophes or signs
};

// A literal as the engine stores a value of `target`: dates as "YYYY-MM-DD hh:mm:ss" text, numbers as
// numbers. Raises StoreError{TypeMismatch} where it does not read.
[[nodiscard]] Value bindLiteral(const Literal& literal, std::optional<ColumnType> target);
// The same for a value of the program going into a column: a date as stored text, a text read as the column's
// type.
[[nodiscard]] Value bindValue(const Value& value, ColumnType target);

// A date as it is stored, and back; nothing where `stored` is no such text.
[[nodiscard]] std::string storedDate(DateTime date);
[[nodiscard]] std::optional<DateTime> dateOfStored(std::string_view stored);

namespace sql {

// Null, a whole number, a double or a text, as the engine reads it back to the same value.
[[nodiscard]] std::string engineLiteral(const Value& value);

} // namespace sql
} // namespace veldona::store
