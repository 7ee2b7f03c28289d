// Chance that is the same on every machine: the numbers of a seed never depend on a library's distributions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace veldona::hazirla {

class Random {
public:
    // `stream` parts the uses of one seed, so that one more draw for a customer moves no sale.
    Random(std::uint64_t seed, std::uint64_t stream) : state_(seed) {
        state_ = next() ^ (stream * 0x9E3779B97F4A7C15U);
    }

    std::uint64_t next() { // splitmix64
        std::uint64_t mixed = state_ += 0x9E3779B97F4A7C15U;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31);
    }
    // 0 … count-1; count is at least 1.
    int below(int count) { return static_cast<int>(next() % static_cast<std::uint64_t>(count)); }
    int between(int lowest, int highest) { return lowest + below(highest - lowest + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <class T> const T& pick(std::span<const T> from) {
        return from[static_cast<std::size_t>(below(static_cast<int>(from.size())))];
    }

private:
    std::uint64_t state_;
};

} // namespace veldona::hazirla
