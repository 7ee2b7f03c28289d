// Whether a file lies on another machine's disk.
//
// Two programs on one file of a network folder each believe their own copy of its index, and the file locks
// of such folders are promises that many servers do not keep: payments told of as done are lost and the file
// is damaged, without a word. So the books are not opened there.
#pragma once

#include <string>

namespace veldona::store {

// Raises NetworkDisk. `path` need not be there; its folder answers then.
void refuseNetworkDisk(const std::string& path);

// Whether what is mounted so is another machine's. `options` are those of the file system itself.
[[nodiscard]] bool isNetworkMount(const std::string& type, const std::string& options);

} // namespace veldona::store
