// The rows of lists and grids as Qt's views want them.
//
// A list keeps a copy of its texts, which are few; a grid asks its control for the cells that are seen, so
// that 20,000 rows cost nothing. Both change row by row where they can, so that a view keeps its place.
#pragma once

#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QAbstractTableModel>

#include "platform/controls/lists.h"

namespace veldona {

class ListRows : public QAbstractListModel {
public:
    // `withSigns`: the sign of a row's mark stands before its text.
    ListRows(QObject* parent, bool rightAligned, bool withSigns)
        : QAbstractListModel(parent), rightAligned_(rightAligned), withSigns_(withSigns) {}

    // True where the rows are others than before; the marks may be, too.
    bool show(const std::vector<std::string>& rows, std::vector<RowMark> marks);
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<std::string> rows_;
    std::vector<RowMark> marks_;
    bool rightAligned_;
    bool withSigns_;
};

class GridRows : public QAbstractTableModel {
public:
    GridRows(QObject* parent, const DataGrid& grid) : QAbstractTableModel(parent), grid_(&grid) {}

    // True where the columns are new.
    bool follow();
    void leave(); // the grid is gone
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] int alignmentOf(int column) const;
    const DataGrid* grid_;
    std::vector<std::string> titles_;
    int rows_ = 0;
};

class SheetRows : public QAbstractTableModel {
public:
    // Column 0 holds headings, so 0 aligns none.
    SheetRows(QObject* parent, int rightAligned) : QAbstractTableModel(parent), rightAligned_(rightAligned) {}

    void show(const FlexGrid& grid);
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<std::vector<std::string>> cells_;
    int columns_ = 0;
    int rightAligned_;
};

} // namespace veldona
