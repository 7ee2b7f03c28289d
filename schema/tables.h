// The shop's books as they are delivered: every table, its columns, the look-ups that are indexed, the saved
// queries.
//
// A customer is tied to the sale tables by the text HSTNO = MUSTNO, a sale by ISLEMNO; nothing cascades.
// Amounts of type Number are the shown amount times 1,000,000, except where a scratch table says otherwise.
#pragma once

#include <vector>

#include "platform/store/dialect/definition.h"

namespace veldona::schema {

[[nodiscard]] const std::vector<store::TableDef>& tables();
[[nodiscard]] const std::vector<store::SavedQueryDef>& savedQueries();
// Each connection's own, never in the file: emptied by whoever fills them, never read across two reports.
[[nodiscard]] const std::vector<store::TableDef>& scratchTables();
// All three. A sale's number is its key: of two sales under one number, the deletion of the one would take
// the other's rows along.
[[nodiscard]] const store::Delivered& delivered();

// The statements that fill a new database with what every shop starts from: the row of FIRMABILGISI, the one
// product that every sale is written on, the main cash box.
[[nodiscard]] const std::vector<const char*>& firstRows();

} // namespace veldona::schema
