// A disk that goes wrong on purpose: it stands between the engine and the machine's files, counts the calls
// that change a file (write, sync, truncate, delete) or those that read one, and at the nth lets the disk be
// full, the device fail or the power go.
//
// One for the process; install() makes it the disk of every file opened from then on. At a power cut what was
// not synced is undone in the files and the process ends at once, so it is for a child process only.
#pragma once

#include <cstdint>

namespace veldona::faults {

enum class Fault {
    None,
    DiskFull,    // the nth write or new file and all behind it, until disarm()
    InputOutput, // the nth call that changes a file, once
    PowerCut,
    FailedRead, // the nth read, once
    ShortRead,  // the nth read answers the first half of what it was asked for, once
};

enum class Tail { Lost, PartlyKept }; // what becomes of the writes that were not synced

inline constexpr int kPowerCutExit = 77;

void install();
// Counting begins anew. `seed` decides which writes of a PartlyKept tail reached the disk.
void arm(Fault fault, int nth, Tail tail = Tail::Lost, std::uint32_t seed = 0);
void disarm();
[[nodiscard]] bool hasStruck(); // since arm()
[[nodiscard]] int callsCounted();

} // namespace veldona::faults
