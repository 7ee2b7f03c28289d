#include "platform/controls/keyacts.h"
#include "platform/controls/lists.h"
#include "platform/controls/rowchecks.h"

namespace veldona {

const std::string& ListBox::list(int row) const {
    static const std::string none;
    return isInside(row, rows_) ? rows_[static_cast<std::size_t>(row)] : none;
}

void ListBox::setList(int row, std::string text) {
    if (!isInside(row, rows_)) raise(ErrorNumber::InvalidPropertyIndex);
    rows_[static_cast<std::size_t>(row)] = std::move(text);
    changed();
}

void ListBox::add(std::string text) {
    rows_.push_back(std::move(text));
    changed();
}

void ListBox::remove(int row) {
    if (!isInside(row, rows_)) raise(ErrorNumber::InvalidCall);
    rows_.erase(rows_.begin() + row);
    if (row == listIndex_)
        listIndex_ = -1;
    else if (row < listIndex_)
        --listIndex_;
    changed();
}

void ListBox::clear() {
    rows_.clear();
    listIndex_ = -1;
    changed();
}

void ListBox::setListIndex(int row) {
    if (row != -1 && !isInside(row, rows_)) raiseInvalidValue();
    listIndex_ = row;
    changed();
}

void ListBox::takeKey(const KeyEvent& key, char32_t) {
    if (const auto row = movedRow(key.key, listIndex_, 0, count(), true)) clickRow(*row);
}

void ListBox::clickRow(int row) {
    setListIndex(row);
    raiseClick();
}

} // namespace veldona
