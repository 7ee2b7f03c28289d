// What the writer must know of the file: the columns of each table and saved query, names compared case-free.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/definition.h"

namespace veldona::store {

class Catalog {
public:
    struct Relation {
        std::string name;
        std::vector<ColumnDef> columns;
        bool isQuery = false;
        std::vector<std::string> baseTables; // of a query: the tables below it; of a table: itself
    };
    void add(Relation relation);
    [[nodiscard]] const std::vector<Relation>& relations() const { return relations_; }
    [[nodiscard]] const Relation* find(std::string_view name) const; // nullptr where there is none

private:
    std::vector<Relation> relations_;
};

} // namespace veldona::store
