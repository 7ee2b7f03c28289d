// Statements of the dialect on an engine, row by row: for whoever holds one itself, a tool or a backup.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/catalog.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

class Inquiry {
public:
    explicit Inquiry(Engine& engine) : engine_(engine), catalog_(engine.readCatalog()) {}

    [[nodiscard]] Engine& engine() const { return engine_; }
    [[nodiscard]] const Catalog& catalog() const { return catalog_; }

    // Ready to step, with the values of its text; it can be run once.
    [[nodiscard]] std::unique_ptr<Statement> prepare(std::string_view sql) const;
    // To be bound and run as often as there are rows: stored values in the order of `columns`.
    [[nodiscard]] std::unique_ptr<Statement> insertion(const std::string& table,
                                                       const std::vector<std::string>& columns) const;
    // The same; the row's key is bound last.
    [[nodiscard]] std::unique_ptr<Statement> correction(const std::string& table,
                                                        const std::vector<std::string>& columns) const;

private:
    Engine& engine_;
    Catalog catalog_;
};

} // namespace veldona::store
