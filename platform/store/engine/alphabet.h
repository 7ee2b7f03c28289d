// The Turkish alphabet, by ICU alone: the one order and the one likeness of texts, for engines, for searches
// in an answer and for the tools.
//
// Letters are compared without regard to case (İ pairs with i, I with ı); accents count.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct UCollator;

namespace veldona::store {

class Alphabet {
public:
    static const Alphabet& turkish();

    // Below, equal to or above zero.
    [[nodiscard]] int compare(std::string_view left, std::string_view right) const;
    [[nodiscard]] bool isSame(std::string_view left, std::string_view right) const {
        return compare(left, right) == 0;
    }
    // Of the order: an index that was sorted under another one must be built anew.
    [[nodiscard]] const std::string& version() const { return version_; }

    // Broken UTF-8 is one U+FFFD a byte.
    [[nodiscard]] static std::vector<char32_t> folded(std::string_view text);
    // For a search by whoever has no Turkish keyboard or no time for it: small letters without their marks, ı
    // being i. "IŞIK", "Işık" and "isik" are one.
    [[nodiscard]] static std::string plain(std::string_view text);

private:
    Alphabet();
    struct Close {
        void operator()(UCollator* order) const;
    };
    std::unique_ptr<UCollator, Close> order_;
    std::string version_;
};

// A text to look for, in which % stands for any letters and _ for any one.
class LikePattern {
public:
    explicit LikePattern(std::string_view pattern) : letters_(Alphabet::folded(pattern)) {}
    [[nodiscard]] bool fits(std::string_view text) const;

private:
    std::vector<char32_t> letters_;
};

} // namespace veldona::store
