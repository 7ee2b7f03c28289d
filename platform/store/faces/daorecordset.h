// A live recordset from the inside: where it stands, and the row being written.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/faces/dao.h"
#include "platform/store/faces/rowqueries.h"
#include "platform/store/faces/rowwalk.h"

namespace veldona::dao {

struct Recordset::State {
    enum class Place { Unread, OnRow, Before, Behind, Empty };
    enum class Writing { Nothing, NewRow, CurrentRow };
    // A column that was set, with the value as it is stored.
    struct Assigned {
        const store::ColumnDef* column;
        Value stored;
    };

    State(std::shared_ptr<store::Database> opened, std::unique_ptr<RowWalk> rows)
        : database(std::move(opened)), walk(std::move(rows)) {}

    // Reads where that was not done yet.
    void look();
    void requireRow(); // 3021
    void stand(bool found, Place otherwise);
    void endWriting();

    [[nodiscard]] const store::Catalog::Relation& table() const; // 3027 where it cannot be written
    [[nodiscard]] int columnNumber(std::string_view field);      // 3265
    [[nodiscard]] const store::ColumnDef& writtenColumn(std::string_view field);
    void assign(const store::ColumnDef& column, const Value& value); // 3421
    [[nodiscard]] const Assigned* findAssigned(std::string_view field) const;

    [[nodiscard]] store::ColumnNames assignedColumns() const;
    void putAssigned(store::Query& query) const;
    void insertRow();
    void updateRow();
    void removeRow();

    std::shared_ptr<store::Database> database;
    std::unique_ptr<RowWalk> walk;
    Place place = Place::Unread;
    Writing writing = Writing::Nothing;
    std::vector<Assigned> assigned; // in the order of the assignments
    store::ColumnIndex columns;
};

} // namespace veldona::dao
