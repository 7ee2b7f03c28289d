#include "platform/export/cells.h"

#include <algorithm>
#include <array>

#include "platform/report/letters.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona::exports {

namespace {

// U+0080 … U+009F of the code page, and its six letters that Latin 1 does not have.
constexpr std::array<char32_t, 32> kUpperControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0,      0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0,      0x0178};
struct Special {
    char32_t code;
    unsigned char byte;
};
constexpr std::array<Special, 6> kTurkish = {
    {{0x011E, 0xD0}, {0x0130, 0xDD}, {0x015E, 0xDE}, {0x011F, 0xF0}, {0x0131, 0xFD}, {0x015F, 0xFE}}};

char byteOf(char32_t code) {
    if (code < 0x80) return static_cast<char>(code);
    for (const Special& special : kTurkish)
        if (special.code == code) return static_cast<char>(special.byte);
    if (const auto found = std::ranges::find(kUpperControls, code); found != kUpperControls.end())
        return static_cast<char>(0x80 + (found - kUpperControls.begin()));
    const bool taken =
        code > 0xFF || std::ranges::any_of(kTurkish, [&](const Special& s) { return s.byte == code; });
    return taken || code < 0xA0 ? '?' : static_cast<char>(code);
}

} // namespace

std::vector<std::vector<std::string>> cellsOf(const report::Page& page) {
    std::vector<std::vector<std::string>> lines;
    for (const report::TextLine& line : report::textLines(page)) {
        lines.emplace_back();
        for (const std::size_t item : line)
            lines.back().push_back(withoutControls(std::get<report::TextRun>(page.items[item]).text));
    }
    return lines;
}

report::DataSet rowsOf(const report::Document& document) {
    for (const report::DataSet& data : document.data)
        if (data.rowCount() > 0) return data;
    std::vector<std::vector<std::string>> lines;
    for (const report::Page& page : document.pages)
        for (auto& line : cellsOf(page))
            lines.push_back(std::move(line));
    std::size_t width = 1;
    for (const auto& line : lines)
        width = std::max(width, line.size());
    report::DataSet made;
    for (std::size_t i = 1; i <= width; ++i)
        made.columns.push_back({"ALAN_" + std::to_string(i), 202});
    for (auto& line : lines) {
        line.resize(width);
        made.cells.insert(made.cells.end(), line.begin(), line.end());
    }
    return made;
}

bool isNumber(const Value& value) {
    return value.kind() == Value::Kind::Whole || value.kind() == Value::Kind::Double ||
           value.kind() == Value::Kind::Money;
}

std::string plainNumber(const Value& value) {
    return replaceAll(toText(value), ",", ".");
}

std::string shownCell(const Value& value) {
    return withoutControls(joinText(value));
}

std::string withoutControls(std::string_view text) {
    std::string kept = validUtf8(text);
    std::erase_if(kept, [](char c) {
        return (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || c == 0x7F;
    });
    for (const char* noCharacter : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
        kept = replaceAll(kept, noCharacter, "");
    return kept;
}

std::string windows1254(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const report::Letter letter = report::letterAt(text, at);
        bytes += byteOf(letter.code);
        at += letter.bytes;
    }
    return bytes;
}

std::u16string utf16(std::string_view text) {
    const std::string mended = validUtf8(text);
    std::u16string units;
    for (std::size_t at = 0; at < mended.size();) {
        const report::Letter letter = report::letterAt(mended, at);
        at += letter.bytes;
        if (letter.code < 0x10000) {
            units += static_cast<char16_t>(letter.code);
        } else {
            units += static_cast<char16_t>(0xD800 + ((letter.code - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + ((letter.code - 0x10000) & 0x3FF));
        }
    }
    return units;
}

std::string escapedMarkup(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

} // namespace veldona::exports
