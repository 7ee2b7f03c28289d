#include "platform/store/engine/inquiry.h"

#include "platform/store/dialect/rowstatements.h"
#include "platform/store/dialect/translate.h"

namespace veldona::store {

std::unique_ptr<Statement> Inquiry::prepare(std::string_view sql) const {
    const Reading reading = readStatement(sql);
    const Plan plan = translate(reading, catalog_, engine_.words());
    auto statement = engine_.prepare(plan.sql);
    for (std::size_t i = 0; i < plan.targets.size(); ++i)
        statement->bind(static_cast<int>(i) + 1, bindLiteral(reading.literals[i], plan.targets[i]));
    return statement;
}

std::unique_ptr<Statement> Inquiry::insertion(const std::string& table,
                                              const std::vector<std::string>& columns) const {
    const Plan plan = translate(sql::insertRow(table, columns), columns.size(), catalog_, engine_.words());
    return engine_.prepare(plan.sql);
}

std::unique_ptr<Statement> Inquiry::correction(const std::string& table,
                                               const std::vector<std::string>& columns) const {
    const Plan plan =
        translate(sql::updateRow(table, columns), columns.size() + 1, catalog_, engine_.words());
    return engine_.prepare(plan.sql);
}

} // namespace veldona::store
