// Controls with rows: list box, combo, flex grid, data grid, tool bar, tab control.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/controls/controls.h"

namespace veldona {

// How a row stands out beside its text, which it leaves as it is: by a sign and a colour for the eye, in
// words for the ear and as a tool tip.
struct RowMark {
    enum class Kind { None, Done, Next, Late, New };
    Kind kind = Kind::None;
    std::string words;
    friend bool operator==(const RowMark&, const RowMark&) = default;
};

struct RowMarks {
    std::vector<RowMark> rows; // one a row; those behind the last one have none
    int lineAbove = -1;        // a line above this row, or below the last one, parts the rows; -1: none
    std::string lineWords;     // what it stands for
    int inSight = -1;          // the row to be seen when the rows are others than before; -1: the first
};

// An ordered list of texts with a selected index. The rows are the ledger's working copy, so reading beyond
// the end is no error: list(i) is "" there.
class ListBox : public Control, public ShownRows {
public:
    ListBox(Form& form, std::string name) : Control(form, std::move(name)) {}

    // Asked for by a window each time that it shows the list, so that nobody else pays for it. Raises
    // nothing.
    std::function<RowMarks()> marks;
    void marksChanged() { changed(); } // though the rows have not

    [[nodiscard]] int count() const { return static_cast<int>(rows_.size()); }
    [[nodiscard]] const std::string& list(int row) const; // "" outside
    void setList(int row, std::string text);              // error 381 outside
    void add(std::string text);
    void remove(int row); // error 5 outside; the selection follows its row, or is lost with it
    void clear();         // listIndex becomes -1
    [[nodiscard]] int listIndex() const { return listIndex_; }
    void setListIndex(int row); // error 380 outside; no click
    [[nodiscard]] const std::string& text() const {
        return list(listIndex_);
    } // the selected row, "" for none
    [[nodiscard]] std::string shownText() const override { return text(); }
    [[nodiscard]] const std::vector<std::string>& rows() const { return rows_; }

    void takeKey(const KeyEvent& key, char32_t character) override;
    [[nodiscard]] int rowsToClick() const override { return count(); }
    void clickRow(int row) override; // selects and clicks
    [[nodiscard]] const ShownRows* shownRows() const override { return this; }
    [[nodiscard]] int countShown() const override { return count(); }
    [[nodiscard]] int selectedShown() const override { return listIndex_; }
    [[nodiscard]] std::string textShown(int row, int) const override { return list(row); }

private:
    std::vector<std::string> rows_;
    int listIndex_ = -1;
};

// A text with a list; an entry may carry a bound value (a row's ID) that the operator does not see.
class ComboBox : public Control, public ShownRows {
public:
    enum class Style { Free, ListOnly }; // may the text be typed?
    ComboBox(Form& form, std::string name, Style style = Style::Free)
        : Control(form, std::move(name)), style_(style) {}

    std::function<void()>
        onChange; // the text changed, by the operator or by code; not by a choice from the list

    [[nodiscard]] Style style() const { return style_; }
    [[nodiscard]] int count() const { return static_cast<int>(entries_.size()); }
    [[nodiscard]] const std::string& list(int row) const; // "" outside
    void add(std::string text, Value bound = {});
    void clear(); // the list, and the text of a ListOnly combo
    [[nodiscard]] int listIndex() const { return listIndex_; }
    void setListIndex(int row); // sets the text; -1 empties it; raises no click. Error 380 outside
    [[nodiscard]] const std::string& text() const { return text_; }
    // Free: raises onChange; the entry of just this text becomes the selected one, else none. ListOnly: the
    // entry of this text is selected; error 383 where there is none (the empty text selects none).
    void setText(std::string text);
    // As setText of a Free one, by the operator's hand: the caret is put first.
    void edit(std::string text, int caret);
    // As those of a text box.
    [[nodiscard]] int selStart() const { return selStart_; }
    [[nodiscard]] int selLength() const { return selLength_; }
    void select(int start, int length);
    void selectAll() override;
    // The bound value of the selected entry as text; "" for none or Null.
    [[nodiscard]] std::string boundText() const;
    [[nodiscard]] std::string shownText() const override { return text_; }

    [[nodiscard]] bool isField() const override { return true; }
    [[nodiscard]] bool takesTyping() const override { return true; }
    void takeKey(const KeyEvent& key, char32_t character) override;
    bool put(std::string_view text) override;
    bool choose(std::string_view entry) override;
    [[nodiscard]] int rowsToClick() const override { return locked ? 0 : count(); }
    void clickRow(int row) override; // chosen from the list
    [[nodiscard]] const ShownRows* shownRows() const override { return this; }
    [[nodiscard]] int countShown() const override { return count(); }
    [[nodiscard]] int selectedShown() const override { return listIndex_; }
    [[nodiscard]] std::string textShown(int row, int) const override { return list(row); }

private:
    struct Entry {
        std::string text;
        Value bound;
    };
    void takeText(std::string text);
    [[nodiscard]] int indexOf(std::string_view text) const; // -1: none
    [[nodiscard]] std::optional<int> entryBeginning(char32_t character) const;
    Style style_;
    std::vector<Entry> entries_;
    int listIndex_ = -1;
    std::string text_;
    int selStart_ = 0;
    int selLength_ = 0;
};

// A sheet of texts with a current cell; row 0 and column 0 are its headings.
class FlexGrid : public Control, public ShownRows {
public:
    FlexGrid(Form& form, std::string name, int rows = 2, int columns = 2);

    [[nodiscard]] int rows() const { return static_cast<int>(cells_.size()); }
    [[nodiscard]] int columns() const { return columns_; }
    void setRows(int rows); // rows cut off lose their text; new ones are empty; the current row stays inside
    void setColumns(int columns);
    void addRow(); // an empty one at the end
    [[nodiscard]] int row() const { return row_; }
    [[nodiscard]] int col() const { return column_; }
    void setRow(int row); // error 30009 outside
    void setCol(int column);
    [[nodiscard]] const std::string& text() const { return textMatrix(row_, column_); } // of the current cell
    void setText(std::string text) { setTextMatrix(row_, column_, std::move(text)); }
    [[nodiscard]] const std::string& textMatrix(int row, int column) const; // error 381 outside
    void setTextMatrix(int row, int column, std::string text);
    void setColumnWidth(int column, int twips);
    [[nodiscard]] int columnWidth(int column) const;
    [[nodiscard]] std::string shownText() const override;

    void takeKey(const KeyEvent& key, char32_t character) override;
    [[nodiscard]] const ShownRows* shownRows() const override { return this; }
    [[nodiscard]] int countShown() const override { return rows(); }
    [[nodiscard]] int selectedShown() const override { return row_; }
    [[nodiscard]] int columnsShown() const override { return columns_; }
    [[nodiscard]] std::string textShown(int row, int column) const override {
        return textMatrix(row, column);
    }

private:
    int columns_;
    std::vector<std::vector<std::string>> cells_;
    std::vector<int> widths_;
    int row_ = 0;
    int column_ = 0;
};

// Where a data grid's rows come from; the grid keeps no copy, so that 20,000 rows cost nothing until they are
// seen.
class RowSource {
public:
    virtual ~RowSource() = default;
    [[nodiscard]] virtual int rowCount() const = 0;
    [[nodiscard]] virtual std::string cell(int row, std::string_view field) const = 0;
    [[nodiscard]] virtual int currentRow() const = 0; // -1: none
    virtual void moveTo(int row) = 0;
};

// A read-only table bound to a row source: its current row is the source's.
class DataGrid : public Control, public ShownRows {
public:
    struct Column {
        std::string title;
        std::string field;
        int width = 100; // device-independent pixels
        bool rightAligned = false;
    };
    DataGrid(Form& form, std::string name) : Control(form, std::move(name)) {}

    std::function<void()> onRowChange; // the operator made a row current, or clicked the one that is
    std::function<void(int column)> onHeadClick;

    void setColumns(std::vector<Column> columns);
    [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
    [[nodiscard]] int columnOf(std::string_view titleOrField) const; // case-free; -1: none
    void bind(RowSource* source); // nullptr unbinds; the source must outlive the binding
    [[nodiscard]] bool isBound() const { return source_ != nullptr; }
    void refresh(); // the source's rows or its place changed
    [[nodiscard]] int rowCount() const { return source_ ? source_->rowCount() : 0; }
    [[nodiscard]] int currentRow() const { return source_ ? source_->currentRow() : -1; }
    void moveTo(int row); // moves the source; no event; nothing where there is no such row
    // The text of a cell; "" outside.
    [[nodiscard]] std::string cell(int row, int column) const;
    [[nodiscard]] std::string
    currentText(std::string_view titleOrField) const; // error 3021 without a current row
    [[nodiscard]] std::string shownText() const override;

    void enterRow(int row); // by the operator: moves, and raises onRowChange
    void takeKey(const KeyEvent& key, char32_t character) override;
    [[nodiscard]] int rowsToClick() const override { return rowCount(); }
    void clickRow(int row) override; // enters and clicks
    [[nodiscard]] const ShownRows* shownRows() const override { return this; }
    [[nodiscard]] int countShown() const override { return rowCount(); }
    [[nodiscard]] int selectedShown() const override { return currentRow(); }
    [[nodiscard]] int columnsShown() const override { return static_cast<int>(columns_.size()); }
    [[nodiscard]] int columnNamed(std::string_view name) const override { return columnOf(name); }
    [[nodiscard]] std::string textShown(int row, int column) const override { return cell(row, column); }

private:
    std::vector<Column> columns_;
    RowSource* source_ = nullptr;
};

// A bar of tools, each with a key; what is shown of it is a matter of the form's state.
class ToolBar : public Control {
public:
    struct Tool {
        std::string key;
        std::string caption;
        bool visible = true;
        bool enabled = true;
    };
    ToolBar(Form& form, std::string name) : Control(form, std::move(name)) {}

    std::function<void(const std::string& key)> onToolClick;

    void add(std::string key, std::string caption);
    [[nodiscard]] const std::vector<Tool>& tools() const { return tools_; }
    [[nodiscard]] const Tool* find(std::string_view key) const; // case-free; nullptr: none
    void setToolVisible(std::string_view key, bool visible);    // error 5 for an unknown key
    void setToolEnabled(std::string_view key, bool enabled);
    void setToolCaption(std::string_view key, std::string caption);
    [[nodiscard]] bool takesFocus() const override { return false; }
    [[nodiscard]] bool takesClick() const override { return false; }
    [[nodiscard]] std::string shownText() const override { return {}; }

private:
    Tool& tool(std::string_view key);
    std::vector<Tool> tools_;
};

// Pages in tabs, the first one current; a page is a Frame placed in it, shown while it is the current one.
class TabControl : public Control {
public:
    TabControl(Form& form, std::string name) : Control(form, std::move(name)) {}
    void addPage(Frame& page); // its caption is the tab's
    [[nodiscard]] const std::vector<Frame*>& pages() const { return pages_; }
    [[nodiscard]] int tab() const { return tab_; }
    void setTab(int tab); // error 380 outside; the page becomes visible, the others hidden
    [[nodiscard]] std::string shownText() const override;
    [[nodiscard]] bool hasPages() const override { return true; }
    void turnToPage(const Control& page) override;
    [[nodiscard]] int rowsToClick() const override { return static_cast<int>(pages_.size()); }
    void clickRow(int row) override; // the page is turned to

private:
    std::vector<Frame*> pages_;
    int tab_ = 0;
};

} // namespace veldona
