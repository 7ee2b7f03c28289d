// A recordset as the rows of a data grid: the grid's current row is the recordset's.
#pragma once

#include <string>
#include <string_view>

#include "platform/controls/lists.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

class RecordsetRows : public RowSource {
public:
    // The recordset must stay open while a grid is bound to this; nullptr has no rows.
    void follow(adodb::Recordset* recordset) { recordset_ = recordset; }

    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] std::string cell(int row, std::string_view field) const override;
    [[nodiscard]] int currentRow() const override;
    void moveTo(int row) override;

private:
    adodb::Recordset* recordset_ = nullptr;
};

} // namespace veldona
