// What has rows: lists, data grids, sheets.
#include <algorithm>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QTableView>

#include "platform/controls/forms.h"
#include "platform/controls/lists.h"
#include "platform/controls/userinput.h"
#include "ui/binder.h"
#include "ui/celleditors.h"
#include "ui/emptynote.h"
#include "ui/formwindow.h"
#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/linebetweenrows.h"
#include "ui/parallellists.h"
#include "ui/rowmodels.h"

namespace veldona {

namespace {

constexpr int kTwipsPerPixel = 15;

// A row becomes current by the operator's mouse or key only: a view that takes the focus makes its first row
// current by itself, which is nobody's choice and is taken back.
template <class ControlKind, class ViewKind> class RowsBinder : public BinderOf<ControlKind, ViewKind> {
public:
    using BinderOf<ControlKind, ViewKind>::BinderOf;

    void handOn() override {
        if (!isHandOn_)
            this->refresh(); // the row that the view took by itself is not where the key starts from
        isHandOn_ = true;
        isTold_ = false;
    }
    void focusTaken() override { isHandOn_ = false; }

protected:
    virtual void selected(const QModelIndex& index) = 0;

    void follow() {
        QAbstractItemView& rows = this->view;
        rows.setEditTriggers(QAbstractItemView::NoEditTriggers);
        rows.setSelectionMode(QAbstractItemView::SingleSelection);
        QObject::connect(rows.selectionModel(), &QItemSelectionModel::currentChanged, &rows,
                         [this](const QModelIndex& current) {
                             if (!this->listens() || !isHandOn_ || !current.isValid()) return;
                             isTold_ = true;
                             selected(current);
                         });
        // A press on the row that is current already is a click, too.
        QObject::connect(&rows, &QAbstractItemView::pressed, &rows, [this](const QModelIndex& index) {
            if (this->listens() && !isTold_) selected(index);
        });
        QObject::connect(&rows, &QAbstractItemView::doubleClicked, &rows, [this] {
            if (!this->listens()) return;
            this->act([this] {
                Control& clicked = this->target();
                clicked.form().forms().dispatch([&clicked] {
                    if (const auto handler = clicked.onDblClick) handler();
                });
            });
        });
    }

    void showCurrent(const QModelIndex& index) {
        QAbstractItemView& rows = this->view;
        if (!index.isValid()) {
            rows.selectionModel()->clear();
            return;
        }
        const QModelIndex current = rows.currentIndex();
        const bool isThere =
            current.isValid() && current.row() == index.row() && rows.selectionModel()->isSelected(current);
        if (isThere) return;
        rows.setCurrentIndex(index);
        rows.scrollTo(index);
    }

private:
    bool isHandOn_ = false;
    bool isTold_ = false;
};

// A list that stands in a table of parallel ones and has no click of its own answers as the first one that
// has: it shows the row that is selected there, and a click on it is a click there.
class ListBinder : public RowsBinder<ListBox, QListView> {
public:
    ListBinder(FormWindow& window, ListBox& list, QListView& widget)
        : RowsBinder(window, list, widget),
          rows_(new ListRows(&widget, widget.property("rightAligned").toBool(),
                             widget.property("rowSigns").toBool())),
          line_(new LineBetweenRows(widget)), table_(qobject_cast<ParallelLists*>(widget.parentWidget())) {
        widget.setItemDelegate(line_);
        widget.setModel(rows_);
        restyled();
        widget.setUniformItemSizes(true);
        widget.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        follow();
    }

    void refresh() override {
        Binder::refresh();
        RowMarks marks = bound.marks ? bound.marks() : RowMarks{};
        const bool isOther = rows_->show(bound.rows(), std::move(marks.rows));
        line_->show(marks.lineAbove, toQt(marks.lineWords));
        showSelected();
        if (isOther && marks.inSight >= 0 && bound.listIndex() < 0) bringInSight(marks.inSight);
        if (ListBinder* own = leader(); own != this) {
            view.setFocusProxy(&own->view);
            return;
        }
        for (ListBinder* each : neighbours())
            if (each != this && each->leader() == this) each->showSelected();
    }

    void restyled() override { view.setIconSize({scaled(12), scaled(12)}); }
    [[nodiscard]] Control& target() override { return leader()->bound; }
    [[nodiscard]] QWidget* focusTarget() const override { return &view; }
    [[nodiscard]] QWidget* takerOfDigits() override {
        return bound.count() > 0 ? nullptr
                                 : window().findChild<QLineEdit*>(view.property("digitsGoTo").toString());
    }

protected:
    void selected(const QModelIndex& index) override {
        act([this, row = index.row()] { user::rowSelected(leader()->bound, row); });
    }

private:
    [[nodiscard]] std::vector<ListBinder*> neighbours() {
        std::vector<ListBinder*> found;
        if (!table_) return found;
        for (QListView* list : table_->lists())
            if (auto* each = dynamic_cast<ListBinder*>(window().binderAt(list))) found.push_back(each);
        return found;
    }
    [[nodiscard]] ListBinder* leader() {
        if (bound.onClick) return this;
        for (ListBinder* each : neighbours())
            if (each->bound.onClick) return each;
        return this;
    }
    void showSelected() {
        const int row = leader()->bound.listIndex();
        showCurrent(row >= 0 && row < rows_->rowCount() ? rows_->index(row) : QModelIndex());
    }

    // When all columns of the table have their rows.
    void bringInSight(int row) {
        QMetaObject::invokeMethod(
            &view,
            [&rows = view, row] {
                rows.scrollTo(rows.model()->index(row, 0), QAbstractItemView::PositionAtCenter);
            },
            Qt::QueuedConnection);
    }

    ListRows* rows_;
    LineBetweenRows* line_;
    ParallelLists* table_;
};

// The widths of columns that the operator has drawn wider or narrower.
class ColumnWidths {
public:
    ColumnWidths(FormWindow& window, const Control& grid, QTableView& view)
        : memory_(window.host().memory), name_(toQt(window.form().name() + "/" + grid.name())) {
        QObject::connect(view.horizontalHeader(), &QHeaderView::sectionResized, &view,
                         [this](int column, int, int width) {
                             // Without the mouse it is the window that grew.
                             const bool isDrawn = QApplication::mouseButtons().testFlag(Qt::LeftButton);
                             if (isDrawn && !isArranging_ && width > 0)
                                 memory_.keepWidth(nameOf(column), width);
                         });
    }
    // `widthOf` says what a column needs where nobody has drawn it.
    template <class WidthOf> void arrange(QTableView& view, int columns, WidthOf widthOf) {
        isArranging_ = true;
        for (int column = 0; column < columns; ++column) {
            const int needed = widthOf(column);
            view.setColumnWidth(column, memory_.width(nameOf(column)).value_or(needed));
        }
        isArranging_ = false;
    }

private:
    [[nodiscard]] QString nameOf(int column) const { return name_ + '/' + QString::number(column); }
    WindowMemory& memory_;
    QString name_;
    bool isArranging_ = false;
};

void lookLikeTable(QTableView& table) {
    // Of the application: while a change of font spreads, the table has not got it yet.
    const int rowHeight = QFontMetrics(QApplication::font()).height() + scaled(5);
    table.verticalHeader()->hide();
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table.verticalHeader()->setMinimumSectionSize(rowHeight);
    table.verticalHeader()->setDefaultSectionSize(rowHeight);
    table.setTabKeyNavigation(false);
    table.setWordWrap(false);
    table.setCornerButtonEnabled(false);
}

class GridBinder : public RowsBinder<DataGrid, QTableView> {
public:
    GridBinder(FormWindow& window, DataGrid& grid, QTableView& widget)
        : RowsBinder(window, grid, widget), rows_(new GridRows(&widget, grid)),
          widths_(window, grid, widget) {
        widget.setModel(rows_);
        new EmptyNote(widget); // belongs to the widget
        widget.setSelectionBehavior(QAbstractItemView::SelectRows);
        widget.setAlternatingRowColors(true);
        widget.setShowGrid(false);
        lookLikeTable(widget);
        QHeaderView* head = widget.horizontalHeader();
        head->setHighlightSections(false);
        head->setStretchLastSection(true);
        head->setSectionsClickable(true);
        QObject::connect(head, &QHeaderView::sectionClicked, &widget, [this](int column) {
            if (listens()) act([&] { user::clickHead(bound, column); });
        });
        follow();
    }
    void leave() override { rows_->leave(); }
    void restyled() override {
        lookLikeTable(view);
        setWidths();
    }

    void refresh() override {
        Binder::refresh();
        if (rows_->follow()) setWidths();
        const int row = bound.currentRow();
        const int column = std::max(0, view.currentIndex().column());
        showCurrent(row >= 0 && row < rows_->rowCount() ? rows_->index(row, column) : QModelIndex());
    }

protected:
    void selected(const QModelIndex& index) override {
        act([this, row = index.row()] { user::rowEntered(bound, row); });
    }

private:
    // Wider where the heading needs it.
    void setWidths() {
        const auto& columns = bound.columns();
        widths_.arrange(view, static_cast<int>(columns.size()), [&](int column) {
            return std::max(scaled(columns[static_cast<std::size_t>(column)].width),
                            view.horizontalHeader()->sectionSizeHint(column));
        });
    }

    GridRows* rows_;
    ColumnWidths widths_;
};

class SheetBinder : public RowsBinder<FlexGrid, QTableView> {
public:
    SheetBinder(FormWindow& window, FlexGrid& grid, QTableView& widget)
        : RowsBinder(window, grid, widget),
          rows_(new SheetRows(&widget, widget.property("rightAlignedColumn").toInt())),
          editors_(new CellEditors(widget)), widths_(window, grid, widget) {
        widget.setModel(rows_);
        lookLikeTable(widget);
        widget.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel); // by rows, the hidden one counts
        widget.horizontalHeader()->setHighlightSections(false);
        widget.horizontalHeader()->setStretchLastSection(true);
        follow();
    }
    void restyled() override {
        lookLikeTable(view);
        setWidths();
    }
    void refresh() override {
        Binder::refresh();
        rows_->show(bound);
        view.setRowHidden(0, true); // its texts are the headings
        setWidths();
        const QModelIndex cell = rows_->index(bound.row(), bound.col());
        if (view.currentIndex() != cell) view.setCurrentIndex(cell);
        editors_->place();
    }

protected:
    void selected(const QModelIndex& index) override {
        act([this, row = index.row(), column = index.column()] { user::clickCell(bound, row, column); });
    }

private:
    // Wider where a text in sight needs it.
    void setWidths() {
        widths_.arrange(view, bound.columns(), [this](int column) {
            view.resizeColumnToContents(column);
            return std::max(scaled(bound.columnWidth(column) / kTwipsPerPixel), view.columnWidth(column));
        });
    }

    SheetRows* rows_;
    CellEditors* editors_;
    ColumnWidths widths_;
};

} // namespace

std::unique_ptr<Binder> bindRows(FormWindow& window, Control& control, QWidget& widget) {
    for (const auto bind : {bindAs<ListBinder>, bindAs<GridBinder>, bindAs<SheetBinder>})
        if (auto made = bind(window, control, widget)) return made;
    return nullptr;
}

} // namespace veldona
