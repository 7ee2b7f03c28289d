// The tool bar and the tab control.
#include <algorithm>

#include "platform/controls/lists.h"
#include "platform/controls/names.h"
#include "platform/controls/rowchecks.h"

namespace veldona {

void ToolBar::add(std::string key, std::string caption) {
    tools_.push_back({std::move(key), std::move(caption)});
    changed();
}

const ToolBar::Tool* ToolBar::find(std::string_view key) const {
    const auto found = std::find_if(tools_.begin(), tools_.end(),
                                    [key](const Tool& each) { return sameName(each.key, key); });
    return found == tools_.end() ? nullptr : &*found;
}

void ToolBar::setToolVisible(std::string_view key, bool visible) {
    tool(key).visible = visible;
    changed();
}

void ToolBar::setToolEnabled(std::string_view key, bool enabled) {
    tool(key).enabled = enabled;
    changed();
}

void ToolBar::setToolCaption(std::string_view key, std::string caption) {
    tool(key).caption = std::move(caption);
    changed();
}

ToolBar::Tool& ToolBar::tool(std::string_view key) {
    const Tool* found = find(key);
    if (!found) raise(ErrorNumber::InvalidCall);
    return tools_[static_cast<std::size_t>(found - tools_.data())];
}

void TabControl::addPage(Frame& page) {
    page.placeIn(*this);
    pages_.push_back(&page);
    page.setVisible(static_cast<int>(pages_.size()) - 1 == tab_);
    changed();
}

void TabControl::setTab(int tab) {
    if (!isInside(tab, pages_)) raiseInvalidValue();
    tab_ = tab;
    for (std::size_t i = 0; i < pages_.size(); ++i)
        pages_[i]->setVisible(static_cast<int>(i) == tab);
    changed();
}

void TabControl::turnToPage(const Control& page) {
    const auto found = std::find(pages_.begin(), pages_.end(), &page);
    if (found != pages_.end()) setTab(static_cast<int>(found - pages_.begin()));
}

void TabControl::clickRow(int row) {
    setTab(row);
    raiseClick();
}

std::string TabControl::shownText() const {
    return isInside(tab_, pages_) ? pages_[static_cast<std::size_t>(tab_)]->caption() : std::string();
}

} // namespace veldona
