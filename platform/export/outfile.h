// A file that an export writes whole.
#pragma once

#include <string>
#include <string_view>

namespace veldona::exports {

// In place of what the file held. Error 75 where it cannot be written; what was begun of it is taken away.
void writeFile(const std::string& nativePath, std::string_view bytes);

} // namespace veldona::exports
