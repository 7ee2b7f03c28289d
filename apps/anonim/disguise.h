// A text that tells nothing of the one it stands for but its shape.
//
// Every letter and every digit is drawn anew; capitals stay capitals, the letters that only Turkish has stay
// such, blanks and signs stay. So a fault that hangs on a length, an apostrophe or an İ is still there. Equal
// texts become different ones: how often a name occurs would give it away.
#pragma once

#include <random>
#include <string>
#include <string_view>

namespace veldona::anonim {

class Disguise {
public:
    // Of chance, for a copy that leaves the shop.
    Disguise();
    // Repeatable, for a test.
    explicit Disguise(std::uint64_t seed) : random_(seed) {}

    [[nodiscard]] std::string operator()(std::string_view text);

private:
    std::string_view pick(std::string_view letters, std::size_t bytesOfOne);

    std::mt19937_64 random_;
};

} // namespace veldona::anonim
