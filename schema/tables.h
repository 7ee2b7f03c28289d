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

// The statements that fill a new database with what every shop starts from: the row of FIRMABILGISI, the one
// product that every sale is written on, the main cash box.
[[nodiscard]] const std::vector<const char*>& firstRows();

} // namespace veldona::schema
