#include "platform/export/workbook.h"

#include <algorithm>

#include "platform/export/biff.h"
#include "platform/export/cells.h"
#include "platform/export/compoundfile.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/datetime.h"
#include "platform/runtime/error.h"
#include "platform/runtime/text.h"

namespace veldona::exports {

namespace {

enum Record : unsigned {
    kFormula = 0x06,
    kEndOfPart = 0x0A,
    kFont = 0x31,
    kCodePage = 0x42,
    kWindow = 0x3D,
    kColumn = 0x7D,
    kSheet = 0x85,
    kCellFormat = 0xE0,
    kExtent = 0x200,
    kNumber = 0x203,
    kText = 0x204,
    kSheetWindow = 0x23E,
    kStyle = 0x293,
    kNumberFormat = 0x41E,
    kStart = 0x809,
};

// The cell formats in their order behind the fifteen of the styles.
enum Look : unsigned { kPlain = 15, kHeading, kMoney, kDate, kDateTime };

constexpr std::size_t kMostRows = 65536, kMostColumns = 256;
constexpr unsigned kOwnFormats = 164; // numbers below are the built-in formats
constexpr unsigned kBuiltInMoney = 4; // #,##0.00

void appendStart(std::string& stream, unsigned part) {
    appendRecord(stream, kStart,
                 LittleEndian().word(0x600).word(part).word(0xDBB).word(0x7CC).dword(0x41).dword(0x6));
}

void appendFont(std::string& stream, bool bold) {
    LittleEndian font;
    font.word(10 * 20).word(0).word(0x7FFF).word(bold ? 700 : 400).word(0).byte(0).byte(0).byte(162).byte(0);
    appendRecord(stream, kFont, font.raw(shortText("Arial").bytes()));
}

void appendLook(std::string& stream, unsigned font, unsigned format, bool ofStyle) {
    LittleEndian look;
    look.word(font).word(format).word(ofStyle ? 0xFFF5 : 0x0001).byte(0x20).byte(0).byte(0);
    look.byte(ofStyle ? 0xF4 : 0x0C).dword(0).dword(0).word(0x20C0);
    appendRecord(stream, kCellFormat, look);
}

// All that stands before the sheets; `starts` is where in the stream each begins.
std::string globals(const std::vector<SheetRows>& sheets, const std::vector<std::size_t>& starts) {
    constexpr unsigned boldFont = 5; // there is no font of number 4
    std::string out;
    appendStart(out, 0x5);
    appendRecord(out, kCodePage, LittleEndian().word(0x4B0));
    appendRecord(
        out, kWindow,
        LittleEndian().word(0).word(0).word(0x3FCF).word(0x2A4E).word(0x38).word(0).word(0).word(1).word(
            600));
    for (int i = 0; i < 5; ++i)
        appendFont(out, i == 4);
    appendRecord(out, kNumberFormat, LittleEndian().word(kOwnFormats).raw(longText("dd/mm/yyyy").bytes()));
    appendRecord(out, kNumberFormat,
                 LittleEndian().word(kOwnFormats + 1).raw(longText("dd/mm/yyyy hh:mm:ss").bytes()));
    for (unsigned i = 0; i < kPlain; ++i)
        appendLook(out, 0, 0, true);
    appendLook(out, 0, 0, false);
    appendLook(out, boldFont, 0, false);
    appendLook(out, 0, kBuiltInMoney, false);
    appendLook(out, 0, kOwnFormats, false);
    appendLook(out, 0, kOwnFormats + 1, false);
    appendRecord(out, kStyle, LittleEndian().word(0x8000).byte(0).byte(0xFF));
    for (std::size_t i = 0; i < sheets.size(); ++i)
        appendRecord(out, kSheet,
                     LittleEndian()
                         .dword(static_cast<std::uint32_t>(starts[i]))
                         .word(0)
                         .raw(shortText(sheets[i].name, 31).bytes()));
    appendRecord(out, kEndOfPart, {});
    return out;
}

class Sheet {
public:
    Sheet(const SheetRows& sheet, const WorkbookChoices& choices)
        : sheet_(sheet), rows_(sheet.rows), choices_(choices) {}
    [[nodiscard]] std::string write(bool inFront);

private:
    [[nodiscard]] unsigned headingRows() const { return sheet_.headings ? 1 : 0; }
    [[nodiscard]] unsigned totalRows() const;
    void totals();
    void formula(unsigned row, unsigned column, double value, unsigned look);
    [[nodiscard]] unsigned width(std::size_t column) const;
    void cell(unsigned row, unsigned column, const Value& value);
    void text(unsigned row, unsigned column, const std::string& words, unsigned look) {
        LittleEndian label;
        appendRecord(out_, kText, label.word(row).word(column).word(look).raw(longText(words).bytes()));
    }
    void number(unsigned row, unsigned column, double value, unsigned look) {
        appendRecord(out_, kNumber, LittleEndian().word(row).word(column).word(look).real(value));
    }
    const SheetRows& sheet_;
    const report::DataSet& rows_;
    const WorkbookChoices& choices_;
    std::string out_;
};

unsigned Sheet::totalRows() const {
    const bool any =
        sheet_.totals && std::ranges::any_of(rows_.columns, [](const report::Column& c) { return c.summed; });
    return any ? 1 : 0;
}

// SUM over the rows of the column, with the value that it has now.
void Sheet::formula(unsigned row, unsigned column, double value, unsigned look) {
    constexpr unsigned area = 0x25, attribute = 0x19, sum = 0x10, relative = 0xC000;
    LittleEndian tokens;
    tokens.byte(area).word(headingRows()).word(row - 1).word(column | relative).word(column | relative);
    tokens.byte(attribute).byte(sum).word(0);
    LittleEndian record;
    record.word(row).word(column).word(look).real(value).word(0).dword(0);
    record.word(static_cast<unsigned>(tokens.bytes().size())).raw(tokens.bytes());
    appendRecord(out_, kFormula, record);
}

void Sheet::totals() {
    const auto row = static_cast<unsigned>(rows_.rowCount()) + headingRows();
    const unsigned amount = choices_.formatted ? kMoney : kPlain;
    if (!rows_.columns[0].summed) text(row, 0, "TOPLAM", choices_.formatted ? kHeading : kPlain);
    for (std::size_t c = 0; c < rows_.columns.size(); ++c) {
        if (!rows_.columns[c].summed) continue;
        Currency total; // as the report adds it
        for (std::size_t r = 0; r < rows_.rowCount(); ++r)
            if (const Value& value = rows_.at(r, c); !value.isNull()) total += toCurrency(value);
        const auto column = static_cast<unsigned>(c);
        choices_.functions ? formula(row, column, toDouble(total), amount)
                           : number(row, column, toDouble(total), amount);
    }
}

unsigned Sheet::width(std::size_t column) const {
    constexpr std::size_t least = 8, most = 60;
    if (choices_.columnWidth > 0) return static_cast<unsigned>(std::min(choices_.columnWidth, 255.0) * 256);
    std::size_t letters = length(rows_.columns[column].name);
    for (std::size_t r = 0; r < rows_.rowCount(); ++r)
        letters = std::max(letters, length(shownCell(rows_.at(r, column))));
    return static_cast<unsigned>(std::clamp(letters + 2, least, most) * 256);
}

void Sheet::cell(unsigned row, unsigned column, const Value& value) {
    if (value.isNull()) return;
    const bool styled = choices_.formatted;
    if (value.kind() == Value::Kind::Date) {
        const auto date = value.get<DateTime>();
        if (!styled) return text(row, column, toText(value), kPlain);
        return number(row, column, static_cast<double>(date.seconds()) / kSecondsADay,
                      date.hasTime() ? kDateTime : kDate);
    }
    if (!isNumber(value)) return text(row, column, shownCell(value), kPlain);
    const bool amount = styled && value.kind() != Value::Kind::Whole;
    number(row, column, toDouble(value), amount ? kMoney : kPlain);
}

std::string Sheet::write(bool inFront) {
    const auto columns = static_cast<unsigned>(rows_.columns.size());
    const auto rows = static_cast<unsigned>(rows_.rowCount());
    if (rows_.rowCount() + headingRows() + totalRows() > kMostRows || rows_.columns.size() > kMostColumns)
        raise(ErrorNumber::Overflow);
    appendStart(out_, 0x10);
    appendRecord(
        out_, kExtent,
        LittleEndian().dword(0).dword(rows + headingRows() + totalRows()).word(0).word(columns).word(0));
    for (unsigned c = 0; choices_.formatted && c < columns; ++c)
        appendRecord(out_, kColumn,
                     LittleEndian().word(c).word(c).word(width(c)).word(kPlain).word(0).word(0));
    for (unsigned c = 0; sheet_.headings && c < columns; ++c)
        text(0, c, rows_.columns[c].name, choices_.formatted ? kHeading : kPlain);
    for (unsigned r = 0; r < rows; ++r)
        for (unsigned c = 0; c < columns; ++c)
            cell(r + headingRows(), c, rows_.at(r, c));
    if (totalRows() > 0) totals();
    constexpr unsigned window = 0xB6, selectedInFront = 0x600;
    appendRecord(out_, kSheetWindow,
                 LittleEndian()
                     .word(inFront ? window | selectedInFront : window)
                     .word(0)
                     .word(0)
                     .dword(0x40)
                     .word(0)
                     .word(0)
                     .dword(0));
    appendRecord(out_, kEndOfPart, {});
    return std::move(out_);
}

} // namespace

std::string workbook(const report::Document& document, const WorkbookChoices& choices) {
    const std::vector<SheetRows> sheets = sheetsOf(document, choices);
    std::vector<std::string> written;
    written.reserve(sheets.size());
    for (const SheetRows& sheet : sheets)
        written.push_back(Sheet(sheet, choices).write(written.empty()));
    std::vector<std::size_t> starts(sheets.size());
    std::size_t at = globals(sheets, starts).size();
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        starts[i] = at;
        at += written[i].size();
    }
    std::string stream = globals(sheets, starts);
    for (const std::string& sheet : written)
        stream += sheet;
    return compoundFile("Workbook", std::move(stream));
}

} // namespace veldona::exports
