// What a step raises, so that a test can look at it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"

namespace veldona::test {

// The error of this kind that `step` raises, and which says why; nothing where it raises none.
template <class Error, class Step> std::optional<Error> raised(Step&& step) {
    try {
        step();
    } catch (const Error& error) {
        EXPECT_FALSE(error.description().empty());
        return error;
    }
    return std::nullopt;
}

// The number of the RuntimeError; 0 where there is none.
template <class Step> std::int32_t numberRaised(const Step& step) {
    const auto error = raised<RuntimeError>(step);
    return error ? error->number() : 0;
}

// What came of a step: its result as it is shown, or "hata N".
template <class Step> std::string shown(const Step& step) {
    std::string text;
    const auto error = raised<RuntimeError>([&] { text = toText(Value(step())); });
    return error ? "hata " + std::to_string(error->number()) : text;
}

} // namespace veldona::test
