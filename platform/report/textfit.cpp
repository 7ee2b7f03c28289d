#include "platform/report/textfit.h"

#include "platform/runtime/unicode.h"

namespace veldona::report {

namespace {

constexpr double kSlack = 0.001; // a text exactly as wide as its box fits

// The bytes of `text` that fit, whole letters; one letter at least where `leastOne`.
std::size_t fittingBytes(std::string_view text, const Font& font, double width, bool leastOne) {
    double used = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t bytes = letterAt(text, at).bytes;
        used += font.width(text.substr(at, bytes));
        if (used > width + kSlack && !(leastOne && at == 0)) break;
        at += bytes;
    }
    return at;
}

std::string_view withoutBlanksBehind(std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return text.substr(0, last == std::string_view::npos ? 0 : last + 1);
}

// One paragraph: no line end inside.
void wrapParagraph(std::string_view text, const Font& font, double width, std::size_t most,
                   std::vector<std::string>& lines) {
    do {
        std::size_t end = fittingBytes(text, font, width, true);
        if (end < text.size() && text[end] != ' ') {
            const std::size_t blank = text.rfind(' ', end);
            if (blank != std::string_view::npos && !withoutBlanksBehind(text.substr(0, blank)).empty())
                end = blank;
        }
        lines.emplace_back(withoutBlanksBehind(text.substr(0, end)));
        const std::size_t next = text.find_first_not_of(' ', end);
        text.remove_prefix(next == std::string_view::npos ? text.size() : next);
    } while (!text.empty() && lines.size() < most);
}

} // namespace

std::vector<std::string> wrapped(std::string_view text, const Font& font, double width, std::size_t most) {
    std::vector<std::string> lines;
    for (;;) {
        const std::size_t end = text.find('\n');
        std::string_view paragraph = text.substr(0, end);
        if (!paragraph.empty() && paragraph.back() == '\r') paragraph.remove_suffix(1);
        wrapParagraph(paragraph, font, width, most, lines);
        if (end == std::string_view::npos || lines.size() >= most) return lines;
        text.remove_prefix(end + 1);
    }
}

std::string clipped(std::string_view text, const Font& font, double width) {
    std::string line(text);
    for (char& c : line)
        if (c == '\n' || c == '\r' || c == '\t') c = ' ';
    if (font.width(line) <= width + kSlack) return line;
    constexpr std::string_view ellipsis = "…";
    const std::size_t room = fittingBytes(line, font, width - font.width(ellipsis), false);
    return std::string(withoutBlanksBehind(std::string_view(line).substr(0, room))) + std::string(ellipsis);
}

} // namespace veldona::report
