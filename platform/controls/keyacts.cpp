#include "platform/controls/keyacts.h"

#include <algorithm>

namespace veldona {

namespace {

constexpr int kPage = 10; // rows

} // namespace

std::optional<int> movedRow(Key key, int row, int first, int count, bool endsToo) {
    int to = row;
    switch (key) {
    case Key::Up:
        to = row - 1;
        break;
    case Key::Down:
        to = row + 1;
        break;
    case Key::PageUp:
        to = row - kPage;
        break;
    case Key::PageDown:
        to = row + kPage;
        break;
    case Key::Home:
        to = endsToo ? first : row;
        break;
    case Key::End:
        to = endsToo ? count - 1 : row;
        break;
    default:
        return std::nullopt;
    }
    if (count <= first || to == row) return std::nullopt;
    to = std::clamp(to, first, count - 1);
    return to == row ? std::nullopt : std::optional(to);
}

} // namespace veldona
