// A statement seen without its literals, at a glance: so that one that came before with other values need not
// be cut into words again.
//
// The glance knows only what the program's own statements are made of. Whatever else a text holds (a doubled
// quote, an exponent) leaves it to the words (splitStatement).
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/split.h"

namespace veldona::store {

class Skeleton {
public:
    explicit Skeleton(std::string_view sql);

    // False where the words must be asked.
    [[nodiscard]] bool isSound() const { return isSound_; }
    // The text with a mark for each literal. Two statements with equal skeletons consist of the same words,
    // but for their literals.
    [[nodiscard]] const std::string& text() const { return text_; }

private:
    friend class KnownSplit;
    static constexpr std::size_t kMostSpans = 24;

    struct Span {
        Literal::Kind kind;
        std::string_view text; // as in Literal
        std::size_t at = 0;    // where it begins in the statement
    };

    // What splitStatement makes of the literal.
    static std::string contentOf(const Span& span, bool isNegative);

    bool read(std::string_view sql);
    bool readNumber(std::string_view sql, std::size_t& at);
    bool readEnclosed(std::string_view sql, std::size_t& at, Literal::Kind kind);
    bool addSpan(Literal::Kind kind, std::string_view text, std::size_t at);

    std::string text_;
    std::array<Span, kMostSpans> spans_;
    std::size_t count_ = 0;
    bool isSound_ = false;
};

// How the words of one statement told its literals apart: which are bound, and what the others are.
class KnownSplit {
public:
    // `split`: what splitStatement made of the text below `skeleton`. Nothing where the two do not see the
    // same literals.
    [[nodiscard]] static std::optional<KnownSplit> of(const Skeleton& skeleton, const SplitStatement& split);

    // The literals to bind of another statement with the same skeleton, as splitStatement would give them;
    // nothing where it differs in a literal that is not bound.
    [[nodiscard]] std::optional<std::vector<Literal>> literals(const Skeleton& skeleton) const;

private:
    struct Place {
        bool isBound = false;
        bool isNegative = false;
        std::string text; // of one that is not bound
    };
    std::vector<Place> places_;
};

} // namespace veldona::store
