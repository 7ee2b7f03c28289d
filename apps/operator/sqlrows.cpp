#include "apps/operator/sqlrows.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "platform/controls/names.h"
#include "platform/store/faces/adodb.h"

namespace veldona::console {

namespace {

constexpr double kWholeUpTo = 9007199254740992.0; // every whole number up to here is a double of its own

// Fifteen digits are what the platform shows of a double; the last bits of a binary fraction are no news. A
// whole number has no such bits.
std::string plainNumber(double number) {
    std::array<char, 400> text{};
    char* const begin = text.data();
    char* const room = begin + text.size();
    char* end = std::to_chars(begin, room, number, std::chars_format::general, 15).ptr;
    double rounded = number;
    if (std::trunc(number) != number || std::abs(number) > kWholeUpTo) std::from_chars(begin, end, rounded);
    end = std::to_chars(begin, room, rounded == 0 ? 0.0 : rounded, std::chars_format::fixed).ptr;
    return std::string(begin, end);
}

std::string plainMoney(Currency money) {
    const bool negative = money.tenThousandths() < 0;
    const auto count = static_cast<std::uint64_t>(money.tenThousandths());
    const std::uint64_t size = negative ? 0 - count : count;
    std::string text = (negative ? "-" : "") + std::to_string(size / 10000);
    if (size % 10000 == 0) return text;
    const std::string decimals = std::to_string(10000 + size % 10000).substr(1);
    return text + "." + decimals.substr(0, decimals.find_last_not_of('0') + 1);
}

std::string sortableDate(DateTime date) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", date.year(), date.month(),
                  date.day(), date.hour(), date.minute(), date.second());
    return text.data();
}

} // namespace

std::string cellText(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Null:
        return "NULL";
    case Value::Kind::Boolean:
        return value.get<bool>() ? "-1" : "0";
    case Value::Kind::Whole:
        return std::to_string(value.get<std::int64_t>());
    case Value::Kind::Double:
        return plainNumber(value.get<double>());
    case Value::Kind::Money:
        return plainMoney(value.get<Currency>());
    case Value::Kind::Date:
        return sortableDate(value.get<DateTime>());
    case Value::Kind::Text:
        return value.get<std::string>();
    }
    std::abort();
}

std::vector<std::string> allRows(const adodb::Recordset& rows) {
    std::vector<std::string> texts;
    for (int row = 0; row < rows.recordCount(); ++row) {
        std::string text;
        for (int column = 0; column < rows.fieldCount(); ++column) {
            if (column > 0) text += '|';
            text += cellText(rows.at(row, column));
        }
        texts.push_back(std::move(text));
    }
    return texts;
}

bool isSelect(std::string_view sql) {
    const auto begin = sql.find_first_not_of(" \t\r\n(");
    return begin != sql.npos && sameName(sql.substr(begin, 6), "select");
}

} // namespace veldona::console
