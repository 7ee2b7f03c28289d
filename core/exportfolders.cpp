#include "core/exportfolders.h"

#include <filesystem>

#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/error.h"

namespace veldona {

std::string exportFolder(const Session& session, std::string_view formatName) {
    std::string folder = session.desktop.paths.appPath() + "\\aktar";
    if (!formatName.empty()) folder.append("\\").append(formatName);
    return folder;
}

void makeFolder(Session& session, const std::string& folder) {
    const std::filesystem::path path = session.desktop.paths.toNative(folder);
    std::error_code error;
    if (!std::filesystem::is_directory(path.parent_path(), error)) raise(ErrorNumber::PathNotFound);
    if (!std::filesystem::create_directory(path, error)) raise(ErrorNumber::PathFileAccess);
}

std::string exportFile(Session& session, std::string_view formatName, const std::string& ad,
                       const std::string& extension) {
    const std::string folder = session.desktop.paths.toNative(exportFolder(session, formatName));
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) raise(ErrorNumber::PathFileAccess);
    const std::string beginning = folder + "/" + ad;
    std::string file = beginning + extension;
    for (int i = 2; std::filesystem::exists(file); ++i)
        (file = beginning).append(" (").append(std::to_string(i)).append(")").append(extension);
    return file;
}

} // namespace veldona
