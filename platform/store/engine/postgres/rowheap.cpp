#include "platform/store/engine/postgres/rowheap.h"

#include "platform/store/engine/postgres/definitions.h"

namespace veldona::store {
namespace {

void appendLine(std::string& lines, const Bound& value) {
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

void RowHeap::add(const std::vector<Bound>& row) {
    const bool isListed = isSmall();
    if (isListed) values_ += rows_ == 0 ? "(" : ", (";
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i > 0) lines_ += '\t';
        appendLine(lines_, row[i]);
        if (!isListed) continue;
        if (i > 0) values_ += ", ";
        appendLiteral(values_, row[i]);
    }
    lines_ += '\n';
    if (isListed) values_ += ')';
    ++rows_;
}

std::string RowHeap::insertStatement() const {
    return "INSERT INTO " + quotedName(table_) + " (" + columns_ + ") VALUES " + values_;
}

std::string RowHeap::copyStatement() const {
    return "COPY " + quotedName(table_) + " (" + columns_ + ") FROM STDIN";
}

} // namespace veldona::store
