#include "platform/desktop/system.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>
#include <vector>

#include "platform/runtime/text.h"
#include "platform/runtime/wholefile.h"

namespace veldona {

namespace {

constexpr int kAddSystemSource = 4;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool sameKey(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

// A text that can stand in one line of the register and be read back.
bool isOneLine(std::string_view text) {
    return !text.empty() && text.find_first_of("\r\n[]") == std::string_view::npos;
}

struct Setting {
    std::string key;
    std::string value;
};

// "key=value"; nothing where there is no sign, or no key before it.
std::optional<Setting> readSetting(std::string_view text) {
    const std::size_t sign = text.find('=');
    if (sign == std::string_view::npos) return std::nullopt;
    Setting setting{trim(text.substr(0, sign)), trim(text.substr(sign + 1))};
    if (setting.key.empty()) return std::nullopt;
    return setting;
}

struct Source {
    std::string name;
    std::string database;
};

// "DSN=name;DBQ=path", in either order; nothing for anything else.
std::optional<Source> readAttributes(std::string_view text) {
    Source source;
    std::istringstream parts{std::string(text)};
    for (std::string part; std::getline(parts, part, ';');) {
        const auto setting = readSetting(part);
        if (!setting) return std::nullopt;
        if (sameKey(setting->key, "DSN"))
            source.name = setting->value;
        else if (sameKey(setting->key, "DBQ"))
            source.database = setting->value;
        else
            return std::nullopt;
    }
    if (!isOneLine(source.name) || !isOneLine(source.database)) return std::nullopt;
    return source;
}

// The register's text: empty where there is no file yet, nothing where it cannot be read.
std::optional<std::string> readRegister(const std::string& path) {
    std::error_code failed;
    if (!std::filesystem::exists(path, failed)) return failed ? std::nullopt : std::optional<std::string>("");
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (file.bad()) return std::nullopt;
    return text;
}

// The setting of a section; nothing where either is missing. The value is empty for a section that lacks
// `key`.
std::optional<std::string> findSetting(const std::string& text, std::string_view section,
                                       std::string_view key) {
    std::istringstream lines(text);
    bool isInside = false;
    std::optional<std::string> value;
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        line = trim(line);
        if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
            isInside = sameKey(trim(std::string_view(line).substr(1, line.size() - 2)), section);
            if (isInside) value.emplace();
        } else if (const auto setting = readSetting(line);
                   isInside && setting && sameKey(setting->key, key)) {
            return setting->value;
        }
    }
    return value;
}

} // namespace

bool SystemLocale::setInfo(std::uint32_t lcid, int item, std::string value) {
    items_[{lcid, item}] = std::move(value);
    return true;
}

std::string SystemLocale::info(std::uint32_t lcid, int item) const {
    const auto found = items_.find({lcid, item});
    return found == items_.end() ? std::string() : found->second;
}

bool DataSources::configure(int request, std::string_view driver, std::string_view attributes) {
    const auto source = readAttributes(attributes);
    if (request != kAddSystemSource || !isOneLine(driver) || !source) return false;
    auto text = readRegister(iniPath_);
    if (!text || findSetting(*text, source->name, "DBQ")) return false;
    if (!text->empty() && text->back() != '\n') *text += "\r\n";
    *text +=
        "[" + source->name + "]\r\nDriver=" + std::string(driver) + "\r\nDBQ=" + source->database + "\r\n";
    return writeWholeFile(iniPath_, *text);
}

std::optional<std::string> DataSources::find(std::string_view name) const {
    const auto text = readRegister(iniPath_);
    const auto path = text ? findSetting(*text, name, "DBQ") : std::nullopt;
    return path && !path->empty() ? path : std::nullopt;
}

} // namespace veldona
