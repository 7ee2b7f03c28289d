#include "platform/controls/editing.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/text_parts.h"

namespace veldona::fuzz {
namespace {

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

void lettersHold(const std::string& text, const std::string& keys) {
    formsHold(text);
    editingHolds(text, keys);
}

} // namespace veldona::fuzz
