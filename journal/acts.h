// What was done to the books, read back from their journal (table GUNLUK), newest first: acts with the rows
// that each of them added, changed and removed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/faces/adodb.h"

namespace veldona::journal {

// Columns with their values as they are stored, in the order of the table.
using Fields = std::vector<std::pair<std::string, Value>>;
[[nodiscard]] const Value* find(const Fields& fields, std::string_view column); // nullptr: not among them

struct Entry {
    // A note is of no row: that the journal began, that rows were moved in by the thousand.
    enum class Kind { Added, Changed, Removed, Noted };
    std::int64_t id = 0; // the order of the entries
    std::string table;
    Kind kind = Kind::Added;
    std::int64_t key = 0; // the row's ID
    Fields before, after; // of a changed row: its ID and what changed
    std::string note;     // what a note tells of, in the journal's own word
    // Whose row it is, also where neither changed; empty where it is nobody's.
    std::string account;
    std::optional<std::int64_t> sale;
};

struct Act {
    std::string id; // one pressed button, one chosen menu entry, one run of a tool
    DateTime moment;
    std::string program, machine, user, screen, name;
    std::vector<Entry> entries; // oldest first

    [[nodiscard]] std::int64_t first() const { return entries.front().id; }
    [[nodiscard]] std::int64_t last() const { return entries.back().id; }
};

// Goes back through the journal, from its end or from that of a day. An act names itself in its first entry,
// and again where another till's work came in between, so it is whole when no more of it has come for a
// while. One whose first entry is gone (a shop may thin its journal by age) is left out.
class ActReader {
public:
    explicit ActReader(adodb::Connection& books, std::optional<DateTime> day = {});

    // The next acts, at least `most` of them where there are as many. Raises what the store raises.
    [[nodiscard]] std::vector<Act> more(std::size_t most);
    [[nodiscard]] bool atEnd() const { return atEnd_; }

private:
    using Row = std::pair<std::string, std::int64_t>; // table and ID
    struct Owner {
        std::string account;
        std::optional<std::int64_t> sale;
    };
    void readPortion(std::vector<Act>& whole);
    void endActs(std::vector<Act>& whole, std::int64_t portionEnd);
    void nameOwners(std::vector<Act>& acts);

    adodb::Connection& books_;
    std::optional<DateTime> day_;
    std::int64_t below_ = std::numeric_limits<std::int64_t>::max();
    std::int64_t from_ = 0; // entries before this one are not looked at
    bool atEnd_ = false;
    std::map<std::string, Act> begun_; // more of these may come
    std::map<Row, Owner> owners_;      // of rows that were met
};

// The number of the newest entry; 0 where there is none.
[[nodiscard]] std::int64_t lastEntry(adodb::Connection& books);

// The act that wrote last to a row behind entry `after`, `but` left out; without its entries. Nothing where
// nobody did.
[[nodiscard]] std::optional<Act> laterActOn(adodb::Connection& books, const std::string& table,
                                            std::int64_t key, const Act& but);
// The act of an entry, without its entries.
[[nodiscard]] Act headOf(adodb::Connection& books, const std::string& id, std::int64_t entry);

// The values of a GUNLUK column, as they are stored in `table`.
[[nodiscard]] Fields fieldsOf(const std::string& table, std::string_view json);
// A row as it stands in the books; nothing where there is none.
[[nodiscard]] std::optional<Fields> rowInBooks(adodb::Connection& books, const std::string& table,
                                               std::int64_t key);
// A stored value in a statement of the dialect.
[[nodiscard]] std::string inStatement(const Value& stored);

} // namespace veldona::journal
