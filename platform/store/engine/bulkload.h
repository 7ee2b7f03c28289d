// Fills a new file with very many rows at once: in one transaction without a journal, the indexes built at
// the end.
//
// Only for a file that nobody else has open and that is thrown away where the filling fails: until finish()
// has returned, what is written may be lost or broken. Raises StoreError.
#pragma once

#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/inquiry.h"

namespace veldona::store {

class BulkLoad {
public:
    // A file made by createDatabase.
    BulkLoad(const std::string& nativePath, std::string_view password);

    class Rows {
    public:
        // One value a column; Null where the row has none.
        void add(std::span<const Value> row);
        void add(std::initializer_list<Value> row) { add(std::span(row.begin(), row.size())); }

    private:
        friend class BulkLoad;
        Rows(const Inquiry& books, const TableDef& table, const std::vector<std::string>& columns);
        std::unique_ptr<Statement> insert_;
        std::vector<ColumnType> types_;
    };
    // The rows of `columns`, which `table` must have; the others stay Null, and ID counts on.
    [[nodiscard]] Rows into(const TableDef& table, const std::vector<std::string>& columns);

    // Ends the filling: the indexes stand, the journal says that rows came in so, and the file is on the
    // disk. No Rows may be left.
    void finish();

private:
    std::string path_;
    std::unique_ptr<Engine> engine_;
    std::unique_ptr<Inquiry> inquiry_;
};

} // namespace veldona::store
