#include "platform/store/engine/postgres/wire.h"

#include <libpq-fe.h>
#include <poll.h>

#include <array>
#include <charconv>
#include <exception>
#include <optional>
#include <stdexcept>
#include <utility>

namespace veldona::store {
namespace {

using Clock = std::chrono::steady_clock;

// Of the server's own types.
constexpr Oid kWhole = 20, kText = 25, kDouble = 701;
constexpr int kAskEvery = 20; // milliseconds
constexpr std::size_t kMostTold = 200;
// A whole number that is held as a double is bound as a whole one, or an index of a whole column is not used.
constexpr double kWholeUpTo = 9007199254740992.0;

template <class Number> std::string written(Number number) {
    std::array<char, 32> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

// The server's texts hold no NUL.
std::string storable(const std::string& text) {
    if (text.find('\0') == text.npos) return text;
    std::string kept;
    for (const char letter : text)
        letter == '\0' ? kept.append("\uFFFD") : kept.append(1, letter);
    return kept;
}

std::string fieldOf(const PGresult* answer, int field) {
    const char* text = PQresultErrorField(answer, field);
    return text == nullptr ? std::string() : std::string(text);
}

// What is sent of values: pointers into them.
struct Sent {
    explicit Sent(const std::vector<Bound>& values) {
        for (const Bound& value : values) {
            types.push_back(value.type);
            texts.push_back(value.isNull ? nullptr : value.text.c_str());
        }
    }
    [[nodiscard]] int count() const { return static_cast<int>(types.size()); }
    std::vector<Oid> types;
    std::vector<const char*> texts;
};

} // namespace

Bound boundOf(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Null:
        return {};
    case Value::Kind::Boolean:
        return {false, kWhole, value.get<bool>() ? "1" : "0"};
    case Value::Kind::Whole:
        return {false, kWhole, written(value.get<std::int64_t>())};
    case Value::Kind::Double: {
        const double number = value.get<double>();
        if (number > -kWholeUpTo && number < kWholeUpTo &&
            number == static_cast<double>(static_cast<std::int64_t>(number)))
            return {false, kWhole, written(static_cast<std::int64_t>(number))};
        return {false, kDouble, written(number)};
    }
    case Value::Kind::Text:
        return {false, kText, storable(value.get<std::string>())};
    case Value::Kind::Money:
    case Value::Kind::Date:
        break;
    }
    throw std::logic_error("a value reached the engine that was not turned into its stored form");
}

void ClearAnswer::operator()(pg_result* answer) const {
    PQclear(answer);
}

// What is being read, and what has gone wrong meanwhile: all answers are read before anything is raised.
struct Wire::Reading {
    const Patience& patience;
    Clock::time_point since = Clock::now();
    bool isCancelled = false;
    std::exception_ptr stopped = nullptr;
    std::optional<ServerRefusal> refusal = std::nullopt;
};

Wire::Wire(ServerConnection connection) : connection_(std::move(connection)) {
    // The server's remarks go nowhere; by themselves they would be printed.
    PQsetNoticeProcessor(
        connection_.get(), [](void*, const char*) {}, nullptr);
}

void Wire::send(const Command& command) {
    PGconn* to = connection_.get();
    const Sent sent(command.values);
    int done = 0;
    switch (command.kind) {
    case Command::Kind::Run:
        done = PQsendQueryParams(to, command.sql.c_str(), sent.count(), sent.types.data(), sent.texts.data(),
                                 nullptr, nullptr, 0);
        break;
    case Command::Kind::Prepare:
        done = PQsendPrepare(to, command.name.c_str(), command.sql.c_str(), sent.count(), sent.types.data());
        break;
    case Command::Kind::RunPrepared:
        done = PQsendQueryPrepared(to, command.name.c_str(), sent.count(), sent.texts.data(), nullptr,
                                   nullptr, 0);
        break;
    case Command::Kind::Sync:
        done = PQpipelineSync(to);
        break;
    }
    if (done != 1) lost();
}

std::vector<ServerAnswer> Wire::run(const std::vector<Command>& commands, const Patience& patience) {
    if (PQenterPipelineMode(connection_.get()) != 1) lost();
    for (const Command& command : commands)
        send(command);
    send({Command::Kind::Sync, {}, {}, {}});
    std::vector<ServerAnswer> answers(commands.size());
    Reading reading{patience};
    for (std::size_t i = 0; i <= commands.size(); ++i) {
        if (i == commands.size() || commands[i].kind == Command::Kind::Sync) {
            static_cast<void>(next(reading)); // the sync's
            continue;
        }
        if (commands[i].takeRow) PQsetSingleRowMode(connection_.get());
        while (ServerAnswer answer = next(reading)) {
            const ExecStatusType status = PQresultStatus(answer.get());
            if (status == PGRES_FATAL_ERROR && !reading.refusal && !commands[i].mayFail) {
                reading.refusal = ServerRefusal{i, fieldOf(answer.get(), PG_DIAG_SQLSTATE),
                                                fieldOf(answer.get(), PG_DIAG_MESSAGE_PRIMARY)};
            } else if (status == PGRES_SINGLE_TUPLE && !reading.stopped) {
                try {
                    commands[i].takeRow(answer.get());
                } catch (...) {
                    reading.stopped = std::current_exception();
                    cancel();
                }
            } else if (status != PGRES_PIPELINE_ABORTED && status != PGRES_FATAL_ERROR) {
                answers[i] = std::move(answer);
            }
        }
    }
    collectNotes();
    if (PQexitPipelineMode(connection_.get()) != 1) lost();
    if (reading.stopped) std::rethrow_exception(reading.stopped);
    if (reading.refusal) throw ServerRefusal(std::move(*reading.refusal));
    return answers;
}

ServerAnswer Wire::next(Reading& reading) {
    await(reading);
    ServerAnswer answer(PQgetResult(connection_.get()));
    if (!isAlive()) lost();
    return answer;
}

void Wire::await(Reading& reading) {
    PGconn* from = connection_.get();
    while (PQisBusy(from) == 1) {
        pollfd socket{PQsocket(from), POLLIN, 0};
        const bool answered = poll(&socket, 1, kAskEvery) > 0;
        if (answered && PQconsumeInput(from) != 1) lost();
        if (answered || reading.isCancelled || !reading.patience) continue;
        const auto waited =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - reading.since);
        try {
            reading.isCancelled = !reading.patience(waited);
        } catch (...) {
            reading.stopped = std::current_exception();
            reading.isCancelled = true;
        }
        if (reading.isCancelled) cancel();
    }
}

void Wire::cancel() {
    const std::unique_ptr<PGcancel, decltype(&PQfreeCancel)> request(PQgetCancel(connection_.get()),
                                                                     &PQfreeCancel);
    std::array<char, 256> ignored{}; // what cannot be cancelled comes to its end by itself
    if (request) PQcancel(request.get(), ignored.data(), static_cast<int>(ignored.size()));
}

void Wire::script(const std::string& sql) {
    const ServerAnswer answer(PQexec(connection_.get(), sql.c_str()));
    if (!isAlive()) lost();
    const ExecStatusType status = PQresultStatus(answer.get());
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) return;
    throw ServerRefusal{0, fieldOf(answer.get(), PG_DIAG_SQLSTATE),
                        fieldOf(answer.get(), PG_DIAG_MESSAGE_PRIMARY)};
}

void Wire::copyIn(const std::string& statement, std::string_view lines) {
    PGconn* to = connection_.get();
    const ServerAnswer begun(PQexec(to, statement.c_str()));
    if (!isAlive()) lost();
    if (PQresultStatus(begun.get()) == PGRES_COPY_IN) {
        if (PQputCopyData(to, lines.data(), static_cast<int>(lines.size())) != 1 ||
            PQputCopyEnd(to, nullptr) != 1)
            lost();
    }
    std::optional<ServerRefusal> refusal;
    if (PQresultStatus(begun.get()) == PGRES_FATAL_ERROR)
        refusal = ServerRefusal{0, fieldOf(begun.get(), PG_DIAG_SQLSTATE), {}};
    while (const ServerAnswer answer{PQgetResult(to)}) {
        if (PQresultStatus(answer.get()) == PGRES_FATAL_ERROR && !refusal)
            refusal = ServerRefusal{0, fieldOf(answer.get(), PG_DIAG_SQLSTATE), {}};
    }
    if (!isAlive()) lost();
    if (refusal) throw ServerRefusal(std::move(*refusal));
}

std::int64_t Wire::notesOfOthers() {
    PQconsumeInput(connection_.get()); // a lost connection shows at the next statement
    collectNotes();
    return notes_;
}

std::set<std::string> Wire::takeNotes() {
    static_cast<void>(notesOfOthers());
    return std::exchange(told_, {});
}

void Wire::collectNotes() {
    while (PGnotify* note = PQnotifies(connection_.get())) {
        if (note->be_pid != PQbackendPID(connection_.get())) {
            ++notes_;
            if (told_.size() == kMostTold) told_ = {""};
            told_.insert(note->extra);
        }
        PQfreemem(note);
    }
}

void Wire::lost() {
    isLost_ = true;
    throw LostConnection();
}

int Wire::backend() const {
    return PQbackendPID(connection_.get());
}

bool Wire::isAlive() const {
    return !isLost_ && PQstatus(connection_.get()) == CONNECTION_OK;
}

bool Wire::isInTransaction() const {
    const PGTransactionStatusType status = PQtransactionStatus(connection_.get());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

} // namespace veldona::store
