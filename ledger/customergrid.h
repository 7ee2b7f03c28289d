// The customers of the shop in a grid beside the ledger, filtered by name, and walking through them.
#pragma once

#include <cstdint>
#include <string>

#include "core/formframe.h"
#include "ledger/mainscreen.h"

namespace veldona {

// The filter by the two name fields as a sub-select; "" where both are empty. The texts are not escaped.
[[nodiscard]] std::string SQLSelectHazirla(const FrmMainVeldona& f);
[[nodiscard]] std::string SQLWhereHazirla(const FrmMainVeldona& f);
// Asks anew and binds the grid. Where the statement fails the grid keeps its rows and the error goes on.
void FrmCmdBul(FrmMainVeldona& f);
// Moves rsCari and loads the customer it comes to.
void FormGezinme(FrmMainVeldona& f, Navigation yon);
// Places rsCari on the row of this ID, or on the first where it is not among the rows.
void GrideGit(FrmMainVeldona& f, double id);

void grdList_RowChange(FrmMainVeldona& f);
// Opens the customer's card.
void grdList_DblClick(FrmMainVeldona& f);
// Opens an empty card; the customer entered on it comes on show.
void cmdMusteriKaydi_Click(FrmMainVeldona& f);
// Opens the customer finder and loads what was chosen there.
void cmdCariSec_Click(FrmMainVeldona& f);
// No customer and no sale is on show.
void blankAccount(FrmMainVeldona& f);

} // namespace veldona
