#include "platform/export/outfile.h"

#include <filesystem>
#include <fstream>

#include "platform/runtime/error.h"

namespace veldona::exports {

void writeFile(const std::string& nativePath, std::string_view bytes) {
    std::ofstream out(nativePath, std::ios::binary | std::ios::trunc);
    if (!out) raise(ErrorNumber::PathFileAccess);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (out) return;
    std::error_code ignored;
    std::filesystem::remove(nativePath, ignored);
    raise(ErrorNumber::PathFileAccess);
}

} // namespace veldona::exports
