// The container in which the old office formats keep their streams: a small file system of 512-byte sectors.
#pragma once

#include <string>
#include <string_view>

namespace veldona::exports {

// A container with one stream of this name (ASCII, at most 31 letters). A short stream is filled up with
// zeros to 4096 bytes, so that it lies in sectors of its own.
[[nodiscard]] std::string compoundFile(const std::string& streamName, std::string stream);

} // namespace veldona::exports
