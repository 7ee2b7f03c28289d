#include "ui/reportviewbinder.h"

#include "platform/controls/chartpane.h"
#include "platform/controls/forms.h"
#include "platform/controls/reportview.h"
#include "ui/chartview.h"
#include "ui/formwindow.h"
#include "ui/pageview.h"

namespace veldona {

namespace {

class ReportBinder : public BinderOf<ReportView, PageView> {
public:
    ReportBinder(FormWindow& itsWindow, ReportView& report, PageView& pages)
        : BinderOf(itsWindow, report, pages) {
        pages.onTurn = [this](int direction) {
            const int wanted = bound.currentPage() + direction;
            if (!listens() || wanted < 1 || wanted > bound.pageCount()) return;
            act([&] { bound.form().forms().dispatch([&] { bound.showPage(wanted); }); });
        };
    }
    void refresh() override {
        Binder::refresh();
        view.setDocument(bound.source() ? &bound.source()->document() : nullptr);
        view.showPage(bound.currentPage() - 1);
        showZoom();
        const auto hit = bound.hit();
        view.mark(hit && hit->page == bound.currentPage() ? std::optional(hit->item) : std::nullopt);
        view.setNote(bound.missed().empty() ? QString()
                                            : "“" + toQt(bound.missed()) + "” raporda bulunamadı");
    }
    void leave() override { view.setDocument(nullptr); }

private:
    void showZoom() {
        const int level = bound.zoomLevel();
        if (level == ReportView::kPageWidth)
            view.setZoom(PageView::Fit::Width);
        else if (level == ReportView::kWholePage)
            view.setZoom(PageView::Fit::Page);
        else
            view.setZoom(PageView::Fit::Scale, level);
    }
};

class ChartBinder : public BinderOf<ChartPane, ChartView> {
public:
    using BinderOf::BinderOf;

    void refresh() override {
        Binder::refresh();
        view.setChart(bound.chart());
        view.setAccessibleDescription(toQt(bound.shownText()));
    }
};

} // namespace

std::unique_ptr<Binder> bindReport(FormWindow& window, Control& control, QWidget& widget) {
    if (auto made = bindAs<ReportBinder>(window, control, widget)) return made;
    return bindAs<ChartBinder>(window, control, widget);
}

} // namespace veldona
