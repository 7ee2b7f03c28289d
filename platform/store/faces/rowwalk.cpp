#include "platform/store/faces/rowwalk.h"

#include "platform/runtime/conversion.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::dao {
namespace {

using store::ColumnType;

bool isWhole(ColumnType type) {
    return type == ColumnType::Counter || type == ColumnType::Whole || type == ColumnType::Small;
}

bool isNumber(ColumnType type) {
    return isWhole(type) || type == ColumnType::Number;
}

double asNumber(const Value& bound) {
    return bound.kind() == Value::Kind::Whole ? static_cast<double>(bound.get<std::int64_t>())
                                              : bound.get<double>();
}

} // namespace

Value comparable(const Value& value, ColumnType type) {
    // A screen without a sale asks for "" with every key: the usual miss is told without raising.
    if (isNumber(type) && value.isText() && !isNumeric(value)) return {};
    try {
        Value bound = store::bindValue(value, type);
        if (bound.isNull() || !isWhole(type)) return bound;
        // A column that took "5,4" would round; yet none of its rows is that number.
        const Value exact = store::bindValue(value, ColumnType::Number);
        return asNumber(exact) == asNumber(bound) ? bound : Value();
    } catch (const store::StoreError& error) {
        if (error.kind() != store::StoreError::Kind::TypeMismatch) throw;
        return {};
    }
}

} // namespace veldona::dao
