// A section tied to the data that it shows: every column found, every sum taken, so that painting a row is
// only reading cells.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/report/allowance.h"
#include "platform/report/layout.h"

namespace veldona::report {

struct BoundPiece {
    Piece::Kind kind = Piece::Kind::Words;
    std::string words;             // of words and sums
    const DataSet* data = nullptr; // of a column
    std::size_t column = 0;
    std::string mask;
};

struct BoundText {
    const TextElement* element = nullptr;
    std::vector<BoundPiece> pieces;
};

struct BoundSection {
    const std::string* file = nullptr; // of the layout, for messages
    const Section* section = nullptr;
    const DataSet* data = nullptr; // whose row is the current one; nothing where the section has none
    std::vector<BoundText> texts;
    double extent = 0; // how far to the right its elements reach
};

struct BoundTable {
    double x = 0;
    const DataSet* data = nullptr;
    std::vector<BoundSection> header; // one, or none
    BoundSection detail;
    std::vector<BoundSection> footer;
};

// `layout` and `data` must outlive what is bound to them. Error for a column or rows that the data does not
// have.
class Binding {
public:
    Binding(const Layout& layout, std::vector<const DataSet*> data, Allowance& allowance)
        : layout_(layout), data_(std::move(data)), allowance_(allowance) {}
    // What is bound from now on is bound to these.
    void use(std::vector<const DataSet*> data) { data_ = std::move(data); }
    [[nodiscard]] BoundSection section(const Section& section) const;
    [[nodiscard]] BoundTable table(const Table& table) const;

private:
    [[nodiscard]] const DataSet* find(const std::string& query) const;
    [[nodiscard]] BoundPiece piece(const Piece& piece, const Section& around, int line) const;
    [[nodiscard]] std::string sumOf(const DataSet& data, std::size_t column, const Piece& piece,
                                    int line) const;
    const Layout& layout_;
    std::vector<const DataSet*> data_;
    Allowance& allowance_;
};

} // namespace veldona::report
