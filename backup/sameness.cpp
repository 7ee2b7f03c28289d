#include "backup/sameness.h"

#include <cmath>
#include <string>

#include "backup/refusal.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/tablerows.h"

namespace veldona::backup {
namespace {

using store::Inquiry;
using store::Statement;
using store::TableRows;
using Storage = Statement::Storage;
using Relation = store::Catalog::Relation;

// One engine may keep a number that is whole as a double, the other as a whole one.
bool isSameValue(const Statement& one, const Statement& other, int column) {
    const Storage storage = one.storage(column);
    const auto isNumber = [](Storage kept) { return kept == Storage::Whole || kept == Storage::Number; };
    if (isNumber(storage) && isNumber(other.storage(column)))
        return one.number(column) == other.number(column);
    if (storage != other.storage(column)) return false;
    return storage == Storage::Null || one.text(column) == other.text(column);
}

std::int64_t requireSameRows(const Inquiry& one, const Inquiry& other, const Relation& table) {
    TableRows left(one, table), right(other, table);
    for (std::int64_t count = 0;; ++count) {
        const bool isLeft = left.next();
        if (isLeft != right.next())
            throw Refusal(table.name + " tablosunun satır sayısı iki yerde aynı değil.");
        if (!isLeft) return count;
        for (int column = 0; column < static_cast<int>(table.columns.size()); ++column)
            if (!isSameValue(left.row(), right.row(), column))
                throw Refusal(table.name + " tablosunun " + std::to_string(left.id()) +
                              " numaralı satırı iki yerde aynı değil (" +
                              table.columns[static_cast<std::size_t>(column)].name + ").");
    }
}

std::int64_t requireSameSums(const Inquiry& one, const Inquiry& other, const std::string& sql) {
    const auto left = one.prepare(sql), right = other.prepare(sql);
    for (std::int64_t accounts = 0;; ++accounts) {
        const bool isLeft = left->step();
        if (isLeft != right->step()) throw Refusal("Hesapların sayısı iki yerde aynı değil.");
        if (!isLeft) return accounts;
        // Where a number stands in capitals and in small letters, which of the two names the group is the
        // engine's choice. Fractions are added up in another order: far less than a stored unit.
        if (!store::Alphabet::turkish().isSame(left->text(0), right->text(0)) ||
            std::abs(left->number(1) - right->number(1)) >= 0.5)
            throw Refusal("Hesap " + std::string(left->text(0)) + ": bakiyesi iki yerde aynı değil.");
    }
}

std::string sumsOf(const std::string& table, const std::string& amount) {
    return "SELECT MUSTNO, SUM(" + amount + ") FROM " + table + " GROUP BY MUSTNO ORDER BY MUSTNO";
}

} // namespace

Sameness requireSame(store::Engine& one, store::Engine& other) {
    const Inquiry left(one), right(other);
    Sameness same;
    for (const Relation& table : left.catalog().relations())
        if (!table.isQuery) same.rows += requireSameRows(left, right, table);
    same.accounts = requireSameSums(left, right, sumsOf("URUNSAT", "ODMIKTAR"));
    static_cast<void>(requireSameSums(left, right, sumsOf("TAKSITODENEN", "ODMIKTAR")));
    static_cast<void>(requireSameSums(left, right, sumsOf("ISLEMNOTABLO", "TOPBORC")));
    return same;
}

} // namespace veldona::backup
