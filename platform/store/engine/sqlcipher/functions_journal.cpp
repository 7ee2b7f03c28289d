// What the triggers of the journal call for a row: an entry is made at once, then taken out column by column.
#include <array>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

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
    std::size_t plain = 0; // where the letters begin that are written as they are
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char letter = text[i];
        const auto code = static_cast<unsigned char>(letter);
        if (code >= ' ' && letter != '"' && letter != '\\') continue;
        json += text.substr(plain, i - plain);
        plain = i + 1;
        if (code >= ' ')
            json.append({'\\', letter});
        else if (const std::size_t at = named.find(letter); at != named.npos)
            json.append({'\\', letters[at]});
        else
            json.append("\\u00").append({digits[code >> 4], digits[code & 15]});
    }
    json += text.substr(plain);
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

std::string_view textOf(sqlite3_value* value) {
    const auto* letters = reinterpret_cast<const char*>(sqlite3_value_text(value));
    if (letters == nullptr) return {};
    return {letters, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void appendToken(std::string& json, sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        json += "null";
        return;
    case SQLITE_INTEGER:
        json += std::to_string(sqlite3_value_int64(value));
        return;
    case SQLITE_FLOAT:
        json += digitsOf(sqlite3_value_double(value));
        return;
    default:
        if (sqlite3_value_text(value) == nullptr) throw std::bad_alloc();
        appendText(json, textOf(value));
    }
}

void appendMember(std::string& json, std::string_view name, sqlite3_value* value) {
    json += json.empty() ? "{\"" : ",\"";
    json.append(name).append("\":");
    appendToken(json, value);
}

// As the entry would write them.
bool isSame(sqlite3_value* one, sqlite3_value* other) {
    const int type = sqlite3_value_type(one);
    if (type == sqlite3_value_type(other) && type == SQLITE_NULL) return true;
    if (type == sqlite3_value_type(other) && type == SQLITE_INTEGER)
        return sqlite3_value_int64(one) == sqlite3_value_int64(other);
    if (type == sqlite3_value_type(other) && type == SQLITE_TEXT) return textOf(one) == textOf(other);
    std::string token, otherToken;
    appendToken(token, one);
    appendToken(otherToken, other);
    return token == otherToken;
}

// The names of a trigger's columns, one after the other: "ID,MUSTNO".
class Names {
public:
    explicit Names(std::string_view list) : rest_(list) {}

    std::string_view next() {
        const std::string_view name = rest_.substr(0, rest_.find(','));
        rest_.remove_prefix(std::min(rest_.size(), name.size() + 1));
        return name;
    }

private:
    std::string_view rest_;
};

class JournalWriter {
public:
    explicit JournalWriter(std::function<DateTime()> clock) : clock_(std::move(clock)) {}

    // Of a changed row: its columns' names, then what each held and what it holds. Whether anything is other.
    bool takeChange(int count, sqlite3_value** values) {
        was_.clear();
        is_.clear();
        bool hasChanged = false;
        Names names(textOf(values[0]));
        for (int i = 1; i < count; i += 2) {
            const std::string_view name = names.next();
            const bool isOther = !isSame(values[i], values[i + 1]);
            hasChanged = hasChanged || isOther;
            if (!isOther && i > 1) continue;
            appendMember(was_, name, values[i]);
            appendMember(is_, name, values[i + 1]);
        }
        was_ += '}';
        is_ += '}';
        changedKey_ = textOf(values[2]);
        return hasChanged;
    }

    void makeRowEntry(int count, sqlite3_value** values) {
        begin();
        put(Part::Kind, textOf(values[kKind]));
        put(Table, textOf(values[kTable]));
        if (part(Part::Kind) == kChanged) {
            put(Key, changedKey_);
            put(Before, was_);
            put(After, is_);
        } else {
            put(Key, textOf(values[kFirstValue])); // ID is the first column of each table
            was_.clear();
            const std::string_view list = textOf(values[kNames]);
            Names names(list.substr(1, list.size() - 2));
            for (int i = kFirstValue; i < count; ++i)
                appendMember(was_, names.next(), values[i]);
            was_ += '}';
            put(part(Part::Kind) == kRemoved ? Before : After, was_);
        }
        finish(values);
    }

    void makeNote(sqlite3_value** values) {
        begin();
        put(Part::Kind, kNoted);
        put(After, textOf(values[kWhat]));
        finish(values);
    }

    [[nodiscard]] bool isMade() const { return isMade_; }
    [[nodiscard]] std::optional<std::string_view> part(int index) const {
        const auto at = static_cast<std::size_t>(index);
        return isPut_.at(at) ? std::optional<std::string_view>(parts_[at]) : std::nullopt;
    }
    void clear() { isMade_ = false; }

private:
    void begin() {
        isPut_.fill(false);
        isMade_ = false;
    }

    void put(Part part, std::string_view text) {
        parts_[part] = text;
        isPut_[part] = true;
    }

    // Who and where stand with the first entry of an act alone.
    void finish(sqlite3_value** values) {
        const Act& act = runningAct();
        put(Id, std::to_string(sqlite3_value_int64(values[kHead]) + 1));
        put(ActNumber, act.number);
        put(Moment, storedDate(clock_()));
        if (textOf(values[kHeadAct]) != act.number) {
            const Actor& actor = thisActor();
            put(Program, actor.program);
            put(Machine, actor.machine);
            put(User, actor.user);
            put(Screen, act.screen);
            put(ActName, act.name);
        }
        JournalKey::Values sealed;
        for (std::size_t i = 0; i < sealed.size(); ++i)
            sealed[i] = part(static_cast<int>(i));
        put(Seal, keyFor(textOf(values[kKey])).seal(textOf(values[kHeadSeal]), sealed));
        isMade_ = true;
    }

    JournalKey& keyFor(std::string_view kept) {
        if (!key_ || kept != kept_) {
            key_.emplace(kept);
            kept_ = kept;
        }
        return *key_;
    }

    std::function<DateTime()> clock_;
    std::string was_, is_; // a row as the entry writes it; of a change what is other
    std::string changedKey_;
    std::array<std::string, kSealedColumns.size() + 1> parts_;
    std::array<bool, kSealedColumns.size() + 1> isPut_{};
    bool isMade_ = false;
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

void isChanged(sqlite3_context* context, int count, sqlite3_value** values) {
    guarded(context, [&](JournalWriter& writer, Answer& answer) {
        answer.whole(writer.takeChange(count, values) ? 1 : 0);
    });
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
        if (!writer.isMade())
            throw RuntimeError(static_cast<std::int32_t>(ErrorNumber::InvalidCall),
                               "Günlüğe yazılacak bir şey yok.");
        if (const auto text = writer.part(part))
            answer.text(*text);
        else
            answer.null();
        if (part == Seal) writer.clear();
    });
}

} // namespace

void registerJournal(sqlite3* connection, const std::function<DateTime()>& clock) {
    constexpr Registered kFunctions[] = {{"vd_changed", -1, isChanged},
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
