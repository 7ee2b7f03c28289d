#include "platform/desktop/paths.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/runtime/error.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

namespace fs = std::filesystem;

// The pairs of letters that a file's name knows: "i" with "I" in every tongue, "ı" and "İ" each alone.
std::string fileNameKey(std::string_view name) {
    const std::string kept = replaceAll(replaceAll(name, "ı", "\x01"), "i", "I");
    return upperTurkish(kept);
}

// The name in `folder` that differs in letters' case alone; as asked for where there is none.
std::string nameInFolder(const fs::path& folder, const std::string& asked) {
    std::error_code missing;
    if (fs::exists(fs::symlink_status(folder / asked, missing))) return asked;
    const std::string key = fileNameKey(asked);
    std::string found;
    for (fs::directory_iterator at(folder, missing), end; !missing && at != end; at.increment(missing)) {
        const std::string name = at->path().filename().string();
        // Of several the first by name, so that the answer does not hang on the folder's own order.
        if (fileNameKey(name) == key && (found.empty() || name < found)) found = name;
    }
    return found.empty() ? asked : found;
}

bool isOnDriveC(std::string_view path) {
    if (path.size() < 2 || (path[0] != 'C' && path[0] != 'c') || path[1] != ':') return false;
    return path.size() == 2 || path[2] == '\\' || path[2] == '/';
}

std::string folderOfPerson(const char* variable, const char* belowHome) {
    // A relative one is to be ignored, by the rule of these variables.
    if (const char* named = std::getenv(variable); named && *named == '/')
        return (fs::path(named) / "veldona").string();
    const char* home = std::getenv("HOME");
    if (!home || !*home) {
        const passwd* user = getpwuid(getuid());
        home = user ? user->pw_dir : "/";
    }
    return (fs::path(home) / belowHome / "veldona").string();
}

} // namespace

std::string Paths::toNative(std::string_view path) const {
    if (!isOnDriveC(path) || path.find('\0') != std::string_view::npos) raise(ErrorNumber::PathNotFound);
    fs::path native = root_;
    for (std::size_t at = 2; at < path.size();) {
        const std::size_t end = std::min(path.find_first_of("\\/", at), path.size());
        const std::string part(path.substr(at, end - at));
        if (part == "..") raise(ErrorNumber::PathNotFound);
        if (!part.empty() && part != ".") native /= nameInFolder(native, part);
        at = end + 1;
    }
    return native.string();
}

std::string chooseRoot(const std::string& executableFolder, const std::string& userDataFolder) {
    const std::string portable = (fs::path(executableFolder) / "C").string();
    std::error_code missing;
    const std::string database = Paths(portable).toNative(std::string(kInstallFolder) + "\\vorel.mdb");
    return fs::is_regular_file(database, missing) ? portable : userDataFolder;
}

std::string userDataFolder() {
    return folderOfPerson("XDG_DATA_HOME", ".local/share");
}

std::string userSettingsFolder() {
    return folderOfPerson("XDG_CONFIG_HOME", ".config");
}

std::string executableFolder() {
    return fs::read_symlink("/proc/self/exe").parent_path().string();
}

void writeTextFile(const std::string& nativePath, std::string_view line) {
    std::ofstream file(nativePath, std::ios::binary | std::ios::trunc);
    file << line << "\r\n";
    file.close(); // a full disk may show only here
    if (!file)
        throw RuntimeError(static_cast<std::int32_t>(ErrorNumber::PathFileAccess),
                           standardDescription(ErrorNumber::PathFileAccess) + ": " + nativePath +
                               " yazılamadı. Diskteki yeri ve klasörün izinlerini denetleyin.");
}

void deleteFile(const std::string& nativePath) {
    std::error_code failed;
    const fs::file_status status = fs::symlink_status(nativePath, failed);
    if (!fs::exists(status)) raise(ErrorNumber::FileNotFound);
    if (fs::is_directory(status) || !fs::remove(nativePath, failed)) raise(ErrorNumber::PathFileAccess);
}

} // namespace veldona
