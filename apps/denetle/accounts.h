// The account numbers that cards carry, compared as the store compares them.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "platform/store/engine/inquiry.h"

namespace veldona::denetle {

class Accounts {
public:
    explicit Accounts(const store::Inquiry& books);

    [[nodiscard]] bool isKnown(const std::string& account);
    [[nodiscard]] static bool isSame(const std::string& one, const std::string& other);
    [[nodiscard]] std::int64_t cards() const { return cards_; }
    // Each number as written, and how many cards carry it.
    [[nodiscard]] const std::unordered_map<std::string, int>& numbers() const { return numbers_; }

private:
    std::unordered_map<std::string, int> numbers_;
    std::unordered_map<std::string, bool> askedFor_; // those that no card carries letter by letter
    std::int64_t cards_ = 0;
};

} // namespace veldona::denetle
