// A typed text as an amount, a number, a date and plain letters. The input's first line is the text, the rest
// the mask that it is shown under, and the keys that edit it.
#include "core/money.h"
#include "platform/controls/editing.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"
#include "platform/store/dialect/literal.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/text_amounts.h"

namespace veldona::fuzz {
namespace {

void dateHolds(DateTime date, const std::string& mask) {
    require(date.year() >= 100 && date.year() <= 9999, "a year of the calendar");
    require(readDate(toText(date)) == date, "its own text: " + toText(date));
    require(DateTime::of(date.year(), date.month(), date.day(), date.hour(), date.minute(), date.second()) ==
                date,
            "its own parts: " + toText(date));
    const std::string stored = store::storedDate(date);
    require(store::dateOfStored(stored) == date, "as it is stored: " + stored);
    // A statement's literal is month first.
    const std::string sign = dateLiteral(date);
    require(readDateLiteral(sign.substr(1, sign.size() - 2)) == date.date(), "as a literal: " + sign);
    DateTime twice = date;
    TarihDuzelt(twice);
    require(twice.day() == date.day() || (date.day() <= 12 && twice.day() == date.month()),
            "only a day that may be a month is swapped: " + toText(date));
    TarihDuzelt(twice);
    require(twice == date.date() || twice == date, "swapped twice: " + toText(date));
    runs([&] { return static_cast<void>(format(date, mask)); });
    runs([&] {
        const DateTime next = addMonths(date, 1);
        require(monthsBetween(date, next) == 1, "a month later: " + toText(date));
        require(next.day() <= date.day(), "a month later, not later in the month: " + toText(date));
    });
}

void datesHold(const std::string& text, const std::string& mask) {
    const bool isRead = runs([&] { dateHolds(readDate(text), mask); });
    require(isRead == isDate(text), "a date is what reads as one: " + text);
    runs([&] { dateHolds(readDateLiteral(text), mask); });
    if (isRead)
        requireEqual(format(text, "dd/mm/yyyy hh:mm:ss"), format(readDate(text), "dd/mm/yyyy hh:mm:ss"),
                     "a date's text under a mask");
    else
        requireEqual(format(text, "dd/mm/yyyy"), text, "what is no date stays as it is");
}

void formsHold(const std::string& text) {
    const std::string sound = validUtf8(text);
    requireEqual(validUtf8(sound), sound, "mended twice");
    std::string again;
    for (const char32_t character : charactersOf(text))
        again += utf8Of(character);
    requireEqual(again, sound, "character by character");
    require(charactersOf(sound).size() == length(sound), "as many characters as counted");

    const std::string visible = visibleText(text);
    requireEqual(visibleText(visible), visible, "made visible twice");
    requireEqual(validUtf8(visible), visible, "a visible text is sound");
    for (const char c : visible)
        require(static_cast<unsigned char>(c) >= ' ' && c != 0x7F,
                "a visible text has no control characters");

    const std::string upper = upperTurkish(text);
    requireEqual(upperTurkish(upper), upper, "upper case twice");
    const std::string lower = lowerTurkish(text);
    requireEqual(lowerTurkish(lower), lower, "lower case twice");
    requireEqual(trim(trim(text)), trim(text), "trimmed twice");
    for (std::size_t at = 0; at <= length(text) + 1 && at < 40; ++at)
        requireEqual(left(text, at) + mid(text, at + 1), text, "the two sides of a text");
}

// Each byte of `keys` is a key.
void editingHolds(const std::string& text, const std::string& keys) {
    Editing editing{text, 0, static_cast<int>(length(text))};
    const std::u32string typed = charactersOf(keys);
    for (const char32_t key : typed) {
        const std::string before = editing.text;
        const bool isChanged = key == U'<'   ? editing.backspace()
                               : key == U'>' ? editing.deleteForward()
                               : key == U'[' ? editing.moveCaret(Key::Left) && false
                               : key == U']' ? editing.moveCaret(Key::Right) && false
                               : key == U'{' ? editing.moveCaret(Key::Home) && false
                                             : editing.insert(key, 50);
        require(isChanged || editing.text == before, "a text changes when it says so");
        require(editing.caret >= 0 && editing.selected >= 0 &&
                    editing.caret + editing.selected <= static_cast<int>(length(editing.text)),
                "the caret stays in the text");
    }
    if (text.empty()) require(length(editing.text) <= 50, "no more than may be typed");
}

} // namespace
} // namespace veldona::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldona::fuzz;
    const auto [text, mask] = cutAt({reinterpret_cast<const char*>(data), size}, "\n");
    amountsHold(text, mask);
    datesHold(text, mask);
    formsHold(text);
    editingHolds(text, mask);
    return 0;
}
