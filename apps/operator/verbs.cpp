#include "apps/operator/verbs.h"

#include <algorithm>

#include "platform/controls/names.h"

namespace veldona::console {

const Verb& verbOf(const Line& line) {
    for (const auto verbs : {preparingVerbs(), actingVerbs(), expectingVerbs(), showingVerbs()}) {
        for (const Verb& verb : verbs) {
            if (!sameName(verb.name, line.verb)) continue;
            const std::size_t count = line.words.size();
            if (count < verb.least) throw UnreadableLine("too few words behind " + line.verb);
            if (verb.repeats() ? count % verb.least != 0 : count > verb.most)
                throw UnreadableLine("too many words behind " + line.verb);
            return verb;
        }
    }
    throw UnreadableLine("no such verb: " + line.verb);
}

namespace {

// What an act brings may stand behind it in its line: texts, or that it brings nothing (more).
struct Brought {
    std::string_view word;
    const char* text;
    const char* nothing;
};
constexpr Brought kBrought[] = {{"says", "expect-message", "expect-no-message"},
                                {"shows", "expect-report", "expect-no-report"}};

const Brought* broughtBy(const Word& word) {
    for (const Brought& each : kBrought)
        if (!word.quoted && sameName(each.word, word.text)) return &each;
    return nullptr;
}

// A verb of a fixed number of words, for each such number of them.
std::vector<Line> timesOf(const Line& line) {
    const Verb& verb = verbOf(line);
    if (!verb.repeats()) return {line};
    std::vector<Line> times;
    for (auto word = line.words.begin(); word != line.words.end();) {
        const auto behind = word + static_cast<std::ptrdiff_t>(verb.least);
        times.push_back({line.verb, {word, behind}});
        word = behind;
    }
    return times;
}

} // namespace

std::vector<Line> stepsOf(const Line& line) {
    const auto behind = std::find_if(line.words.begin(), line.words.end(), broughtBy);
    std::vector<Line> steps = timesOf({line.verb, {line.words.begin(), behind}});
    if (behind == line.words.end()) return steps;
    if (behind + 1 == line.words.end()) throw UnreadableLine("too few words behind " + behind->text);
    const Brought& brought = *broughtBy(*behind);
    for (auto word = behind + 1; word != line.words.end(); ++word) {
        if (!word->quoted && sameName(word->text, "nothing"))
            steps.push_back({brought.nothing, {}});
        else
            steps.push_back({brought.text, {*word}});
    }
    return steps;
}

} // namespace veldona::console
