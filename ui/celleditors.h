// Editors that lie over the current row of a sheet: they stand in no layout, and follow the row as it
// scrolls.
//
// In the drawing an editor is a sibling of its sheet, named by the property "cellOf"; "cellColumn" is its
// column.
#pragma once

#include <QObject>

class QTableView;

namespace veldona {

class CellEditors : public QObject {
public:
    explicit CellEditors(QTableView& sheet); // owned by it

    void place();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTableView& sheet_;
};

} // namespace veldona
