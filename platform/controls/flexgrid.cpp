#include <algorithm>

#include "platform/controls/keyacts.h"
#include "platform/controls/lists.h"
#include "platform/controls/rowchecks.h"

namespace veldona {

namespace {

constexpr int kDefaultColumnWidth = 960; // twips

} // namespace

FlexGrid::FlexGrid(Form& form, std::string name, int rows, int columns)
    : Control(form, std::move(name)), columns_(columns),
      cells_(static_cast<std::size_t>(rows), std::vector<std::string>(static_cast<std::size_t>(columns))),
      widths_(static_cast<std::size_t>(columns), kDefaultColumnWidth), row_(rows > 1 ? 1 : 0),
      column_(columns > 1 ? 1 : 0) {}

void FlexGrid::setRows(int rows) {
    if (rows < 1) raiseInvalidValue();
    cells_.resize(static_cast<std::size_t>(rows),
                  std::vector<std::string>(static_cast<std::size_t>(columns_)));
    row_ = std::min(row_, rows - 1);
    changed();
}

void FlexGrid::setColumns(int columns) {
    if (columns < 1) raiseInvalidValue();
    columns_ = columns;
    for (auto& row : cells_)
        row.resize(static_cast<std::size_t>(columns));
    widths_.resize(static_cast<std::size_t>(columns), kDefaultColumnWidth);
    column_ = std::min(column_, columns - 1);
    changed();
}

void FlexGrid::addRow() {
    setRows(rows() + 1);
}

void FlexGrid::setRow(int row) {
    if (!isInside(row, cells_)) throw RuntimeError(30009, "Geçersiz satır değeri");
    row_ = row;
    changed();
}

void FlexGrid::setCol(int column) {
    if (!isInside(column, widths_)) throw RuntimeError(30010, "Geçersiz sütun değeri");
    column_ = column;
    changed();
}

const std::string& FlexGrid::textMatrix(int row, int column) const {
    if (!isInside(row, cells_) || !isInside(column, widths_)) raise(ErrorNumber::InvalidPropertyIndex);
    return cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

void FlexGrid::setTextMatrix(int row, int column, std::string text) {
    if (!isInside(row, cells_) || !isInside(column, widths_)) raise(ErrorNumber::InvalidPropertyIndex);
    cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = std::move(text);
    changed();
}

void FlexGrid::setColumnWidth(int column, int twips) {
    if (!isInside(column, widths_)) raise(ErrorNumber::InvalidPropertyIndex);
    widths_[static_cast<std::size_t>(column)] = twips;
    changed();
}

int FlexGrid::columnWidth(int column) const {
    if (!isInside(column, widths_)) raise(ErrorNumber::InvalidPropertyIndex);
    return widths_[static_cast<std::size_t>(column)];
}

void FlexGrid::takeKey(const KeyEvent& key, char32_t) {
    if (const auto row = movedRow(key.key, row_, 1, rows(), false)) setRow(*row);
    if (key.key == Key::Left && column_ > 1) setCol(column_ - 1);
    if (key.key == Key::Right && column_ + 1 < columns_) setCol(column_ + 1);
}

std::string FlexGrid::shownText() const {
    return text();
}

} // namespace veldona
