// What the fuzzers share: how an input is taken apart, and how one of them says that something is wrong.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/runtime/error.h"

namespace veldona::fuzz {

// What must hold for every input does not. Nothing of the program catches it, so it ends the run.
struct Broken : std::logic_error {
    using std::logic_error::logic_error;
};

inline void require(bool holds, const std::string& what) {
    if (!holds) throw Broken(what);
}

inline void requireEqual(const std::string& found, const std::string& wanted, const std::string& what) {
    if (found != wanted) throw Broken(what + ": \"" + found + "\" instead of \"" + wanted + "\"");
}

// True where `step` went through; false for one of the platform's own errors, which has to speak.
template <class Step> bool runs(Step&& step) {
    try {
        step();
        return true;
    } catch (const RuntimeError& error) {
        require(!error.description().empty(), "an error without words: " + std::to_string(error.number()));
        return false;
    }
}

// The input up to the first `sign`, and what is behind it.
struct Halves {
    std::string first, second;
};
inline Halves cutAt(std::string_view input, std::string_view sign) {
    const std::size_t at = input.find(sign);
    if (at == std::string_view::npos) return {std::string(input), {}};
    return {std::string(input.substr(0, at)), std::string(input.substr(at + sign.size()))};
}

} // namespace veldona::fuzz

// Each fuzzer is this one function; answers 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
