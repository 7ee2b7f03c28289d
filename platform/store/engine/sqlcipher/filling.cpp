#include "platform/store/engine/sqlcipher/filling.h"

#include <string_view>
#include <utility>

namespace veldona::store {

Filling::Filling(Engine& engine) : engine_(engine) {
    engine_.execute("PRAGMA locking_mode = EXCLUSIVE");
    engine_.execute("PRAGMA journal_mode = OFF");
    engine_.execute("PRAGMA synchronous = OFF");
    engine_.begin();
    takeIndexesOff();
    takeTriggersOff();
}

void Filling::finish() {
    for (const std::string& index : indexes_)
        makeAgain(index);
    for (const std::string& trigger : triggers_)
        engine_.execute(trigger);
    engine_.commit();
}

// A long index that grows row by row in no order touches another page at each row; sorted at the end, it is
// written from front to back.
void Filling::takeIndexesOff() {
    std::vector<std::string> names;
    const auto known =
        engine_.prepare("SELECT name, sql FROM sqlite_master WHERE type = 'index' AND sql <> ''");
    while (known->step()) {
        names.emplace_back(known->text(0));
        indexes_.emplace_back(known->text(1));
    }
    known->reset();
    for (const std::string& name : names)
        engine_.execute("DROP INDEX \"" + name + '"');
}

// A shop that moves in would double in size, with entries of what nobody did.
void Filling::takeTriggersOff() {
    std::vector<std::string> names;
    const auto known = engine_.prepare("SELECT name, sql FROM sqlite_master WHERE type = 'trigger'");
    while (known->step()) {
        names.emplace_back(known->text(0));
        triggers_.emplace_back(known->text(1));
    }
    known->reset();
    for (const std::string& name : names)
        engine_.execute("DROP TRIGGER \"" + name + '"');
}

// Rows may bring a key twice from where they come; the books then go on without its being unique. Looked for
// before: without a journal nothing takes back what a statement that fails has done.
void Filling::makeAgain(std::string index) {
    constexpr std::string_view unique = "UNIQUE ", on = " ON ";
    const std::size_t word = index.find(unique), table = index.find(on) + on.size(), list = index.rfind('(');
    if (word != index.npos) {
        const std::string columns = index.substr(list + 1, index.size() - list - 2);
        const auto twice = engine_.prepare("SELECT 1 FROM " + index.substr(table, list - table) + " WHERE " +
                                           columns.substr(0, columns.find(',')) + " IS NOT NULL GROUP BY " +
                                           columns + " HAVING count(*) > 1 LIMIT 1");
        if (twice->step()) index.erase(word, unique.size());
    }
    engine_.execute(index);
}

} // namespace veldona::store
