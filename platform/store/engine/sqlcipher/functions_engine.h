// How a function of the dialect is written for the engine: it reads its arguments, answers, and fails in one
// manner.
#pragma once

#include <sqlcipher/sqlite3.h>

#include <functional>
#include <new>
#include <string>
#include <string_view>

#include "platform/runtime/datetime.h"
#include "platform/runtime/error.h"
#include "platform/runtime/value.h"

namespace veldona::store::sql {

// The arguments of one call.
class Arguments {
public:
    Arguments(sqlite3_value** values, int count) : values_(values), count_(count) {}

    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] bool isNull(int index) const;
    [[nodiscard]] bool isText(int index) const;
    // Belongs to the engine until the function returns.
    [[nodiscard]] std::string_view text(int index) const;
    [[nodiscard]] double number(int index) const;
    // Rounded half to even; error 6 outside 32 bits.
    [[nodiscard]] int whole(int index) const;
    // Null, whole, double or text.
    [[nodiscard]] Value value(int index) const;
    // Of a stored date; error 13 for a text that is none.
    [[nodiscard]] DateTime date(int index) const;
    [[nodiscard]] bool anyNull() const;

private:
    sqlite3_value** values_;
    int count_;
};

class Answer {
public:
    explicit Answer(sqlite3_context* context) : context_(context) {}

    void null();
    void text(std::string_view text);
    void number(double number); // error 6 where it is none
    void whole(std::int64_t whole);
    void fail(std::string_view sentence);
    [[nodiscard]] sqlite3_context* context() const { return context_; }

private:
    sqlite3_context* context_;
};

using Body = void (*)(const Arguments&, Answer&);

// What a call of the engine runs: a Null argument gives Null, and whatever is raised fails the statement.
template <Body body, bool nullGivesNull = true>
void run(sqlite3_context* context, int count, sqlite3_value** values) {
    Answer answer(context);
    const Arguments arguments(values, count);
    try {
        if (nullGivesNull && arguments.anyNull()) return answer.null();
        body(arguments, answer);
    } catch (const RuntimeError& error) {
        answer.fail(error.description());
    } catch (const std::bad_alloc&) {
        answer.fail("Bellek yetmedi.");
    }
}

using EngineFunction = void (*)(sqlite3_context*, int, sqlite3_value**);

struct Registered {
    const char* name;
    int arguments; // -1: any count
    EngineFunction function;
};

void registerAll(sqlite3* connection, const Registered* first, std::size_t count);

void registerTextFunctions(sqlite3* connection);
void registerNumberFunctions(sqlite3* connection);
void registerDateFunctions(sqlite3* connection);
void registerLike(sqlite3* connection);
void registerCollation(sqlite3* connection);
void registerJournal(sqlite3* connection, const std::function<DateTime()>& clock);

} // namespace veldona::store::sql
