#include "reports/viewerzoom.h"

#include <array>
#include <cmath>
#include <utility>

#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

struct Scale {
    const char* list;
    int zoom;
    const char* text; // shown once it is chosen
};

constexpr std::array<Scale, 10> kScales = {{
    {"400%", 400, "400 %"},
    {"300%", 300, "300 %"},
    {"200%", 200, "200 %"},
    {"150%", 150, "150 %"},
    {"100%", 100, "100 %"},
    {"75%", 75, "75 %"},
    {"50%", 50, "50 %"},
    {"25%", 25, "25 %"},
    {"Sayfa Genişliği", ReportView::kPageWidth, "95 %"},
    {"Tüm Sayfa", ReportView::kWholePage, "40 %"},
}};

void writeText(FrmCrNesne& f, const std::string& text) {
    const bool once = std::exchange(f.writingZoom, true);
    f.cboZoom.setText(text);
    f.writingZoom = once;
    f.zoomEdited = false;
}

// Typed text is read as a number, also where it is the same as an entry of the list.
void applyTyped(FrmCrNesne& f) {
    const double typed = val(f.cboZoom.text());
    f.zoomEdited = false;
    if (typed <= 10 || typed >= 400) return;
    const int zoom = static_cast<int>(std::trunc(typed));
    f.CRViewer1.zoom(zoom);
    writeText(f, std::to_string(zoom) + " %");
}

void cboZoom_Change(FrmCrNesne& f) {
    if (f.writingZoom) return;
    f.zoomEdited = true;
    if (!f.zoomKeyDown) applyTyped(f);
}

void cboZoom_KeyDown(FrmCrNesne& f, KeyEvent& event) {
    f.zoomKeyDown = true;
    if (event.key != Key::Enter) return;
    event.swallowed = true;
    applyTyped(f);
}

void cboZoom_LostFocus(FrmCrNesne& f) {
    f.zoomKeyDown = false;
    if (f.zoomEdited) applyTyped(f);
}

} // namespace

void FillZoomFactor(FrmCrNesne& f) {
    f.cboZoom.clear();
    for (const Scale& scale : kScales)
        f.cboZoom.add(scale.list);
    writeText(f, "95 %");
    f.CRViewer1.zoom(ReportView::kPageWidth);
}

void SetZoomFactor(FrmCrNesne& f) {
    const int chosen = f.cboZoom.listIndex();
    if (chosen < 0) return applyTyped(f);
    const Scale& scale = kScales[static_cast<std::size_t>(chosen)];
    f.CRViewer1.zoom(scale.zoom);
    writeText(f, scale.text);
}

void bindZoom(FrmCrNesne& f) {
    f.cboZoom.onClick = [&f] { SetZoomFactor(f); };
    f.cboZoom.onChange = [&f] { cboZoom_Change(f); };
    f.cboZoom.onKeyDown = [&f](KeyEvent& event) { cboZoom_KeyDown(f, event); };
    f.cboZoom.onKeyUp = [&f](KeyEvent&) { f.zoomKeyDown = false; };
    f.cboZoom.onLostFocus = [&f] { cboZoom_LostFocus(f); };
}

} // namespace veldona
