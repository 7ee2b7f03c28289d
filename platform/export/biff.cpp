#include "platform/export/biff.h"

#include "platform/export/cells.h"
#include "platform/runtime/unicode.h"

namespace veldona::exports {

namespace {

constexpr unsigned kWideLetters = 1;

// No half of a pair at the end.
std::u16string cut(std::string_view text, std::size_t most) {
    std::u16string units = utf16Of(text).substr(0, most);
    if (!units.empty() && units.back() >= 0xD800 && units.back() < 0xDC00) units.pop_back();
    return units;
}

} // namespace

void appendRecord(std::string& stream, unsigned number, const LittleEndian& content) {
    LittleEndian head;
    head.word(number).word(static_cast<unsigned>(content.bytes().size()));
    stream += head.bytes();
    stream += content.bytes();
}

LittleEndian shortText(std::string_view text, std::size_t most) {
    const std::u16string units = cut(text, most);
    LittleEndian out;
    out.byte(static_cast<unsigned>(units.size())).byte(kWideLetters).units(units);
    return out;
}

LittleEndian longText(std::string_view text, std::size_t most) {
    const std::u16string units = cut(text, most);
    LittleEndian out;
    out.word(static_cast<unsigned>(units.size())).byte(kWideLetters).units(units);
    return out;
}

} // namespace veldona::exports
