#include "apps/operator/folders.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace veldona::console {

namespace {

std::string makeTemporary() {
    std::string path = std::filesystem::temp_directory_path() / "vorel-operator-XXXXXX";
    if (mkdtemp(path.data()) != nullptr) return path;
    throw std::filesystem::filesystem_error("no temporary folder", path,
                                            std::error_code(errno, std::generic_category()));
}

} // namespace

DriveFolder::DriveFolder(const std::optional<std::string>& given)
    : path_(given ? std::filesystem::absolute(*given).string() : makeTemporary()), isTemporary_(!given) {
    std::filesystem::create_directories(path_);
}

DriveFolder::~DriveFolder() {
    std::error_code ignored; // what cannot be removed is for the system's own clearing
    if (isTemporary_) std::filesystem::remove_all(path_, ignored);
}

} // namespace veldona::console
