#include "apps/operator/verbs.h"

#include "platform/controls/names.h"

namespace veldona::console {

const Verb& verbOf(const Line& line) {
    for (const auto verbs : {preparingVerbs(), actingVerbs(), expectingVerbs(), showingVerbs()}) {
        for (const Verb& verb : verbs) {
            if (!sameName(verb.name, line.verb)) continue;
            if (line.words.size() < verb.least) throw UnreadableLine("too few words behind " + line.verb);
            if (line.words.size() > verb.most) throw UnreadableLine("too many words behind " + line.verb);
            return verb;
        }
    }
    throw UnreadableLine("no such verb: " + line.verb);
}

} // namespace veldona::console
