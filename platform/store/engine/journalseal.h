// The journal of the books, GUNLUK, as both engines write it: the columns of an entry, and the keyed hash
// over it and the entry before.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace veldona::store {

inline constexpr const char* kJournalTable = "GUNLUK";
// The house's own, with the shop's key in it.
inline constexpr const char* kJournalKeyTable = "MSysGUNLUK";

// In the order in which they are sealed; the seal itself comes behind them.
inline constexpr std::array<const char*, 13> kSealedColumns = {
    "ID",   "ISLEM", "AN",  "PROGRAM", "MAKINE", "KULLANICI", "EKRAN",
    "ADIM", "TABLO", "TUR", "ANAHTAR", "ESKI",   "YENI"};
inline constexpr const char* kSealColumn = "OZET";

// What TUR says. A note tells of what stands in no table: the journal's beginning, rows that a tool moved in
// by the thousand, a backup put back, entries that were taken out.
inline constexpr const char* kFilledNote = R"({"NE":"toplu"})";
inline constexpr const char* kRestoredNote = R"({"NE":"geri"})";
inline constexpr const char* kReplacingNote = R"({"NE":"yerine"})"; // new books in the place of former ones
inline constexpr const char* kBegunNote = R"({"NE":"basladi"})";
inline constexpr const char* kMendedNote =
    R"({"NE":"onarildi"})"; // triggers were gone: nobody knows who wrote what
inline constexpr const char* kTailNote = R"({"NE":"kuyruk"})"; // its newest entries were gone
inline constexpr std::string_view kAdded = "E", kChanged = "D", kRemoved = "S", kNoted = "N";

// A key for new books, as it is kept in them: 64 hexadecimal digits.
[[nodiscard]] std::string newJournalKey();

// The key that seals: the books' own, mixed with one of the program, so that the books alone are not enough
// to make a seal.
class JournalKey {
public:
    using Values = std::array<std::optional<std::string_view>, kSealedColumns.size()>;

    explicit JournalKey(std::string_view keptInBooks);

    // Of an entry's values as texts, in the order of kSealedColumns, behind an entry of the seal `before` (""
    // for the first): 32 hexadecimal digits.
    [[nodiscard]] std::string seal(std::string_view before, const Values& values);

    // As a server needs them, which hashes but has no keyed hash: the key's two pads, in hexadecimal digits.
    [[nodiscard]] std::string innerPad() const { return padded('\x36'); }
    [[nodiscard]] std::string outerPad() const { return padded('\x5c'); }

private:
    [[nodiscard]] std::string padded(char with) const;

    struct Hash; // ready with the key, for one entry after the other
    struct Freed {
        void operator()(Hash* hash) const;
    };

    std::string key_; // bytes
    std::unique_ptr<Hash, Freed> hash_;
    std::string message_;
};

} // namespace veldona::store
