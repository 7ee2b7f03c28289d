// What a program that holds the books' password owes their owner.
#pragma once

namespace veldona {

// From now on the files and folders that this process and its children make are their owner's alone, and a
// crash writes no memory to a file.
void keepToOwner();

} // namespace veldona
