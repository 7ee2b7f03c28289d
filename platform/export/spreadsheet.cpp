#include "platform/export/spreadsheet.h"

#include <cstdlib>
#include <filesystem>
#include <map>
#include <utility>

#include <xlsxwriter.h>

#include "platform/export/cells.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/datetime.h"
#include "platform/runtime/error.h"
#include "platform/runtime/text.h"

namespace veldona::exports {

namespace {

constexpr std::size_t kMostLetters = 32767; // of a cell

// The library puts the sheet together from plain parts on the disk. They hold the shop's customers, so they
// lie beside the sheet where its owner alone may look, and not in the folder that all of the machine share.
class PartsFolder {
public:
    explicit PartsFolder(const std::filesystem::path& sheet) {
        std::string made = (sheet.parent_path() / ".parca-XXXXXX").string();
        if (mkdtemp(made.data()) == nullptr) raise(ErrorNumber::PathFileAccess);
        path_ = std::move(made);
    }
    ~PartsFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    PartsFolder(const PartsFolder&) = delete;
    PartsFolder& operator=(const PartsFolder&) = delete;

    [[nodiscard]] std::string& path() { return path_; }

private:
    std::string path_;
};

} // namespace

struct Spreadsheet::State {
    explicit State(std::string nativePath) : path(std::move(nativePath)), parts(path) {}

    std::string path;
    PartsFolder parts;
    lxw_workbook* book = nullptr;
    lxw_worksheet* sheet = nullptr;
    std::map<std::pair<CellStyle, bool>, lxw_format*> formats; // by style and whether it is of a date

    [[nodiscard]] lxw_format* formatOf(const CellStyle& style, bool date) {
        lxw_format*& made = formats[{style, date}];
        if (made) return made;
        made = workbook_add_format(book);
        if (style.bold) format_set_bold(made);
        if (style.underline) format_set_underline(made, LXW_UNDERLINE_SINGLE);
        format_set_font_size(made, style.size);
        if (style.rgb) format_set_font_color(made, style.rgb);
        if (date) format_set_num_format(made, "dd/mm/yyyy");
        return made;
    }
};

Spreadsheet::Spreadsheet(std::string nativePath) : state_(std::make_unique<State>(std::move(nativePath))) {
    lxw_workbook_options options{};
    options.tmpdir = state_->parts.path().data();
    state_->book = workbook_new_opt(state_->path.c_str(), &options);
    state_->sheet = state_->book ? workbook_add_worksheet(state_->book, nullptr) : nullptr;
    if (!state_->sheet) raise(ErrorNumber::PathFileAccess);
}

Spreadsheet::~Spreadsheet() {
    if (state_->book) lxw_workbook_free(state_->book);
}

void Spreadsheet::write(const std::string& cell, const Value& value, const CellStyle& style) {
    write(static_cast<int>(lxw_name_to_row(cell.c_str())), static_cast<int>(lxw_name_to_col(cell.c_str())),
          value, style);
}

void Spreadsheet::write(int row, int column, const Value& value, const CellStyle& style) {
    const auto at = static_cast<lxw_row_t>(row);
    const auto in = static_cast<lxw_col_t>(column);
    lxw_format* look = state_->formatOf(style, value.kind() == Value::Kind::Date);
    lxw_error error = LXW_NO_ERROR;
    switch (value.kind()) {
    case Value::Kind::Null:
        return;
    case Value::Kind::Date: {
        const double days = static_cast<double>(value.get<DateTime>().seconds()) / kSecondsADay;
        error = worksheet_write_number(state_->sheet, at, in, days, look);
        break;
    }
    case Value::Kind::Text:
    case Value::Kind::Boolean:
        error = worksheet_write_string(state_->sheet, at, in,
                                       left(withoutControls(toText(value)), kMostLetters).c_str(), look);
        break;
    default:
        error = worksheet_write_number(state_->sheet, at, in, toDouble(value), look);
    }
    if (error != LXW_NO_ERROR) raise(ErrorNumber::InvalidCall);
}

void Spreadsheet::setWidth(char column, double characters) {
    const auto at = static_cast<lxw_col_t>(column - 'A');
    worksheet_set_column(state_->sheet, at, at, characters, nullptr);
}

void Spreadsheet::close() {
    lxw_workbook* book = std::exchange(state_->book, nullptr);
    if (workbook_close(book) == LXW_NO_ERROR) return;
    std::error_code ignored;
    std::filesystem::remove(state_->path, ignored);
    raise(ErrorNumber::PathFileAccess);
}

} // namespace veldona::exports
