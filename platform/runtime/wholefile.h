// A file that stands whole or as it was: a full disk, a kill or a power cut leaves no half of it under its
// name.
#pragma once

#include <string>
#include <string_view>

namespace veldona {

// Writes beside `nativePath`, under its name with ".new" behind it, and takes the name over when the bytes
// are on the disk. False where that failed; what stood there then stands as it was.
[[nodiscard]] bool writeWholeFile(const std::string& nativePath, std::string_view bytes);

} // namespace veldona
