#include "sales/celledit.h"

#include <array>

namespace veldona {

namespace {

// One editor: the column of the grid that it stands for.
struct Hucre {
    FlexGrid FrmSatis::*grid;
    int sutun;
    TextBox FrmSatis::*metin; // one of the two is set
    DateBox FrmSatis::*tarih;
};

constexpr std::array<Hucre, 6> kHucreler = {{
    {&FrmSatis::grdYapilanOdeme, OdemeSutunu::Miktar, &FrmSatis::txtDrug, nullptr},
    {&FrmSatis::grdYapilanOdeme, OdemeSutunu::Tarih, nullptr, &FrmSatis::cboUse},
    {&FrmSatis::grdYapilanOdeme, OdemeSutunu::Pesinat, &FrmSatis::txtDose, nullptr},
    {&FrmSatis::grdYapilacakOdeme, OdemeSutunu::Miktar, &FrmSatis::txtYapilacakOdmDrug, nullptr},
    {&FrmSatis::grdYapilacakOdeme, OdemeSutunu::Tarih, nullptr, &FrmSatis::dtYapilacakOdmTarh},
    {&FrmSatis::grdYapilacakOdeme, OdemeSutunu::Pesinat, &FrmSatis::txtYapilacakOdmDose, nullptr},
}};

Control& editorOf(FrmSatis& f, const Hucre& h) {
    return h.metin ? static_cast<Control&>(f.*h.metin) : f.*h.tarih;
}

// Over the current cell, with its text. Headings are no cells.
void open(FrmSatis& f, const FlexGrid& grid) {
    if (grid.row() < 1) return;
    for (const Hucre& h : kHucreler) {
        if (&(f.*h.grid) != &grid || h.sutun != grid.col()) continue;
        if (h.metin)
            (f.*h.metin).setText(grid.text());
        else
            (f.*h.tarih).setValue(grid.text());
        editorOf(f, h).setVisible(true);
        editorOf(f, h).setFocus();
    }
}

void gridClicked(FrmSatis& f, FlexGrid& grid) {
    for (const Hucre& h : kHucreler)
        if (&(f.*h.grid) == &grid) editorOf(f, h).setVisible(false);
    open(f, grid);
}

void entered(FrmSatis& f, const Hucre& h) {
    FlexGrid& grid = f.*h.grid;
    Control& editor = editorOf(f, h);
    const bool stands = grid.row() > 0; // a plan made anew may have taken the row away
    if (stands) grid.setTextMatrix(grid.row(), h.sutun, editor.shownText());
    editor.setVisible(false);
    if (!stands) return;
    if (h.sutun == OdemeSutunu::Pesinat) {
        grid.addRow();
        grid.setRow(grid.rows() - 1);
        grid.setCol(OdemeSutunu::Miktar);
    } else {
        grid.setCol(h.sutun + 1);
    }
    open(f, grid);
}

void bind(FrmSatis& f, const Hucre& h) {
    Control& editor = editorOf(f, h);
    editor.setVisible(false);
    editor.onGotFocus = [&editor] {
        HFocus(editor);
        BGFocus(editor);
    };
    editor.onLostFocus = [&editor] { BGLoss(editor); };
    editor.onKeyDown = [&f, &h](KeyEvent& event) {
        if (event.key != Key::Enter) return;
        event.swallowed = true;
        entered(f, h);
    };
}

} // namespace

void HucreDuzenlemeyiBagla(FrmSatis& f) {
    for (const Hucre& h : kHucreler)
        bind(f, h);
    for (FlexGrid* grid : {&f.grdYapilanOdeme, &f.grdYapilacakOdeme})
        grid->onClick = [&f, grid] { gridClicked(f, *grid); };
}

void HucreDuzenlemeyiKapat(FrmSatis& f) {
    for (const Hucre& h : kHucreler)
        editorOf(f, h).setVisible(false);
}

} // namespace veldona
