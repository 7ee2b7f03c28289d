#include "platform/report/layoutxml.h"

#include <algorithm>
#include <utility>

#include "platform/report/layouttext.h"
#include "platform/runtime/conversion.h"

namespace veldona::report {

FileLines::FileLines(std::string_view text, std::string file) : file_(std::move(file)) {
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
        starts_.push_back(static_cast<std::ptrdiff_t>(at) + 1);
}

int FileLines::lineAt(std::ptrdiff_t offset) const {
    return 1 + static_cast<int>(std::upper_bound(starts_.begin(), starts_.end(), offset) - starts_.begin());
}

void FileLines::fail(int line, const std::string& what) const {
    throw ReportError(file_, line, what);
}

Element::Element(pugi::xml_node node, const FileLines& lines)
    : node_(node), lines_(&lines), line_(lines.lineAt(node.offset_debug())) {}

std::vector<Element> Element::children() const {
    std::vector<Element> made;
    for (const pugi::xml_node child : node_.children()) {
        if (child.type() != pugi::node_element)
            fail("<" + std::string(name()) + "> içinde etiket dışında yazı olamaz.");
        made.emplace_back(child, *lines_);
    }
    return made;
}

void Element::fail(const std::string& what) const {
    lines_->fail(line_, what);
}

void Element::refuse(const char* attribute, const std::string& value, const std::string& wanted) const {
    fail("<" + std::string(name()) + "> etiketinin " + attribute + "=\"" + value + "\" değeri " + wanted);
}

std::optional<std::string> Element::find(const char* attribute) {
    read_.push_back(attribute);
    const pugi::xml_attribute found = node_.attribute(attribute);
    if (!found) return std::nullopt;
    return found.value();
}

std::string Element::text(const char* attribute, const char* otherwise) {
    return find(attribute).value_or(otherwise);
}

std::string Element::neededText(const char* attribute) {
    std::string value = text(attribute);
    if (value.empty()) fail("<" + std::string(name()) + "> etiketine " + attribute + " yazılmalıdır.");
    return value;
}

std::string Element::neededWord(const char* attribute) {
    std::string value = neededText(attribute);
    if (!isName(value)) refuse(attribute, value, "yalnız harf, rakam ve alt çizgi içerebilir.");
    return value;
}

double Element::number(const char* attribute, Bounds bounds, std::optional<double> otherwise) {
    const auto value = find(attribute);
    if (!value) {
        if (!otherwise) fail("<" + std::string(name()) + "> etiketine " + attribute + " yazılmalıdır.");
        return *otherwise;
    }
    const auto read = readNumber(*value);
    if (!read) refuse(attribute, *value, "sayı değil; ondalık ayracı noktadır.");
    if (*read < bounds.least || *read > bounds.most)
        refuse(attribute, *value,
               toText(bounds.least) + " ile " + toText(bounds.most) + " arasında olmalıdır.");
    return *read;
}

bool Element::yes(const char* attribute) {
    return choice(attribute, {"no", "yes"}) == 1;
}

std::optional<Color> Element::findColor(const char* attribute) {
    const auto value = find(attribute);
    if (!value) return std::nullopt;
    const auto color = readColor(*value);
    if (!color) refuse(attribute, *value, "renk değil; #rrggbb biçiminde yazılır.");
    return color;
}

int Element::choice(const char* attribute, const std::vector<std::string_view>& words) {
    const auto value = find(attribute);
    if (!value) return 0;
    const auto found = std::find(words.begin(), words.end(), *value);
    if (found == words.end()) {
        std::string all;
        for (const std::string_view word : words)
            all += (all.empty() ? "" : ", ") + std::string(word);
        refuse(attribute, *value, "şunlardan biri olmalıdır: " + all + ".");
    }
    return static_cast<int>(found - words.begin());
}

void Element::finish() const {
    std::vector<std::string_view> seen;
    for (const pugi::xml_attribute attribute : node_.attributes()) {
        const std::string_view given = attribute.name();
        if (std::find(read_.begin(), read_.end(), given) == read_.end())
            fail("<" + std::string(name()) + "> etiketinin \"" + std::string(given) +
                 "\" özniteliği yoktur.");
        if (std::find(seen.begin(), seen.end(), given) != seen.end())
            fail("<" + std::string(name()) + "> etiketinde " + std::string(given) + " iki kez yazılmış.");
        seen.push_back(given);
    }
}

} // namespace veldona::report
