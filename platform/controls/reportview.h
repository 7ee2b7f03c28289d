// A view of a report's pages: which page is on show, how large, and what a search has marked.
//
// It keeps no copy: the pages stay with their source, and those who paint them get the document from there.
// While the pages are still being made the view is busy, and the page count may not be the last word.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/controls/control.h"

namespace veldona {

namespace report {
struct Document;
}

// The marked text: its page, from 1, and its place among the page's items.
struct PageHit {
    int page = 1;
    std::size_t item = 0;
    friend bool operator==(const PageHit&, const PageHit&) = default;
};

class PageSource {
public:
    virtual ~PageSource() = default;
    [[nodiscard]] virtual int pageCount() const = 0;
    [[nodiscard]] virtual bool isBusy() const { return false; }
    [[nodiscard]] virtual bool isCountFinal() const { return true; }
    [[nodiscard]] virtual bool hasData() const { return true; }
    // The next hit behind `after`, or from the top of `page`; round to the start again.
    [[nodiscard]] virtual std::optional<PageHit> find(std::string_view text, int page,
                                                      std::optional<PageHit> after) const = 0;
    [[nodiscard]] virtual const report::Document& document() const = 0;
};

class ReportView : public Control {
public:
    // What zoom() takes besides per cent.
    static constexpr int kPageWidth = 1;
    static constexpr int kWholePage = 2;

    ReportView(Form& form, std::string name) : Control(form, std::move(name)) {}

    std::function<void()> onPage;   // another page is on show, or another report
    std::function<void()> onNoData; // the report that comes on show has no rows

    void setSource(std::unique_ptr<PageSource> source); // nullptr: none
    [[nodiscard]] const PageSource* source() const { return source_.get(); }

    // Puts the first page of the source on show. A report without rows is told first, as an event of its own.
    void viewReport();
    void refresh();
    [[nodiscard]] bool isBusy() const { return source_ && source_->isBusy(); }
    [[nodiscard]] bool isCountFinal() const { return !source_ || source_->isCountFinal(); }
    [[nodiscard]] int pageCount() const { return source_ ? source_->pageCount() : 0; }
    [[nodiscard]] int currentPage() const { return page_; } // 0: no report is on show

    // Beyond the first or last page: that one.
    void showPage(int page);
    void showFirstPage() { showPage(1); }
    void showPreviousPage() { showPage(page_ - 1); }
    void showNextPage() { showPage(page_ + 1); }
    void showLastPage() { showPage(pageCount()); }

    // Per cent, kPageWidth or kWholePage. Error 5 for what is neither.
    void zoom(int level);
    [[nodiscard]] int zoomLevel() const { return zoom_; }

    // The next place behind the marked one, or from the page on show, is marked and comes on show. False, and
    // no mark, where there is none.
    bool searchForText(std::string_view text);
    [[nodiscard]] std::optional<PageHit> hit() const { return hit_; }
    // What was looked for in vain; empty: nothing.
    [[nodiscard]] const std::string& missed() const { return missed_; }

    [[nodiscard]] std::string shownText() const override { return {}; }

private:
    std::unique_ptr<PageSource> source_;
    int page_ = 0;
    int zoom_ = 100;
    std::optional<PageHit> hit_;
    std::string missed_;
};

} // namespace veldona
