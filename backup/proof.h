// What stands behind the word "denetlendi".
#pragma once

#include <string>

#include "backup/fingerprint.h"
#include "backup/onlooker.h"

namespace veldona::backup {

// Has the engine look through `file` and a journal beside it, and answers what they hold. Raises Refusal
// where they are broken inside, or StoreError.
[[nodiscard]] Fingerprint inspect(const std::string& file);

// The same of a file that nobody has open and that must be whole by itself: no journal beside it, as long as
// its pages. Nothing is made beside it, so it takes no room.
[[nodiscard]] Fingerprint prove(const std::string& file, const Onlooker& onlooker = {});
void requireProved(const std::string& file, const Fingerprint& expected, const Onlooker& onlooker = {});

// Waits for the disk to have all of `file`, and has it read from the disk from now on, not from memory.
void syncFile(const std::string& file);

// What the engine writes beside a file and reads before it.
inline constexpr const char* kJournals[] = {"-wal", "-journal"};
[[nodiscard]] bool hasJournal(const std::string& books);

} // namespace veldona::backup
