#include "reports/viewerzoom.h"

#include <array>
#include <cmath>
#include <utility>

#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

struct Olcek {
    const char* liste;
    int zoom;
    const char* metin; // shown once it is chosen
};

constexpr std::array<Olcek, 10> kOlcekler = {{
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

void metinYaz(FrmCrNesne& f, const std::string& metin) {
    const bool once = std::exchange(f.zoomYaziliyor, true);
    f.cboZoom.setText(metin);
    f.zoomYaziliyor = once;
    f.zoomDegisti = false;
}

// Typed text is read as a number, also where it is the same as an entry of the list.
void yazilaniUygula(FrmCrNesne& f) {
    const double yazilan = val(f.cboZoom.text());
    f.zoomDegisti = false;
    if (yazilan <= 10 || yazilan >= 400) return;
    const int zoom = static_cast<int>(std::trunc(yazilan));
    f.CRViewer1.zoom(zoom);
    metinYaz(f, std::to_string(zoom) + " %");
}

void cboZoom_Change(FrmCrNesne& f) {
    if (f.zoomYaziliyor) return;
    f.zoomDegisti = true;
    if (!f.zoomTusu) yazilaniUygula(f);
}

void cboZoom_KeyDown(FrmCrNesne& f, KeyEvent& event) {
    f.zoomTusu = true;
    if (event.key != Key::Enter) return;
    event.swallowed = true;
    yazilaniUygula(f);
}

void cboZoom_LostFocus(FrmCrNesne& f) {
    f.zoomTusu = false;
    if (f.zoomDegisti) yazilaniUygula(f);
}

} // namespace

void FillZoomFactor(FrmCrNesne& f) {
    f.cboZoom.clear();
    for (const Olcek& olcek : kOlcekler)
        f.cboZoom.add(olcek.liste);
    metinYaz(f, "95 %");
    f.CRViewer1.zoom(ReportView::kPageWidth);
}

void SetZoomFactor(FrmCrNesne& f) {
    const int secilen = f.cboZoom.listIndex();
    if (secilen < 0) return yazilaniUygula(f);
    const Olcek& olcek = kOlcekler[static_cast<std::size_t>(secilen)];
    f.CRViewer1.zoom(olcek.zoom);
    metinYaz(f, olcek.metin);
}

void zoomBagla(FrmCrNesne& f) {
    f.cboZoom.onClick = [&f] { SetZoomFactor(f); };
    f.cboZoom.onChange = [&f] { cboZoom_Change(f); };
    f.cboZoom.onKeyDown = [&f](KeyEvent& event) { cboZoom_KeyDown(f, event); };
    f.cboZoom.onKeyUp = [&f](KeyEvent&) { f.zoomTusu = false; };
    f.cboZoom.onLostFocus = [&f] { cboZoom_LostFocus(f); };
}

} // namespace veldona
