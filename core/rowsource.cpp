#include "core/rowsource.h"

#include "platform/runtime/conversion.h"

namespace veldona {

int RecordsetRows::rowCount() const {
    return recordset_ && recordset_->isOpen() ? recordset_->recordCount() : 0;
}

std::string RecordsetRows::cell(int row, std::string_view field) const {
    for (int column = 0; column < recordset_->fieldCount(); ++column)
        if (recordset_->fieldName(column) == field) return joinText(recordset_->at(row, column));
    return {};
}

int RecordsetRows::currentRow() const {
    return recordset_ && recordset_->isOpen() ? recordset_->absolutePosition() - 1 : -1;
}

void RecordsetRows::moveTo(int row) {
    recordset_->setAbsolutePosition(row + 1);
}

} // namespace veldona
