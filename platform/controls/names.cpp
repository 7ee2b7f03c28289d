#include "platform/controls/names.h"

#include <algorithm>

namespace veldona {

namespace {

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

} // namespace

std::string nameKey(std::string_view name) {
    std::string key(name);
    std::transform(key.begin(), key.end(), key.begin(), upper);
    return key;
}

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return upper(x) == upper(y); });
}

} // namespace veldona
