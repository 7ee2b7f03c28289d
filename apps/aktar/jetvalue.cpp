#include "apps/aktar/jetvalue.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

#include "apps/aktar/jettext.h"
#include "platform/runtime/datetime.h"

namespace veldona::aktar {
namespace {

// Days since day zero; before it the time of day still counts forward.
std::optional<Value> dateOf(double days) {
    constexpr double kFirst = -657434, kBehindLast = 2958466; // 1.1.100 to 31.12.9999
    if (!(days >= kFirst && days < kBehindLast)) return std::nullopt;
    const double day = std::trunc(days);
    const double seconds = std::round(std::abs(days - day) * kSecondsADay);
    return DateTime::ofSeconds(static_cast<std::int64_t>(day) * kSecondsADay +
                               static_cast<std::int64_t>(seconds));
}

std::optional<Value> numberOf(double number) {
    if (!std::isfinite(number)) return std::nullopt;
    return number;
}

std::optional<Value> textOf(std::string_view bytes) {
    std::optional<std::string> text = decodeJetText(bytes);
    if (!text) return std::nullopt;
    return std::move(*text);
}

// A long text stands in its row, in one row of another page, or in a chain of such rows.
class LongText {
public:
    LongText(MdbHandle* mdb, std::string_view place, std::uint64_t& left)
        : mdb_(mdb), place_(place), left_(left) {}

    std::optional<std::string> bytes() const {
        if (place_.empty()) return std::string();
        if (place_.size() < MDB_MEMO_OVERHEAD) return std::nullopt;
        const auto head = numberAt<std::uint32_t>(place_.data());
        const std::size_t length = head & 0x3FFFFFFF;
        std::optional<std::string> all;
        if ((head & 0x80000000) != 0)
            all = std::string(place_.substr(MDB_MEMO_OVERHEAD));
        else if ((head & 0x40000000) != 0)
            all = piece(numberAt<std::uint32_t>(place_.data() + 4));
        else
            all = chain(numberAt<std::uint32_t>(place_.data() + 4), length);
        if (!all || all->size() < length) return std::nullopt;
        return all->substr(0, length);
    }

private:
    // Only from a page that holds long texts: a broken pointer must not fetch the fields of a customer.
    std::optional<std::string> piece(std::uint32_t where) const {
        constexpr std::string_view kMark = "LVAL";
        void* page = nullptr;
        int offset = 0;
        std::size_t size = 0;
        if (mdb_find_pg_row(mdb_, static_cast<int>(where), &page, &offset, &size) != 0) return std::nullopt;
        const auto* bytes = static_cast<const char*>(page);
        const bool own = bytes[0] == MDB_PAGE_DATA && std::string_view(bytes + 4, kMark.size()) == kMark;
        if (!own || offset < 0 || static_cast<std::size_t>(offset) + size > MDB_PGSIZE) return std::nullopt;
        if (size > left_) return std::nullopt;
        left_ -= size;
        return std::string(bytes + offset, size);
    }
    std::optional<std::string> chain(std::uint32_t where, std::size_t length) const {
        std::string all;
        while (where != 0) {
            const std::optional<std::string> part = piece(where);
            if (!part || part->size() <= 4 || all.size() >= length) return std::nullopt;
            where = numberAt<std::uint32_t>(part->data());
            all.append(*part, 4);
        }
        return all;
    }

    MdbHandle* mdb_;
    std::string_view place_;
    std::uint64_t& left_;
};

} // namespace

std::size_t sizeOfFixed(int type) {
    switch (type) {
    case MDB_BYTE:
        return 1;
    case MDB_INT:
        return 2;
    case MDB_LONGINT:
    case MDB_FLOAT:
        return 4;
    case MDB_MONEY:
    case MDB_DOUBLE:
    case MDB_DATETIME:
        return 8;
    default:
        return 0;
    }
}

bool isReadable(int type) {
    return type == MDB_BOOL || type == MDB_TEXT || type == MDB_MEMO || sizeOfFixed(type) != 0;
}

std::optional<Value> valueOf(MdbHandle* mdb, int type, std::string_view bytes, std::uint64_t& longLeft) {
    const std::size_t fixed = sizeOfFixed(type);
    if (fixed != 0 && bytes.size() != fixed) return std::nullopt;
    switch (type) {
    case MDB_BYTE:
        return static_cast<int>(numberAt<std::uint8_t>(bytes.data()));
    case MDB_INT:
        return static_cast<int>(numberAt<std::int16_t>(bytes.data()));
    case MDB_LONGINT:
        return static_cast<int>(numberAt<std::int32_t>(bytes.data()));
    case MDB_MONEY:
        return static_cast<double>(numberAt<std::int64_t>(bytes.data())) / 10'000;
    case MDB_FLOAT:
        return numberOf(numberAt<float>(bytes.data()));
    case MDB_DOUBLE:
        return numberOf(numberAt<double>(bytes.data()));
    case MDB_DATETIME:
        return dateOf(numberAt<double>(bytes.data()));
    case MDB_TEXT:
        return textOf(bytes);
    case MDB_MEMO: {
        const std::optional<std::string> text = LongText(mdb, bytes, longLeft).bytes();
        return text ? textOf(*text) : std::nullopt;
    }
    default:
        return std::nullopt;
    }
}

} // namespace veldona::aktar
