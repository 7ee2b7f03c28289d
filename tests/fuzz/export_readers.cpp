#include "tests/fuzz/export_readers.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "platform/controls/editing.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"
#include "tests/fuzz/fuzzing.h"

namespace veldona::fuzz {

std::vector<std::vector<std::string>> readCommaSeparated(std::string_view file) {
    require(file.starts_with("\xEF\xBB\xBF"), "the mark of the encoding");
    file.remove_prefix(3);
    std::vector<std::vector<std::string>> rows;
    while (!file.empty()) {
        rows.emplace_back();
        for (bool more = true; more;) {
            std::string& cell = rows.back().emplace_back();
            if (file.starts_with('"')) {
                file.remove_prefix(1);
                while (true) {
                    const std::size_t end = file.find('"');
                    require(end != std::string_view::npos, "a quote that is not closed");
                    cell += file.substr(0, end);
                    file.remove_prefix(end + 1);
                    if (!file.starts_with('"')) break;
                    cell += '"';
                    file.remove_prefix(1);
                }
            } else {
                const std::size_t end = std::min(file.find_first_of(",\r\n"), file.size());
                cell = file.substr(0, end);
                file.remove_prefix(end);
                require(cell.find('"') == std::string::npos, "a quote in the middle: " + cell);
            }
            more = file.starts_with(',');
            if (more) file.remove_prefix(1);
        }
        require(file.starts_with("\r\n"), "a row that goes on behind its last value");
        file.remove_prefix(2);
    }
    return rows;
}

std::vector<std::string> readTags(std::string_view html) {
    std::vector<std::string> tags;
    std::vector<std::string> open;
    for (std::size_t at = html.find('<'); at != std::string_view::npos; at = html.find('<', at)) {
        const std::size_t end = html.find('>', at);
        require(end != std::string_view::npos, "a tag that is not closed");
        const std::string tag(html.substr(at, end + 1 - at));
        require(tag.find('<', 1) == std::string::npos, "a tag in a tag: " + tag);
        tags.push_back(tag);
        at = end;
        const std::string name = tag.substr(1, tag.find_first_of(" >") - 1);
        if (name == "!DOCTYPE" || name == "meta" || name == "hr") continue; // those that stand alone
        if (!name.starts_with('/')) {
            open.push_back(name);
            continue;
        }
        require(!open.empty() && "/" + open.back() == name, "closes another tag: " + tag);
        open.pop_back();
    }
    require(open.empty(), "a tag is left open");
    for (std::size_t at = html.find('&'); at != std::string_view::npos; at = html.find('&', at + 1)) {
        const std::string_view rest = html.substr(at + 1, 5);
        require(rest.starts_with("amp;") || rest.starts_with("lt;") || rest.starts_with("gt;") ||
                    rest.starts_with("quot;"),
                "a sign that stands for no letter");
    }
    return tags;
}

std::u16string readRichText(std::string_view file) {
    static constexpr std::array<std::string_view, 26> kWords = {
        "rtf",   "ansi",   "ansicpg", "deff",  "fonttbl", "f",     "fswiss", "fcharset",  "info",
        "title", "paperw", "paperh",  "margl", "margr",   "margt", "margb",  "landscape", "pard",
        "plain", "sb",     "tqr",     "tqc",   "tx",      "fs",    "b",      "tab"};
    require(file.starts_with("{\\rtf1"), "the head of a rich text");
    std::u16string text;
    int depth = 0;
    for (std::size_t at = 0; at < file.size();) {
        const char c = file[at++];
        require(static_cast<unsigned char>(c) < 0x80, "a letter beyond ASCII");
        require(depth > 0 || at == 1 || c == '\n', "something behind the last brace");
        if (c == '{') ++depth;
        if (c == '}') require(--depth >= 0, "a brace too many");
        if (c == '{' || c == '}' || c == '\n') continue;
        if (c != '\\') {
            text += static_cast<char16_t>(c);
            continue;
        }
        require(at < file.size(), "a sign without a word");
        if (!std::isalpha(static_cast<unsigned char>(file[at]))) {
            const char sign = file[at++];
            require(sign == '\\' || sign == '{' || sign == '}', "an unknown sign");
            text += static_cast<char16_t>(sign);
            continue;
        }
        const std::size_t from = at;
        while (at < file.size() && std::isalpha(static_cast<unsigned char>(file[at])))
            ++at;
        const std::string_view word = file.substr(from, at - from);
        std::string number;
        while (at < file.size() && (std::isdigit(static_cast<unsigned char>(file[at])) || file[at] == '-'))
            number += file[at++];
        if (word == "u") {
            text += static_cast<char16_t>(std::stoi(number));
            require(at < file.size() && file[at] == '?', "a letter without its stand-in");
            ++at;
            continue;
        }
        if (at < file.size() && file[at] == ' ') ++at;
        if (word == "line") text += u'\n';
        require(word == "line" || word == "par" || word == "page" ||
                    std::ranges::find(kWords, word) != kWords.end(),
                "a word that no report needs: " + std::string(word));
    }
    require(depth == 0, "a brace is left open");
    return text;
}

std::vector<std::u16string> readWorkbookTexts(std::string_view file) {
    constexpr std::size_t kHeader = 512; // behind it lies the stream, from the first sector on
    constexpr unsigned kStart = 0x809, kEndOfPart = 0x0A, kText = 0x204, kMostBytes = 8224;
    const auto word = [&](std::size_t at) {
        require(at + 2 <= file.size(), "a record over the end of the file");
        return static_cast<unsigned>(static_cast<unsigned char>(file[at]) |
                                     static_cast<unsigned char>(file[at + 1]) << 8);
    };
    std::vector<std::u16string> texts;
    int parts = 0;
    for (std::size_t at = kHeader; parts < 2;) {
        const unsigned number = word(at);
        const unsigned length = word(at + 2);
        require(length <= kMostBytes && at + 4 + length <= file.size(), "a record that is too long");
        require(at > kHeader || number == kStart, "a stream begins with its first record");
        if (number == kEndOfPart) ++parts;
        if (number == kText) {
            const unsigned letters = word(at + 10);
            require(length == 9 + 2 * letters, "a text as long as it says");
            std::u16string& text = texts.emplace_back();
            for (unsigned i = 0; i < letters; ++i)
                text += static_cast<char16_t>(word(at + 13 + 2 * i));
        }
        at += 4 + length;
    }
    return texts;
}

void requireXmlCharacters(const std::string& xml) {
    requireEqual(validUtf8(xml), xml, "sound UTF-8");
    for (const char32_t character : charactersOf(xml))
        require(character >= U' ' ? character != 0xFFFE && character != 0xFFFF
                                  : character == U'\t' || character == U'\n' || character == U'\r',
                "a character that no XML file has");
}

std::vector<std::string> readLines(std::string_view file) {
    std::vector<std::string> lines;
    while (!file.empty()) {
        const std::size_t end = file.find("\r\n");
        require(end != std::string_view::npos, "a last line without its end");
        lines.emplace_back(file.substr(0, end));
        file.remove_prefix(end + 2);
    }
    return lines;
}

} // namespace veldona::fuzz
