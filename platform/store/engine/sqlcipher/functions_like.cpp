#include <sqlcipher/sqlite3.h>

#include <memory>

#include "platform/store/engine/fold.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

constexpr char32_t kAnyLetters = U'%';
constexpr char32_t kAnyLetter = U'_';

// True where `text` is as `pattern` says. Goes back to the last % only, so that no pattern makes it slower
// than the product of the two lengths.
bool isLike(const std::vector<char32_t>& pattern, std::string_view text) {
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t at = 0, place = 0, behindAny = kNone, resumeAt = 0;
    while (at < text.size()) {
        if (place < pattern.size() && pattern[place] == kAnyLetters) {
            behindAny = ++place;
            if (behindAny == pattern.size()) return true;
            resumeAt = at;
            continue;
        }
        const std::size_t before = at;
        const char32_t letter = nextFolded(text, at);
        if (place < pattern.size() && (pattern[place] == letter || pattern[place] == kAnyLetter)) {
            ++place;
        } else if (behindAny != kNone) {
            at = resumeAt;
            static_cast<void>(nextFolded(text, at));
            resumeAt = at;
            place = behindAny;
        } else {
            at = before;
            return false;
        }
    }
    while (place < pattern.size() && pattern[place] == kAnyLetters)
        ++place;
    return place == pattern.size();
}

// The pattern's letters are kept with the statement: they are the same for each row.
void like(const Arguments& arguments, Answer& answer) {
    using Pattern = std::vector<char32_t>;
    if (const auto* kept = static_cast<const Pattern*>(sqlite3_get_auxdata(answer.context(), 0))) {
        return answer.whole(isLike(*kept, arguments.text(1)));
    }
    auto pattern = std::make_unique<Pattern>(folded(arguments.text(0)));
    answer.whole(isLike(*pattern, arguments.text(1)));
    sqlite3_set_auxdata(answer.context(), 0, pattern.release(),
                        [](void* held) { delete static_cast<Pattern*>(held); });
}

} // namespace

void registerLike(sqlite3* connection) {
    constexpr Registered kLike{"vd_like", 2, run<like>};
    registerAll(connection, &kLike, 1);
}

} // namespace veldona::store::sql
