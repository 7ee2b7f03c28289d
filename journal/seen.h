// What this machine has seen of the journals of the books that it works on: the newest entry of each, in a
// file beside the other settings of the person. Whoever exchanges the books for an older copy, or takes the
// newest entries out, does not know of it.
#pragma once

#include <string>
#include <vector>

#include "journal/chain.h"
#include "platform/store/engine/place.h"
#include "platform/store/faces/adodb.h"

namespace veldona::journal {

class SeenFile {
public:
    explicit SeenFile(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] std::vector<Seen> of(const store::Place& books) const;
    // Keeps the newest entry of the open books. What was seen before and does not stand in them any more is
    // kept too, for who examines them. What can't be written here is left out: the books don't wait for it.
    void lookAt(adodb::Connection& open, const store::Place& books) const;

private:
    std::string path_;
};

[[nodiscard]] std::string seenFileOfThisPerson();

} // namespace veldona::journal
