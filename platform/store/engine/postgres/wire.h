// One connection to the server: commands that are sent together, in one trip, and what they answered.
//
// Between two syncs the commands are one transaction of the server's, unless they begin one of their own;
// behind one that is refused the others up to the sync are not run.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/engine/postgres/serverconnection.h"
#include "platform/store/engine/postgres/serverfailure.h"

struct pg_result;

namespace veldona::store {

struct ClearAnswer {
    void operator()(pg_result* answer) const;
};
using ServerAnswer = std::unique_ptr<pg_result, ClearAnswer>;

// A value on its way, as text; its type is left to the server where it is Null.
struct Bound {
    bool isNull = true;
    unsigned type = 0;
    std::string text;

    bool operator==(const Bound&) const = default;
};
[[nodiscard]] Bound boundOf(const Value& value);

struct Command {
    enum class Kind { Run, Prepare, RunPrepared, Sync };
    Kind kind = Kind::Run;
    std::string sql;
    std::string name;          // of a prepared statement
    std::vector<Bound> values; // for Prepare their types alone
    // Takes the rows as they come, one an answer; true for the next one. Else they come as one answer.
    std::function<void(const pg_result*)> takeRow = {};
    bool mayFail = false; // its refusal is no failure of the others: it has no answer
};

// Asked every few milliseconds while the server works, with the time gone by; false gives the work up, which
// is then refused with the code 57014.
using Patience = std::function<bool(std::chrono::milliseconds waited)>;

class Wire {
public:
    explicit Wire(ServerConnection connection);

    // One answer a command, none where the server did not come to it. Raises ServerRefusal for the first that
    // was refused, when all are answered, or LostConnection. What `patience` or a taker of rows raises is
    // handed on.
    std::vector<ServerAnswer> run(const std::vector<Command>& commands, const Patience& patience = {});
    // Statements of ours, parted by ";".
    void script(const std::string& sql);
    // Rows into a table, by the statement COPY … FROM STDIN; `lines` in the format of text.
    void copyIn(const std::string& statement, std::string_view lines);

    // How often others have told that they wrote, since the connection was made.
    [[nodiscard]] std::int64_t notesOfOthers();
    // What they have told since the last call, each word once; more of them than there are tables are one:
    // "".
    [[nodiscard]] std::set<std::string> takeNotes();
    // False for good once LostConnection was raised.
    [[nodiscard]] bool isAlive() const;
    [[nodiscard]] int backend() const;          // the number of the server's process
    [[nodiscard]] bool isInTransaction() const; // also in one that failed

private:
    struct Reading;
    void send(const Command& command);
    [[nodiscard]] ServerAnswer next(Reading& reading);
    void await(Reading& reading);
    void cancel();
    void collectNotes();
    [[noreturn]] void lost();

    ServerConnection connection_;
    std::int64_t notes_ = 0;
    std::set<std::string> told_;
    bool isLost_ = false;
};

} // namespace veldona::store
