// The file face of the store: a database opened by path, and live recordsets that can be written through.
//
// Opening a recordset reads nothing; it reads from the first move or look on. One on a table walks the rows
// by ID as they stand at that moment, in small portions, never the whole table at once. Errors are
// RuntimeErrors with the numbers of this face: 3021, 3031 (password), 3024 (no file), 3075 (statement), 3167,
// 3260 (locked), 3265, 3421 …
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"

namespace veldona::store {
class Database;
class Workspace;
} // namespace veldona::store

namespace veldona::dao {

// Columns that a recordset is limited to before it is walked, each with the value it must equal (text by the
// store's comparison). It stands for the tests that the walking code makes anyway: the rows left out are rows
// it would pass over, and the order stays. A value that does not read as its column's type lets no row
// through.
struct Narrowing {
    std::string column;
    Value value;
};

class Recordset {
public:
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    [[nodiscard]] bool eof();
    [[nodiscard]] bool bof();
    void moveFirst(); // error 3021 in an empty recordset; any move drops what was set and not updated
    void moveLast();
    void moveNext(); // error 3021 past EOF
    void movePrevious();

    // Error 3265 for an unknown field, 3021 where there is no current row.
    [[nodiscard]] Value value(std::string_view field);
    // While a row is being added or edited; error 3421 where the value does not convert to the column's type,
    // and the column keeps what it held. Error 3020 outside AddNew and Edit.
    void set(std::string_view field, const Value& value);
    void addNew();
    void edit();   // error 3021 where there is no current row
    void update(); // writes; error 3167 where the row is gone
    void remove(); // deletes the current row, which stays current but unreadable (3167)
    void close();

    struct State;
    explicit Recordset(std::unique_ptr<State> state);

private:
    [[nodiscard]] State& opened(); // error 3420 where closed
    std::unique_ptr<State> state_;
};

class Database {
public:
    // `source`: a table's or saved query's name, or a SELECT.
    [[nodiscard]] Recordset openRecordset(std::string_view source, std::vector<Narrowing> narrowing = {});
    void execute(std::string_view sql);

private:
    friend class DBEngine;
    explicit Database(std::shared_ptr<store::Database> database) : database_(std::move(database)) {}
    std::shared_ptr<store::Database> database_;
};

class DBEngine {
public:
    explicit DBEngine(store::Workspace& workspace) : workspace_(&workspace) {}
    // `connect`: "" or "MS Access;PWD=" and the password.
    [[nodiscard]] Database openDatabase(std::string_view path, std::string_view connect = {});

private:
    store::Workspace* workspace_;
};

} // namespace veldona::dao
