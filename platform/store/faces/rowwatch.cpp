#include "platform/store/faces/rowwatch.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "platform/store/engine/journalseal.h"
#include "platform/store/faces/adodberror.h"
#include "platform/store/faces/database.h"

namespace veldona::adodb {
namespace {

constexpr std::size_t kMostEntries = 20'000; // behind more of them all is read anew, in less time

// The entry's columns as they are asked for.
enum { EntryId, EntryTable, EntryKind, EntryKey, EntryBefore, EntryAfter };

// Of the journal's "{"ID":5,"MUSTNO":"17"}"; nothing where the column does not stand there. A quote inside of
// a text has a mark before it, so a name between quotes behind a comma is one.
std::optional<Value> valueIn(std::string_view row, const std::string& column) {
    const std::string name = '"' + column + "\":";
    std::size_t place = row.find(name);
    while (place != row.npos && (place == 0 || (row[place - 1] != ',' && row[place - 1] != '{')))
        place = row.find(name, place + 1);
    if (place == row.npos) return std::nullopt;
    row.remove_prefix(place + name.size());
    if (row.starts_with("null")) return Value();
    if (!row.starts_with('"')) {
        std::int64_t whole = 0;
        std::from_chars(row.data(), row.data() + row.size(), whole);
        return Value(whole);
    }
    std::string text;
    for (std::size_t i = 1; i < row.size() && row[i] != '"'; ++i) {
        if (row[i] != '\\') {
            text += row[i];
        } else if (row.substr(i + 1).starts_with('u')) {
            int code = 0;
            std::from_chars(row.data() + i + 2, row.data() + std::min(i + 6, row.size()), code, 16);
            text += static_cast<char>(code); // the journal writes control letters so, and no others
            i += 5;
        } else {
            text += row[++i];
        }
    }
    return Value(text);
}

} // namespace

OneMoment::OneMoment(const Connection& books) {
    asStatement([&] {
        if (books.database().inTransaction()) return;
        books.database().beginReading();
        reading_ = books.database_;
    });
}

OneMoment::~OneMoment() {
    if (reading_) reading_->endReading();
}

// The file hears of it at once: the next question may come by another face.
NoWait::~NoWait() {
    books_.commandTimeout = before_;
    if (books_.isOpen()) static_cast<void>(books_.database());
}

std::optional<RowWatch::Values> RowWatch::take(const Connection& books) {
    return asStatement([&]() -> std::optional<Values> {
        store::Database& database = books.database();
        const bool isKnown = database_.lock() == books.database_;
        database_.reset();
        if (database.inTransaction() && !database.isReading()) return std::nullopt;
        Values values(columns_.size());
        std::vector<Row> rows;
        const bool isTold = readEntries(database, values, rows) && isKnown;
        if (isTold) readRows(database, values, rows);
        database_ = books.database_;
        return isTold ? std::optional(std::move(values)) : std::nullopt;
    });
}

// False where they don't go on from the last one, or tell too little.
bool RowWatch::readEntries(store::Database& database, Values& values, std::vector<Row>& rows) {
    std::int64_t newest = 0;
    database.walk(database.query("SELECT MAX(ID) FROM GUNLUK"),
                  [&](const store::Statement& row) { newest = row.whole(0); });
    const std::int64_t before = std::exchange(last_, newest);
    if (newest == before) return true;
    if (newest < before || newest - before > static_cast<std::int64_t>(kMostEntries)) return false;
    bool isWhole = before == 0, isTold = true;
    database.walk(database.query("SELECT ID,TABLO,TUR,ANAHTAR,ESKI,YENI FROM GUNLUK WHERE ID>=" +
                                 std::to_string(before) + " ORDER BY ID"),
                  [&](const store::Statement& entry) {
                      if (entry.whole(EntryId) == before)
                          isWhole = true;
                      else if (entry.text(EntryKind) == store::kNoted)
                          isTold = false;
                      else
                          takeEntry(entry, values, rows);
                  });
    return isWhole && isTold;
}

void RowWatch::takeEntry(const store::Statement& entry, Values& values, std::vector<Row>& rows) const {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (entry.text(EntryTable) != columns_[i].table) continue;
        if (columns_[i].column == "ID") {
            values[i].emplace_back(entry.whole(EntryKey));
            continue;
        }
        bool isNamed = false;
        for (const int side : {EntryBefore, EntryAfter})
            if (auto value = valueIn(entry.text(side), columns_[i].column)) {
                values[i].push_back(*std::move(value));
                isNamed = true;
            }
        if (!isNamed) rows.push_back({i, entry.whole(EntryKey)});
    }
}

// A change names what it changed alone. A row that is gone by now has named all at its end.
void RowWatch::readRows(store::Database& database, Values& values, const std::vector<Row>& rows) const {
    for (const Row& row : rows) {
        const WatchedColumn& watched = columns_[row.column];
        database.walk(database.query("SELECT " + watched.column + " FROM " + watched.table +
                                     " WHERE ID=" + std::to_string(row.id)),
                      [&](const store::Statement& found) {
                          switch (found.storage(0)) {
                          case store::Statement::Storage::Null:
                              return values[row.column].push_back({});
                          case store::Statement::Storage::Text:
                              return values[row.column].push_back(std::string(found.text(0)));
                          default:
                              return values[row.column].push_back(found.whole(0));
                          }
                      });
    }
}

} // namespace veldona::adodb
