// The sale screen's life: load, a new sale, change, cancel, keys, unload.
//
// It always opens for a new sale. It loads no existing sale into its grids: they hold what the last plan
// left, so that only the sale just saved can be changed here.
#pragma once

#include <string_view>

#include "sales/salescreen.h"

namespace veldona {

void Form_Load(FrmSatis& f);
void Form_Unload(FrmSatis& f);
void Form_KeyDown(FrmSatis& f, KeyEvent& event);

// Prepares a new sale. Outside state 3 the fields and the sale's number stay.
void YeniKayitBaslat(FrmSatis& f);
void AlanlariTemizle(FrmSatis& f);
// The next sale number; 0 where the question fails. Nothing keeps it for this screen: two that open a sale at
// the same time get the same one.
[[nodiscard]] double YeniIslemNo(Session& session, const std::string& alan, const std::string& tablo);

// Gives the sale on the screen the next number.
void numberSale(FrmSatis& f);

// The state, and the bar's tools with it. There are no tools to walk through the sales.
void enterState(FrmSatis& f, int durum);
// Moves through the sales; the row it ends on is the current one.
void FormGezinme(FrmSatis& f, Navigation yon);
// The sales as they are now, standing on the current one: cancelling returns here.
void readSalesAgain(FrmSatis& f);
// One tool of the bar, or its key.
void saleCommand(FrmSatis& f, std::string_view toolName);

} // namespace veldona
