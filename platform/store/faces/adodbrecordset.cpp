#include <algorithm>

#include "platform/runtime/columntype.h"
#include "platform/store/faces/adodberror.h"
#include "platform/store/faces/answer.h"
#include "platform/store/faces/criteria.h"

namespace veldona::adodb {

using store::ColumnType;

struct Recordset::State {
    State(std::string_view sql, store::Answer asked) : source(sql), answer(std::move(asked)) {}

    std::string source;
    mutable store::Answer answer; // read at the latest when a row is looked at
    int position = 0;             // -1 before the first row, the row count behind the last one
    Bookmark snapshot =
        0; // counts the answers taken, so that a place in an older one is known for what it is
    store::ColumnIndex columns;

    [[nodiscard]] const std::vector<store::ResultColumn>& fields() const { return answer.plan().columns; }
    [[nodiscard]] const store::RowSet& rows() const {
        if (!answer.isAsked()) asStatement([&] { answer.renew(); });
        return answer.rows();
    }
    [[nodiscard]] bool isOnRow() const { return position >= 0 && position < rows().rowCount(); }

    void ask() {
        if (answer.renew()) ++snapshot;
        position = 0;
    }
    void requireRow() const {
        if (!isOnRow()) raise(ErrorNumber::NoCurrentRecord);
    }
};

namespace {

std::int32_t platformType(ColumnType type) {
    switch (type) {
    case ColumnType::Counter:
    case ColumnType::Whole:
        return columntype::kWhole;
    case ColumnType::Small:
        return columntype::kSmall;
    case ColumnType::Number:
        return columntype::kNumber;
    case ColumnType::Text:
        return columntype::kText;
    case ColumnType::Memo:
        return columntype::kMemo;
    case ColumnType::Date:
        return columntype::kDate;
    case ColumnType::Boolean:
        return columntype::kBoolean;
    }
    return 0;
}

ColumnType typeOfValue(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Whole:
        return ColumnType::Whole;
    case Value::Kind::Double:
        return ColumnType::Number;
    default:
        return ColumnType::Text;
    }
}

} // namespace

Recordset::Recordset() = default;
Recordset::~Recordset() = default;

void Recordset::open(std::string_view sql, Connection& connection) {
    if (isOpen()) throw RuntimeError(kObjectOpen, "Kayıt seti zaten açık.");
    asStatement([&] {
        store::Query query = connection.database().query(sql);
        if (!query.isSelect()) {
            connection.database().write(query);
            return;
        }
        auto state = std::make_unique<State>(sql, store::Answer(connection.database_, std::move(query)));
        if (!state->answer.plan().asksForTypes) state->ask();
        state_ = std::move(state);
    });
}

void Recordset::requery() {
    State& state = opened();
    asStatement([&] { state.ask(); });
}

void Recordset::close() {
    state_.reset();
}

bool Recordset::isOpen() const {
    return state_ != nullptr;
}

const std::string& Recordset::source() const {
    return opened().source;
}

Recordset::State& Recordset::opened() const {
    if (!isOpen()) throw RuntimeError(kObjectClosed, "Kayıt seti açık değil.");
    return *state_;
}

bool Recordset::eof() const {
    const State& state = opened();
    return state.position >= state.rows().rowCount();
}

bool Recordset::bof() const {
    const State& state = opened();
    return state.position < 0 || state.rows().rowCount() == 0;
}

void Recordset::moveFirst() {
    opened().position = 0;
}

void Recordset::moveLast() {
    State& state = opened();
    state.position = std::max(0, state.rows().rowCount() - 1);
}

void Recordset::moveNext() {
    if (eof()) raise(ErrorNumber::NoCurrentRecord);
    ++state_->position;
}

void Recordset::movePrevious() {
    if (bof()) raise(ErrorNumber::NoCurrentRecord);
    --state_->position;
}

void Recordset::find(std::string_view criteria) {
    State& state = opened();
    asStatement([&] {
        const store::Criteria sought(criteria, state.fields());
        state.position = sought.findRow(state.rows(), std::max(0, state.position));
    });
}

Recordset::Bookmark Recordset::bookmark() const {
    const State& state = opened();
    state.requireRow();
    return (state.snapshot << 32) | state.position;
}

void Recordset::setBookmark(Bookmark place) {
    State& state = opened();
    const auto row = static_cast<int>(place & 0x7fffffff);
    if (place >> 32 != state.snapshot || row >= state.rows().rowCount()) raise(ErrorNumber::NoCurrentRecord);
    state.position = row;
}

void Recordset::setAbsolutePosition(int position) {
    State& state = opened();
    if (position < 1 || position > state.rows().rowCount()) raise(ErrorNumber::NoCurrentRecord);
    state.position = position - 1;
}

int Recordset::recordCount() const {
    return opened().rows().rowCount();
}

int Recordset::absolutePosition() const {
    const State& state = opened();
    return state.isOnRow() ? state.position + 1 : 0;
}

int Recordset::fieldCount() const {
    return static_cast<int>(opened().fields().size());
}

const std::string& Recordset::fieldName(int index) const {
    return field(index).name;
}

int Recordset::fieldType(int index) const {
    if (const auto type = field(index).type) return platformType(*type);
    const store::RowSet& rows = state_->rows();
    for (int row = 0; row < rows.rowCount(); ++row)
        if (const Value& value = rows.at(row, index); !value.isNull())
            return platformType(typeOfValue(value));
    return platformType(ColumnType::Text);
}

const store::ResultColumn& Recordset::field(int index) const {
    const auto& fields = opened().fields();
    if (index < 0 || index >= static_cast<int>(fields.size())) raise(ErrorNumber::NoSuchItem);
    return fields[static_cast<std::size_t>(index)];
}

const Value& Recordset::value(std::string_view name) const {
    State& state = opened();
    const int column = state.columns.find(state.fields(), name);
    if (column < 0) raise(ErrorNumber::NoSuchItem);
    state.requireRow();
    return state.rows().at(state.position, column);
}

const Value& Recordset::value(int index) const {
    static_cast<void>(field(index));
    state_->requireRow();
    return state_->rows().at(state_->position, index);
}

const Value& Recordset::at(int row, int column) const {
    static_cast<void>(field(column));
    if (row < 0 || row >= state_->rows().rowCount()) raise(ErrorNumber::NoCurrentRecord);
    return state_->rows().at(row, column);
}

} // namespace veldona::adodb
