// What the triggers of the journal call for a row: an entry is made at once, then taken out column by column.
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/store/dialect/literal.h"
#include "platform/store/engine/act.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

constexpr int kKey = 0, kHead = 1, kHeadAct = 2, kHeadSeal = 3; // the arguments of both kinds of entry
constexpr int kKind = 4, kTable = 5, kNames = 6, kFirstValue = 7;
constexpr int kWhat = 4;

enum Part {
    Id,
    ActNumber,
    Moment,
    Program,
    Machine,
    User,
    Screen,
    ActName,
    Table,
    Kind,
    Key,
    Before,
    After,
    Seal
};

// As a server writes it, too.
void appendText(std::string& json, std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef", named = "\b\f\n\r\t", letters = "bfnrt";
    json += '"';
    for (const char letter : text) {
        const auto code = static_cast<unsigned char>(letter);
        if (letter == '"' || letter == '\\')
            json.append({'\\', letter});
        else if (const std::size_t at = named.find(letter); at != named.npos)
            json.append({'\\', letters[at]});
        else if (code < ' ')
            json.append("\\u00").append({digits[code >> 4], digits[code & 15]});
        else
            json += letter;
    }
    json += '"';
}

// The shortest digits that read back as the same number, bit for bit; an amount without an exponent.
std::string digitsOf(double number) {
    constexpr double kMostPlain = 1e15;
    if (!std::isfinite(number)) return number > 0 ? "1e999" : "-1e999";
    std::array<char, 40> digits;
    const bool isPlain = std::abs(number) < kMostPlain && number == std::trunc(number);
    const auto end = isPlain ? std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                             std::chars_format::fixed)
                             : std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), end.ptr};
}

std::string tokenOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        return "null";
    case SQLITE_INTEGER:
        return std::to_string(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return digitsOf(sqlite3_value_double(value));
    default: {
        const auto* letters = reinterpret_cast<const char*>(sqlite3_value_text(value));
        if (letters == nullptr) throw std::bad_alloc();
        std::string text;
        appendText(text, {letters, static_cast<std::size_t>(sqlite3_value_bytes(value))});
        return text;
    }
    }
}

std::string textOf(sqlite3_value* value) {
    const auto* letters = reinterpret_cast<const char*>(sqlite3_value_text(value));
    if (letters == nullptr) return {};
    return {letters, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void appendMember(std::string& json, std::string_view name, std::string_view token) {
    json += json.empty() ? "{\"" : ",\"";
    json.append(name).append("\":").append(token);
}

class JournalWriter {
public:
    explicit JournalWriter(std::function<DateTime()> clock) : clock_(std::move(clock)) {}

    void keepBefore(int count, sqlite3_value** values) {
        before_.clear();
        for (int i = 0; i < count; ++i)
            before_.push_back(tokenOf(values[i]));
    }

    void makeRowEntry(int count, sqlite3_value** values) {
        begin();
        parts_[Part::Kind] = textOf(values[kKind]);
        parts_[Table] = textOf(values[kTable]);
        parts_[Key] = textOf(values[kFirstValue]); // ID is the first column of each table
        const std::string names = textOf(values[kNames]);
        std::string row, was;
        const bool isChange = *parts_[Part::Kind] == kChanged;
        std::string_view rest = std::string_view(names).substr(1, names.size() - 2);
        bool hasChanged = false;
        for (int i = kFirstValue; i < count; ++i) {
            const std::string_view name = rest.substr(0, rest.find(','));
            rest.remove_prefix(std::min(rest.size(), name.size() + 1));
            const std::string token = tokenOf(values[i]);
            const std::string* former =
                isChange ? &before_.at(static_cast<std::size_t>(i - kFirstValue)) : nullptr;
            const bool isOther = former != nullptr && *former != token;
            hasChanged = hasChanged || isOther;
            if (isChange && !isOther && i > kFirstValue) continue;
            appendMember(row, name, token);
            if (isChange) appendMember(was, name, *former);
        }
        if (isChange && !hasChanged) return; // nothing to tell
        if (isChange) parts_[Before] = was + '}';
        parts_[*parts_[Part::Kind] == kRemoved ? Before : After] = row + '}';
        finish(values);
    }

    void makeNote(sqlite3_value** values) {
        begin();
        parts_[Part::Kind] = kNoted;
        parts_[After] = textOf(values[kWhat]);
        finish(values);
    }

    enum class State { Empty, Unchanged, Made };
    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] const std::optional<std::string>& part(int index) const {
        return parts_.at(static_cast<std::size_t>(index));
    }
    void clear() { state_ = State::Empty; }

private:
    void begin() {
        parts_.fill(std::nullopt);
        state_ = State::Unchanged;
    }

    // Who and where stand with the first entry of an act alone.
    void finish(sqlite3_value** values) {
        const Act& act = runningAct();
        parts_[Id] = std::to_string(sqlite3_value_int64(values[kHead]) + 1);
        parts_[ActNumber] = act.number;
        parts_[Moment] = storedDate(clock_());
        if (textOf(values[kHeadAct]) != act.number) {
            const Actor& actor = thisActor();
            parts_[Program] = actor.program;
            parts_[Machine] = actor.machine;
            parts_[User] = actor.user;
            parts_[Screen] = act.screen;
            parts_[ActName] = act.name;
        }
        parts_[Seal] = keyFor(textOf(values[kKey]))
                           .seal(textOf(values[kHeadSeal]), std::span(parts_).first(kSealedColumns.size()));
        state_ = State::Made;
    }

    const JournalKey& keyFor(const std::string& kept) {
        if (!key_ || kept != kept_) {
            key_.emplace(kept);
            kept_ = kept;
        }
        return *key_;
    }

    std::function<DateTime()> clock_;
    std::vector<std::string> before_;
    std::array<std::optional<std::string>, kSealedColumns.size() + 1> parts_;
    State state_ = State::Empty;
    std::string kept_;
    std::optional<JournalKey> key_;
};

using Shared = std::shared_ptr<JournalWriter>;

JournalWriter& writerOf(sqlite3_context* context) {
    return **static_cast<Shared*>(sqlite3_user_data(context));
}

// Without its entry a row may not stay, not even in a transaction that goes on behind a failed statement: the
// engine undoes the whole of it behind this code.
template <class Step> void guarded(sqlite3_context* context, Step&& step) {
    Answer answer(context);
    try {
        step(writerOf(context), answer);
    } catch (const RuntimeError& error) {
        answer.fail(error.description());
        sqlite3_result_error_code(context, SQLITE_NOMEM);
    } catch (const std::bad_alloc&) {
        answer.fail("Bellek yetmedi.");
        sqlite3_result_error_code(context, SQLITE_NOMEM);
    }
}

void entryBefore(sqlite3_context* context, int count, sqlite3_value** values) {
    guarded(context, [&](JournalWriter& writer, Answer&) { writer.keepBefore(count, values); });
}

void entryOfRow(sqlite3_context* context, int count, sqlite3_value** values) {
    guarded(context, [&](JournalWriter& writer, Answer&) { writer.makeRowEntry(count, values); });
}

void note(sqlite3_context* context, int, sqlite3_value** values) {
    guarded(context, [&](JournalWriter& writer, Answer&) { writer.makeNote(values); });
}

// The last part leaves nothing that a second entry could be made of.
void entryPart(sqlite3_context* context, int, sqlite3_value** values) {
    guarded(context, [&](JournalWriter& writer, Answer& answer) {
        const int part = sqlite3_value_int(values[0]);
        if (writer.state() == JournalWriter::State::Empty)
            return answer.fail("Günlüğe yazılacak bir şey yok.");
        if (writer.state() == JournalWriter::State::Unchanged) {
            writer.clear();
            return answer.null();
        }
        if (const auto& text = writer.part(part))
            answer.text(*text);
        else
            answer.null();
        if (part == Seal) writer.clear();
    });
}

} // namespace

void registerJournal(sqlite3* connection, const std::function<DateTime()>& clock) {
    constexpr Registered kFunctions[] = {{"vd_entry_before", -1, entryBefore},
                                         {"vd_entry", -1, entryOfRow},
                                         {"vd_note", 5, note},
                                         {"vd_entry_part", 1, entryPart}};
    const auto writer = std::make_shared<JournalWriter>(clock);
    for (const Registered& each : kFunctions) {
        const auto forget = [](void* held) { delete static_cast<Shared*>(held); };
        const int result =
            sqlite3_create_function_v2(connection, each.name, each.arguments, SQLITE_UTF8, new Shared(writer),
                                       each.function, nullptr, nullptr, forget);
        if (result != SQLITE_OK) throw std::bad_alloc();
    }
}

} // namespace veldona::store::sql
