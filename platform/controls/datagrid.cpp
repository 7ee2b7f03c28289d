#include <algorithm>

#include "platform/controls/form.h"
#include "platform/controls/handlers.h"
#include "platform/controls/keyacts.h"
#include "platform/controls/lists.h"
#include "platform/controls/names.h"
#include "platform/controls/rowchecks.h"
#include "platform/runtime/text.h"

namespace veldona {

void DataGrid::setColumns(std::vector<Column> columns) {
    columns_ = std::move(columns);
    changed();
}

// A field's letters pair as in code, a title's as in Turkish.
int DataGrid::columnOf(std::string_view titleOrField) const {
    const std::string wanted = upperTurkish(titleOrField);
    const auto found = std::find_if(columns_.begin(), columns_.end(), [&](const Column& each) {
        return sameName(each.title, titleOrField) || sameName(each.field, titleOrField) ||
               upperTurkish(each.title) == wanted;
    });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

void DataGrid::bind(RowSource* source) {
    source_ = source;
    changed();
}

void DataGrid::refresh() {
    changed();
}

void DataGrid::moveTo(int row) {
    if (row < 0 || row >= rowCount()) return;
    source_->moveTo(row);
    changed();
}

void DataGrid::enterRow(int row) {
    dispatch([this, row] {
        moveTo(row);
        call(onRowChange);
    });
}

void DataGrid::takeKey(const KeyEvent& key, char32_t) {
    if (const auto row = movedRow(key.key, currentRow(), 0, rowCount(), false)) enterRow(*row);
}

void DataGrid::clickRow(int row) {
    enterRow(row);
    if (!form().isUnloaded()) raiseClick();
}

std::string DataGrid::cell(int row, int column) const {
    if (row < 0 || row >= rowCount() || !isInside(column, columns_)) return {};
    return source_->cell(row, columns_[static_cast<std::size_t>(column)].field);
}

std::string DataGrid::currentText(std::string_view titleOrField) const {
    const int row = currentRow();
    if (row < 0 || row >= rowCount()) raise(ErrorNumber::NoCurrentRecord);
    const int column = columnOf(titleOrField);
    if (column < 0) raise(ErrorNumber::NoSuchItem);
    return cell(row, column);
}

std::string DataGrid::shownText() const {
    std::string text;
    const int row = currentRow();
    for (int column = 0; row >= 0 && column < static_cast<int>(columns_.size()); ++column) {
        if (column > 0) text += '|';
        text += cell(row, column);
    }
    return text;
}

} // namespace veldona
