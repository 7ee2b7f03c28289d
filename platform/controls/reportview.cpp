#include "platform/controls/reportview.h"

#include <algorithm>

#include "platform/controls/forms.h"
#include "platform/controls/handlers.h"
#include "platform/runtime/error.h"

namespace veldona {

void ReportView::setSource(std::unique_ptr<PageSource> source) {
    source_ = std::move(source);
    page_ = 0;
    hit_.reset();
    missed_.clear();
    changed();
}

void ReportView::viewReport() {
    if (source_ && !source_->hasData()) form().forms().dispatch([this] { call(onNoData); });
    showFirstPage();
}

void ReportView::refresh() {
    changed();
}

void ReportView::showPage(int page) {
    const int wanted = std::clamp(page, std::min(1, pageCount()), pageCount());
    const bool turns = wanted != page_;
    page_ = wanted;
    changed();
    if (turns) fire(onPage);
}

void ReportView::zoom(int level) {
    if (level < 1) raise(ErrorNumber::InvalidCall);
    zoom_ = level;
    changed();
}

bool ReportView::searchForText(std::string_view text) {
    const bool goesOn = hit_ && hit_->page == page_;
    hit_ = source_ ? source_->find(text, page_, goesOn ? hit_ : std::nullopt) : std::nullopt;
    missed_ = hit_ ? std::string_view() : text;
    changed();
    if (hit_) showPage(hit_->page);
    return hit_.has_value();
}

} // namespace veldona
