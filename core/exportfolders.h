// Where exports land: a folder a format below the program's folder \aktar.
#pragma once

#include <string>
#include <string_view>

namespace veldona {

struct Session;

// The folder of a format as the program writes it, with no "\" behind it.
[[nodiscard]] std::string exportFolder(const Session& session, std::string_view formatName = {});
// Error 75 where it stands already, 76 where the one above it does not.
void makeFolder(Session& session, const std::string& folder);
// A free name in the folder of a format, which is made where it is missing, as a path of this machine.
[[nodiscard]] std::string exportFile(Session& session, std::string_view formatName, const std::string& ad,
                                     const std::string& extension);

} // namespace veldona
