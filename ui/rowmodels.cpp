#include "ui/rowmodels.h"

#include <algorithm>

#include <QColor>
#include <QFont>

#include "platform/runtime/error.h"
#include "ui/binder.h"
#include "ui/housestyle.h"
#include "ui/signs.h"

namespace veldona {

namespace {

constexpr int kLeft = Qt::AlignLeft | Qt::AlignVCenter;
constexpr int kRight = Qt::AlignRight | Qt::AlignVCenter;

} // namespace

bool ListRows::show(const std::vector<std::string>& rows, std::vector<RowMark> marks) {
    const bool isOther = rows != rows_;
    if (!isOther && marks == marks_) return false;
    marks_ = std::move(marks);
    const int before = static_cast<int>(rows_.size());
    const int now = static_cast<int>(rows.size());
    if (now > before) {
        beginInsertRows({}, before, now - 1);
        rows_ = rows;
        endInsertRows();
    } else if (now < before) {
        beginRemoveRows({}, now, before - 1);
        rows_ = rows;
        endRemoveRows();
    }
    rows_ = rows;
    if (const int kept = std::min(before, now); kept > 0) emit dataChanged(index(0), index(kept - 1));
    return isOther;
}

int ListRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ListRows::data(const QModelIndex& index, int role) const {
    if (role == Qt::TextAlignmentRole) return rightAligned_ ? kRight : kLeft;
    if (!index.isValid() || index.row() >= rowCount()) return {};
    const auto row = static_cast<std::size_t>(index.row());
    if (role == Qt::DisplayRole) return toQt(rows_[row]);
    static const RowMark none;
    const RowMark& mark = row < marks_.size() ? marks_[row] : none;
    if (role == Qt::DecorationRole && withSigns_) return rowSign(mark.kind);
    if (role == Qt::FontRole && mark.kind == RowMark::Kind::New) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    if (role == Qt::ForegroundRole && mark.kind != RowMark::Kind::None) return letterColour(mark.kind);
    if (mark.words.empty()) return {};
    if (role == Qt::ToolTipRole) return toQt(mark.words);
    if (role == Qt::AccessibleTextRole) return toQt(rows_[row] + ", " + mark.words);
    return {};
}

bool GridRows::follow() {
    std::vector<std::string> titles;
    for (const auto& column : grid_->columns())
        titles.push_back(column.title);
    const int now = grid_->rowCount();
    if (titles != titles_) {
        beginResetModel();
        titles_ = std::move(titles);
        rows_ = now;
        endResetModel();
        return true;
    }
    const int before = rows_;
    if (now > before) {
        beginInsertRows({}, before, now - 1);
        rows_ = now;
        endInsertRows();
    } else if (now < before) {
        beginRemoveRows({}, now, before - 1);
        rows_ = now;
        endRemoveRows();
    }
    if (rows_ > 0 && !titles_.empty()) emit dataChanged(index(0, 0), index(rows_ - 1, columnCount() - 1));
    return false;
}

void GridRows::leave() {
    beginResetModel();
    grid_ = nullptr;
    rows_ = 0;
    endResetModel();
}

int GridRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int GridRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(titles_.size());
}

QVariant GridRows::data(const QModelIndex& index, int role) const {
    if (!grid_ || !index.isValid()) return {};
    if (role == Qt::TextAlignmentRole) return alignmentOf(index.column());
    if (role != Qt::DisplayRole) return {};
    try {
        return toQt(grid_->cell(index.row(), index.column()));
    } catch (const RuntimeError&) {
        return {}; // a row that another workstation has deleted meanwhile reads as empty
    }
}

int GridRows::alignmentOf(int column) const {
    const auto& columns = grid_->columns();
    const auto place = static_cast<std::size_t>(column);
    return place < columns.size() && columns[place].rightAligned ? kRight : kLeft;
}

QVariant GridRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (!grid_ || orientation != Qt::Horizontal || section >= columnCount()) return {};
    if (role == Qt::TextAlignmentRole) return alignmentOf(section);
    return role == Qt::DisplayRole ? QVariant(toQt(titles_[static_cast<std::size_t>(section)])) : QVariant();
}

void SheetRows::show(const FlexGrid& grid) {
    std::vector<std::vector<std::string>> cells(static_cast<std::size_t>(grid.rows()));
    for (int row = 0; row < grid.rows(); ++row)
        for (int column = 0; column < grid.columns(); ++column)
            cells[static_cast<std::size_t>(row)].push_back(grid.textMatrix(row, column));
    if (cells == cells_ && grid.columns() == columns_) return;
    const bool isSameSize = cells.size() == cells_.size() && grid.columns() == columns_;
    if (!isSameSize) beginResetModel();
    cells_ = std::move(cells);
    columns_ = grid.columns();
    if (!isSameSize)
        endResetModel();
    else
        emit dataChanged(index(0, 0), index(rowCount() - 1, columns_ - 1));
    emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

int SheetRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(cells_.size());
}

int SheetRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant SheetRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical || cells_.empty()) return {};
    return data(index(0, section), role);
}

QVariant SheetRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::BackgroundRole && index.column() == 0) return QColor("#eef2f6");
    if (role == Qt::TextAlignmentRole && index.column() == rightAligned_) return kRight;
    if (role != Qt::DisplayRole) return {};
    return toQt(cells_[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())]);
}

} // namespace veldona
