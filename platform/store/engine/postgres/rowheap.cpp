#include "platform/store/engine/postgres/rowheap.h"

#include "platform/store/engine/postgres/definitions.h"

namespace veldona::store {
namespace {

void appendCell(std::string& lines, const Bound& value) {
    if (value.isNull) {
        lines += "\\N";
        return;
    }
    for (const char letter : value.text) {
        switch (letter) {
        case '\\':
            lines += "\\\\";
            break;
        case '\n':
            lines += "\\n";
            break;
        case '\r':
            lines += "\\r";
            break;
        case '\t':
            lines += "\\t";
            break;
        default:
            lines += letter;
        }
    }
}

void appendLiteral(std::string& values, const Bound& value) {
    if (value.isNull) {
        values += "NULL";
        return;
    }
    values += '\'';
    for (const char letter : value.text)
        values.append(letter == '\'' ? 2 : 1, letter);
    values += '\'';
}

} // namespace

void appendCopyLine(std::string& lines, const std::vector<Bound>& row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0) lines += '\t';
        appendCell(lines, row[i]);
    }
    lines += '\n';
}

void RowHeap::add(const std::vector<Bound>& row) {
    appendCopyLine(lines_, row);
    if (isSmall()) {
        values_ += rows_ == 0 ? "(" : ", (";
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) values_ += ", ";
            appendLiteral(values_, row[i]);
        }
        values_ += ')';
    }
    ++rows_;
}

std::string RowHeap::insertStatement() const {
    return "INSERT INTO " + quotedName(table_) + " (" + columns_ + ") VALUES " + values_;
}

std::string RowHeap::copyStatement() const {
    return "COPY " + quotedName(table_) + " (" + columns_ + ") FROM STDIN";
}

} // namespace veldona::store
