// The one variant type that travels between screens and store: Null, boolean, whole, double, Currency, date,
// text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/runtime/currency.h"
#include "platform/runtime/datetime.h"

namespace veldona {

struct Null {
    friend constexpr bool operator==(Null, Null) { return true; }
};

class Value {
public:
    enum class Kind { Null, Boolean, Whole, Double, Money, Date, Text }; // in the order of the variant

    Value() = default;
    Value(Null) {}
    Value(bool flag) : held_(flag) {}
    Value(int whole) : held_(static_cast<std::int64_t>(whole)) {}
    Value(std::int64_t whole) : held_(whole) {}
    Value(double number) : held_(number) {}
    Value(Currency money) : held_(money) {}
    Value(DateTime date) : held_(date) {}
    Value(std::string text) : held_(std::move(text)) {}
    Value(std::string_view text) : held_(std::string(text)) {}
    Value(const char* text) : held_(std::string(text)) {}
    Value(const void*) = delete; // a stray pointer is no boolean

    [[nodiscard]] Kind kind() const { return static_cast<Kind>(held_.index()); }
    [[nodiscard]] bool isNull() const { return kind() == Kind::Null; }
    [[nodiscard]] bool isText() const { return kind() == Kind::Text; }

    // The held alternative, which must be of this kind (conversions: conversion.h).
    template <class T> [[nodiscard]] const T& get() const { return std::get<T>(held_); }

    // Same kind and same content; 1 and 1.0 differ.
    friend bool operator==(const Value&, const Value&) = default;

private:
    std::variant<Null, bool, std::int64_t, double, Currency, DateTime, std::string> held_;
};

} // namespace veldona
