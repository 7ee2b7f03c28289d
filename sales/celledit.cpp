#include "sales/celledit.h"

#include <array>

namespace veldona {

namespace {

// One editor: the column of the grid that it stands for.
struct Cell {
    FlexGrid FrmSatis::*grid;
    int column;
    TextBox FrmSatis::*text; // one of the two is set
    DateBox FrmSatis::*day;
};

constexpr std::array<Cell, 6> kCells = {{
    {&FrmSatis::grdYapilanOdeme, PaymentColumn::Miktar, &FrmSatis::txtDrug, nullptr},
    {&FrmSatis::grdYapilanOdeme, PaymentColumn::Tarih, nullptr, &FrmSatis::cboUse},
    {&FrmSatis::grdYapilanOdeme, PaymentColumn::Pesinat, &FrmSatis::txtDose, nullptr},
    {&FrmSatis::grdYapilacakOdeme, PaymentColumn::Miktar, &FrmSatis::txtYapilacakOdmDrug, nullptr},
    {&FrmSatis::grdYapilacakOdeme, PaymentColumn::Tarih, nullptr, &FrmSatis::dtYapilacakOdmTarh},
    {&FrmSatis::grdYapilacakOdeme, PaymentColumn::Pesinat, &FrmSatis::txtYapilacakOdmDose, nullptr},
}};

Control& editorOf(FrmSatis& f, const Cell& h) {
    return h.text ? static_cast<Control&>(f.*h.text) : f.*h.day;
}

// Over the current cell, with its text. Headings are no cells.
void open(FrmSatis& f, const FlexGrid& grid) {
    if (grid.row() < 1) return;
    for (const Cell& h : kCells) {
        if (&(f.*h.grid) != &grid || h.column != grid.col()) continue;
        if (h.text)
            (f.*h.text).setText(grid.text());
        else
            (f.*h.day).setValue(grid.text());
        editorOf(f, h).setVisible(true);
        editorOf(f, h).setFocus();
    }
}

void gridClicked(FrmSatis& f, FlexGrid& grid) {
    for (const Cell& h : kCells)
        if (&(f.*h.grid) == &grid) editorOf(f, h).setVisible(false);
    open(f, grid);
}

void entered(FrmSatis& f, const Cell& h) {
    FlexGrid& grid = f.*h.grid;
    Control& editor = editorOf(f, h);
    const bool stands = grid.row() > 0; // a plan made anew may have taken the row away
    if (stands) grid.setTextMatrix(grid.row(), h.column, editor.shownText());
    editor.setVisible(false);
    if (!stands) return;
    if (h.column == PaymentColumn::Pesinat) {
        grid.addRow();
        grid.setRow(grid.rows() - 1);
        grid.setCol(PaymentColumn::Miktar);
    } else {
        grid.setCol(h.column + 1);
    }
    open(f, grid);
}

void bind(FrmSatis& f, const Cell& h) {
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

void bindCellEdit(FrmSatis& f) {
    for (const Cell& h : kCells)
        bind(f, h);
    for (FlexGrid* grid : {&f.grdYapilanOdeme, &f.grdYapilacakOdeme})
        grid->onClick = [&f, grid] { gridClicked(f, *grid); };
}

void closeCellEdit(FrmSatis& f) {
    for (const Cell& h : kCells)
        editorOf(f, h).setVisible(false);
}

} // namespace veldona
