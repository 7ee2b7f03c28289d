// A text that tells nothing of the one it stands for but its shape.
//
// Every letter and every digit is drawn anew; capitals stay capitals, the letters that only Turkish has stay
// such, blanks and signs stay. So a fault that hangs on a length, an apostrophe or an İ is still there. Equal
// words become different ones: how often a name occurs would give it away. Equal numbers become equal ones,
// wherever they stand, since the books hang together by them.
#pragma once

#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace veldona::anonim {

class Disguise {
public:
    // Of chance, for a copy that leaves the shop.
    Disguise();
    // Repeatable, for a test.
    explicit Disguise(std::uint64_t seed);

    // Gives each account a number of its own, of as many digits. `spellings`: those of one account, which
    // differ by capitals alone and go on doing so. The house's own accounts keep theirs.
    void learnAccount(const std::vector<std::string>& spellings);
    // One that was learnt.
    [[nodiscard]] std::string account(const std::string& number) const;

    // Also of the numbers in it: accounts, and those that may be a person's (five digits and more).
    [[nodiscard]] std::string operator()(std::string_view text);
    // A text that stands for one thing as a whole: equal ones stay equal.
    [[nodiscard]] std::string code(const std::string& text);
    // One word that is shaped as every other: the shape of a street and its house number finds the house.
    [[nodiscard]] std::string flat();

    // By how many weeks all dates of the copy lie before the true ones.
    [[nodiscard]] int weeks() const { return weeks_; }

private:
    std::string_view pick(std::string_view letters, std::size_t bytesOfOne);
    [[nodiscard]] std::string redrawn(std::string_view text);
    // Of as many digits, zeros in front kept.
    [[nodiscard]] std::string drawn(std::string_view digits);
    [[nodiscard]] std::string newAccount(const std::string& number);
    [[nodiscard]] std::string digitsFor(const std::string& digits);
    [[nodiscard]] std::string numberFor(std::string_view shaped);

    std::mt19937_64 random_;
    int weeks_;
    std::map<std::string, std::string, std::less<>> accounts_, numbers_, codes_;
    std::set<std::string> given_; // new account numbers, in capitals
};

} // namespace veldona::anonim
