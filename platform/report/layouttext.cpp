#include "platform/report/layouttext.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace veldona::report {

namespace {

constexpr std::array<std::pair<char, Piece::Kind>, 5> kSigns = {{{'p', Piece::Kind::PageNumber},
                                                                 {'P', Piece::Kind::PageCount},
                                                                 {'D', Piece::Kind::Date},
                                                                 {'T', Piece::Kind::Time},
                                                                 {'n', Piece::Kind::RowNumber}}};

std::optional<Piece::Kind> signOf(char letter) {
    for (const auto& [sign, kind] : kSigns)
        if (sign == letter) return kind;
    return std::nullopt;
}

void addWords(std::vector<Piece>& pieces, std::string_view words) {
    if (pieces.empty() || pieces.back().kind != Piece::Kind::Words) pieces.emplace_back();
    pieces.back().words += words;
}

// The inside of {…}.
std::optional<Piece> readPlaceholder(std::string_view inside) {
    const std::size_t bar = inside.find('|');
    const auto from = readColumn(inside.substr(0, bar));
    if (!from) return std::nullopt;
    Piece made;
    made.kind = Piece::Kind::Column;
    made.from = *from;
    if (bar != std::string_view::npos) made.mask = inside.substr(bar + 1);
    return made;
}

bool isAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isNameLetter(char c) {
    return isAsciiLetter(c) || (c >= '0' && c <= '9') || c == '_';
}

} // namespace

TextNotation readText(std::string_view text) {
    TextNotation made;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view rest = text.substr(at);
        if (rest.starts_with("%%") || rest.starts_with("{{")) {
            addWords(made.pieces, rest.substr(0, 1));
            at += 2;
        } else if (rest[0] == '%' && rest.size() > 1 && signOf(rest[1])) {
            made.pieces.emplace_back().kind = *signOf(rest[1]);
            at += 2;
        } else if (rest[0] == '{') {
            const std::size_t end = rest.find('}');
            const auto piece =
                end == std::string_view::npos ? std::nullopt : readPlaceholder(rest.substr(1, end - 1));
            if (!piece) {
                made.mistake = "\"{\" bir sütun adı ve \"}\" ister; ayracın kendisi için \"{{\" yazınız.";
                return made;
            }
            made.pieces.push_back(*piece);
            at += end + 1;
        } else {
            const std::size_t end = std::min(rest.find_first_of("%{", 1), rest.size());
            addWords(made.pieces, rest.substr(0, end));
            at += end;
        }
    }
    return made;
}

std::optional<ColumnRef> readColumn(std::string_view text) {
    const std::size_t dot = text.find('.');
    ColumnRef made;
    if (dot != std::string_view::npos) {
        if (!isName(text.substr(0, dot))) return std::nullopt;
        made.query = text.substr(0, dot);
        text.remove_prefix(dot + 1);
    }
    if (!isName(text)) return std::nullopt;
    made.column = text;
    return made;
}

bool isName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isNameLetter);
}

std::optional<Color> readColor(std::string_view text) {
    if (text.size() != 7 || text[0] != '#') return std::nullopt;
    std::array<std::uint8_t, 3> parts{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const char* begin = text.data() + 1 + 2 * i;
        const auto read = std::from_chars(begin, begin + 2, parts[i], 16);
        if (read.ec != std::errc{} || read.ptr != begin + 2) return std::nullopt;
    }
    return Color{parts[0], parts[1], parts[2]};
}

std::optional<double> readNumber(std::string_view text) {
    double number = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    const bool startsWell = !text.empty() && text[0] >= '0' && text[0] <= '9'; // no sign, no "inf"
    if (!startsWell || read.ec != std::errc{} || read.ptr != end) return std::nullopt;
    return number;
}

bool isSelect(std::string_view sql) {
    const std::size_t start = sql.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos) return false;
    sql.remove_prefix(start);
    constexpr std::string_view word = "select";
    if (sql.size() <= word.size() || isNameLetter(sql[word.size()])) return false;
    return std::equal(word.begin(), word.end(), sql.begin(), [](char w, char c) { return w == (c | 0x20); });
}

} // namespace veldona::report
