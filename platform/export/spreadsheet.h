// One sheet in a new .xlsx workbook, written cell by cell and saved by close().
//
// Nothing of it is on disk before close(), and then not outside its folder; a sheet that is given up leaves
// no file.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/runtime/value.h"

namespace veldona::exports {

struct CellStyle {
    bool bold = false;
    bool underline = false;
    double size = 11;
    std::uint32_t rgb = 0;
    friend auto operator<=>(const CellStyle&, const CellStyle&) = default;
};

class Spreadsheet {
public:
    explicit Spreadsheet(std::string nativePath);
    ~Spreadsheet();
    Spreadsheet(const Spreadsheet&) = delete;
    Spreadsheet& operator=(const Spreadsheet&) = delete;

    // `cell` as "C1". Texts stay texts, also where they read as numbers, without controls and as far as a
    // cell has room for them; dates and numbers are typed.
    void write(const std::string& cell, const Value& value, const CellStyle& style = {});
    // `row` and `column` from 0.
    void write(int row, int column, const Value& value, const CellStyle& style = {});
    void setWidth(char column, double characters);
    // Error 75 where the file cannot be written; what was begun of it is taken away.
    void close();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace veldona::exports
