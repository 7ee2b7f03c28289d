// The finder's statement, built from the fields that are filled in, and what its commands do.
//
// The texts of the filters are not escaped: a quote in one breaks the statement, which is told, and the grid
// keeps its hits.
#pragma once

#include <string>
#include <string_view>

#include "customers/customerfinder.h"

namespace veldona {

[[nodiscard]] std::string SQLSelectHazirla(const FrmCarihesapSec& f);
[[nodiscard]] std::string SQLWhereHazirla(const FrmCarihesapSec& f);
// The sort clause of a click on the head of this column; a second click on the number's or the name's column
// turns the direction.
[[nodiscard]] std::string SQLOrderHazirla(const std::string& alan, const std::string& lastOrder);

// Opens the hits and binds them to the grid: with `kosul` instead of the filters where it is given. False
// where the statement failed.
bool openCustomers(FrmCarihesapSec& f, const std::string& kosul = {});

// The dispatcher of buttons and tools, by their name.
void FrmCmdBul(FrmCarihesapSec& f, std::string_view cmd);
void NesneleriTemizle(FrmCarihesapSec& f);
void cmdKayitSec_Click(FrmCarihesapSec& f);
// The list that is shown, through the report viewer.
void cmdYazici_Click(FrmCarihesapSec& f);
void FrmCmdExit(FrmCarihesapSec& f);
void grdList_HeadClick(FrmCarihesapSec& f, int column);

} // namespace veldona
