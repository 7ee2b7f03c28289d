// A Jet 4 file as tables of checked values.
//
// The library below skips what it cannot read without a word. So each value is taken from the row's raw bytes
// and checked, each row must lie on a page of its own table, and the rows that came must be as many as the
// table says it has. A wrong number that is still a number cannot be noticed: the file carries no check sums.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "apps/hazirla/delivered.h"
#include "platform/runtime/value.h"

namespace veldona::aktar {

// The file is cut or broken; nothing of it may be kept.
class Damaged : public hazirla::Refusal {
public:
    using Refusal::Refusal;
};

struct JetColumn {
    std::string name;
    bool readable; // false for pictures, binary data, decimals: the value stays Null
};

struct JetTable {
    std::string name;
    std::vector<JetColumn> columns;
    std::uint64_t rows = 0; // the table's own count
    bool linked = false;    // its rows are in another file
};

class JetFile {
public:
    // Raises Damaged where the list of tables is not whole.
    explicit JetFile(const std::string& path);
    ~JetFile();
    JetFile(const JetFile&) = delete;
    JetFile& operator=(const JetFile&) = delete;

    // The tables of the shop, without those that the file keeps for itself.
    [[nodiscard]] const std::vector<JetTable>& tables() const { return tables_; }

    // Hands out every row of a table, one value a column. Raises Damaged.
    using RowTaker = std::function<void(std::span<const Value> row)>;
    void read(const JetTable& table, const RowTaker& take) const;

private:
    class Reading;
    struct Handle;

    std::string path_;
    std::unique_ptr<Handle> handle_;
    std::vector<JetTable> tables_;
};

} // namespace veldona::aktar
