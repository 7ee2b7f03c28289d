#include "platform/store/faces/daorecordset.h"

#include <algorithm>

#include "platform/store/dialect/names.h"
#include "platform/store/faces/daoerror.h"

namespace veldona::dao {

using State = Recordset::State;
using Place = State::Place;
using Writing = State::Writing;

void State::look() {
    if (place == Place::Unread) stand(walk->first(), Place::Empty);
}

void State::requireRow() {
    look();
    if (place != Place::OnRow) raise(ErrorNumber::NoCurrentRecord);
}

void State::stand(bool found, Place otherwise) {
    place = found ? Place::OnRow : otherwise;
}

void State::endWriting() {
    writing = Writing::Nothing;
    assigned.clear();
}

const store::Catalog::Relation& State::table() const {
    const store::Catalog::Relation* written = walk->table();
    if (written == nullptr) throw RuntimeError(kNotUpdatable, "Bu sorgunun satırları değiştirilemez.");
    return *written;
}

int State::columnNumber(std::string_view field) {
    const int column = columns.find(walk->columns(), field);
    if (column < 0) raise(ErrorNumber::NoSuchItem);
    return column;
}

const store::ColumnDef& State::writtenColumn(std::string_view field) {
    static_cast<void>(columnNumber(field));
    const auto& defined = table().columns;
    const auto found = std::find_if(defined.begin(), defined.end(), [&](const store::ColumnDef& column) {
        return store::sameName(column.name, field);
    });
    if (found == defined.end() || found->type == store::ColumnType::Counter)
        throw RuntimeError(kFieldNotWritable, "Bu alana yazılamaz: " + std::string(field) + ".");
    return *found;
}

void State::assign(const store::ColumnDef& column, const Value& value) {
    Value stored;
    try {
        stored = store::bindValue(value, column.type);
    } catch (const store::StoreError& error) {
        if (error.kind() != store::StoreError::Kind::TypeMismatch) throw;
        throw RuntimeError(static_cast<std::int32_t>(ErrorNumber::DataTypeConversion), error.description());
    }
    const auto held = std::find_if(assigned.begin(), assigned.end(),
                                   [&](const Assigned& one) { return one.column == &column; });
    if (held == assigned.end())
        assigned.push_back({&column, std::move(stored)});
    else
        held->stored = std::move(stored);
}

const State::Assigned* State::findAssigned(std::string_view field) const {
    const auto held = std::find_if(assigned.begin(), assigned.end(), [&](const Assigned& one) {
        return store::sameName(one.column->name, field);
    });
    return held == assigned.end() ? nullptr : &*held;
}

store::ColumnNames State::assignedColumns() const {
    store::ColumnNames names;
    names.reserve(assigned.size());
    for (const Assigned& one : assigned)
        names.emplace_back(one.column->name);
    return names;
}

// The first values of a statement, in the order of the assignments.
void State::putAssigned(store::Query& query) const {
    for (std::size_t i = 0; i < assigned.size(); ++i)
        query.values[i] = assigned[i].stored;
}

void State::insertRow() {
    store::Query query = store::insertion(*database, table().name, assignedColumns());
    putAssigned(query);
    database->write(query);
}

void State::updateRow() {
    if (assigned.empty()) return;
    store::Query query = store::correction(*database, table().name, assignedColumns());
    putAssigned(query);
    query.values.back() = walk->id();
    if (database->write(query) == 0) raise(ErrorNumber::RecordDeleted);
    for (const Assigned& one : assigned)
        walk->noteChange(columnNumber(one.column->name), store::shownValue(one.stored, one.column->type));
}

void State::removeRow() {
    store::Query query = store::removal(*database, table().name);
    query.values.back() = walk->id();
    const bool wasThere = database->write(query) > 0;
    walk->noteRemoval();
    if (!wasThere) raise(ErrorNumber::RecordDeleted);
}

Recordset::Recordset(std::unique_ptr<State> state) : state_(std::move(state)) {}
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::~Recordset() = default;

Recordset::State& Recordset::opened() {
    if (state_ == nullptr) throw RuntimeError(kClosed, "Kayıt seti açık değil.");
    return *state_;
}

bool Recordset::eof() {
    State& state = opened();
    withNumbers([&] { state.look(); });
    return state.place == Place::Behind || state.place == Place::Empty;
}

bool Recordset::bof() {
    State& state = opened();
    withNumbers([&] { state.look(); });
    return state.place == Place::Before || state.place == Place::Empty;
}

void Recordset::moveFirst() {
    State& state = opened();
    state.endWriting();
    withNumbers([&] { state.stand(state.walk->first(), Place::Empty); });
    state.requireRow();
}

void Recordset::moveLast() {
    State& state = opened();
    state.endWriting();
    withNumbers([&] { state.stand(state.walk->last(), Place::Empty); });
    state.requireRow();
}

void Recordset::moveNext() {
    State& state = opened();
    state.endWriting();
    withNumbers([&] {
        state.look();
        if (state.place == Place::OnRow)
            state.stand(state.walk->next(), Place::Behind);
        else if (state.place == Place::Before)
            state.stand(state.walk->first(), Place::Empty);
        else
            raise(ErrorNumber::NoCurrentRecord);
    });
}

void Recordset::movePrevious() {
    State& state = opened();
    state.endWriting();
    withNumbers([&] {
        state.look();
        if (state.place == Place::OnRow)
            state.stand(state.walk->previous(), Place::Before);
        else if (state.place == Place::Behind)
            state.stand(state.walk->last(), Place::Empty);
        else
            raise(ErrorNumber::NoCurrentRecord);
    });
}

Value Recordset::value(std::string_view field) {
    State& state = opened();
    return withNumbers([&]() -> Value {
        const int column = state.columnNumber(field);
        if (const State::Assigned* one = state.findAssigned(field))
            return store::shownValue(one->stored, one->column->type);
        if (state.writing == Writing::NewRow) return {};
        state.requireRow();
        const Value* cell = state.walk->cell(column);
        if (cell == nullptr) raise(ErrorNumber::RecordDeleted);
        return *cell;
    });
}

void Recordset::set(std::string_view field, const Value& value) {
    State& state = opened();
    if (state.writing == Writing::Nothing)
        throw RuntimeError(kNoEditOpen, "Yeni kayıt ya da düzeltme başlatılmadan alana yazılamaz.");
    withNumbers([&] { state.assign(state.writtenColumn(field), value); });
}

void Recordset::addNew() {
    State& state = opened();
    static_cast<void>(state.table());
    state.endWriting();
    state.writing = Writing::NewRow;
}

void Recordset::edit() {
    State& state = opened();
    state.endWriting();
    withNumbers([&] {
        state.requireRow();
        static_cast<void>(state.table());
        if (state.walk->cell(0) == nullptr) raise(ErrorNumber::RecordDeleted);
    });
    state.writing = Writing::CurrentRow;
}

void Recordset::update() {
    State& state = opened();
    if (state.writing == Writing::Nothing)
        throw RuntimeError(kNoEditOpen, "Yeni kayıt ya da düzeltme başlatılmadan kayıt yapılamaz.");
    withNumbers([&] { state.writing == Writing::NewRow ? state.insertRow() : state.updateRow(); });
    state.endWriting();
}

void Recordset::remove() {
    State& state = opened();
    state.endWriting();
    withNumbers([&] {
        state.requireRow();
        state.removeRow();
    });
}

void Recordset::close() {
    state_.reset();
}

} // namespace veldona::dao
