// What a program that holds the books' password owes their owner.
#pragma once

namespace veldona {

// From now on the files and folders that this process and its children make are their owner's alone, and a
// crash writes no memory to a file. No other process of the same user may look into the memory.
void keepToOwner();

} // namespace veldona
