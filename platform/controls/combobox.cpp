#include <algorithm>

#include "platform/controls/keyacts.h"
#include "platform/controls/lists.h"
#include "platform/controls/rowchecks.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"

namespace veldona {

const std::string& ComboBox::list(int row) const {
    static const std::string none;
    return isInside(row, entries_) ? entries_[static_cast<std::size_t>(row)].text : none;
}

void ComboBox::add(std::string text, Value bound) {
    entries_.push_back({std::move(text), std::move(bound)});
    changed();
}

void ComboBox::clear() {
    entries_.clear();
    listIndex_ = -1;
    if (style_ == Style::ListOnly) takeText({});
    changed();
}

void ComboBox::setListIndex(int row) {
    if (row != -1 && !isInside(row, entries_)) raiseInvalidValue();
    listIndex_ = row;
    takeText(list(row));
    changed();
}

void ComboBox::setText(std::string text) {
    const int row = indexOf(text);
    if (style_ == Style::ListOnly && row < 0 && !text.empty())
        throw RuntimeError(383, "Özellik salt okunur: listede böyle bir giriş yok");
    listIndex_ = style_ == Style::ListOnly && text.empty() ? -1 : row;
    takeText(std::move(text));
    changed();
    fire(onChange);
}

void ComboBox::edit(std::string text, int caret) {
    text = visibleText(text);
    listIndex_ = indexOf(text);
    takeText(std::move(text));
    select(caret, 0);
    fire(onChange);
}

void ComboBox::select(int start, int length) {
    const int size = static_cast<int>(veldona::length(text_));
    selStart_ = std::clamp(start, 0, size);
    selLength_ = std::clamp(length, 0, size - selStart_);
    changed();
}

void ComboBox::selectAll() {
    select(0, static_cast<int>(length(text_)));
}

// The next one, from the one behind the selected one on and round.
std::optional<int> ComboBox::entryBeginning(char32_t character) const {
    const std::string wanted = upperTurkish(utf8Of(character));
    for (int step = 1; step <= count(); ++step) {
        const int row = (listIndex_ + step) % count();
        if (upperTurkish(left(list(row), 1)) != wanted) continue;
        return row == listIndex_ ? std::nullopt : std::optional(row);
    }
    return std::nullopt;
}

void ComboBox::takeKey(const KeyEvent& key, char32_t character) {
    const bool isTyped = style_ == Style::Free;
    if (const auto row = movedRow(key.key, listIndex_, 0, count(), !isTyped); row && !locked) {
        clickRow(*row);
    } else if (isTyped) {
        if (auto edited = editedBy(*this, key, character, 0))
            dispatch([&] { edit(std::move(edited->text), edited->caret); });
    } else if (!locked && character >= U' ') {
        if (const auto begins = entryBeginning(character)) clickRow(*begins);
    }
}

bool ComboBox::put(std::string_view text) {
    if (style_ == Style::ListOnly) return choose(text);
    std::string kept = validUtf8(text);
    const int end = static_cast<int>(length(kept));
    dispatch([&] { edit(std::move(kept), end); });
    return true;
}

bool ComboBox::choose(std::string_view entry) {
    const int row = indexOf(entry);
    if (row >= 0) clickRow(row);
    return row >= 0;
}

void ComboBox::clickRow(int row) {
    setListIndex(row);
    raiseClick();
}

std::string ComboBox::boundText() const {
    return isInside(listIndex_, entries_) ? joinText(entries_[static_cast<std::size_t>(listIndex_)].bound)
                                          : std::string();
}

void ComboBox::takeText(std::string text) {
    text_ = std::move(text);
    selStart_ = 0;
    selLength_ = 0;
}

int ComboBox::indexOf(std::string_view text) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [text](const Entry& each) { return each.text == text; });
    return found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin());
}

} // namespace veldona
