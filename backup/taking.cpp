#include "backup/taking.h"

#include <filesystem>
#include <system_error>

#include "backup/copy.h"
#include "backup/keeping.h"
#include "backup/lastbackup.h"
#include "backup/place.h"
#include "backup/refusal.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

// One that cannot be removed is no failure of the new backup; the next one tries again.
void dropExpired(const std::string& folder, const std::vector<std::string>& names) {
    for (const std::string& old : expired(names)) {
        std::error_code stays;
        fs::remove(fs::path(folder) / old, stays);
    }
}

} // namespace

std::string usualFolder(const Paths& paths) {
    return paths.toNative("C:\\VELDONA\\Yedek");
}

std::string folderOn(const std::string& disk) {
    return (fs::path(disk) / "Veldona Yedek").string();
}

Taken takeBackup(const std::string& books, const std::string& folder, DateTime now,
                 const Onlooker& onlooker) {
    if (!stands(books) && !areOnServer(books)) throw Refusal(books + " yok; yedeklenecek defter bulunamadı.");
    makeFolder(folder);
    const FolderLock lock(folder, folder + " klasöründe başka bir yedekleme sürüyor.");
    clearUnfinished(folder);
    const std::string name = backupName(now);
    Taken taken;
    taken.file = (fs::path(folder) / name).string();
    taken.fingerprint = copyBooks(books, taken.file, onlooker);
    noteBackup(books, {now, fs::absolute(taken.file).string()});
    const std::vector<std::string> names = listBackups(folder);
    if (names.back() == name)
        dropExpired(folder, names);
    else
        taken.newer = names.back();
    return taken;
}

std::string warningOf(const Taken& taken) {
    if (!taken.newer) return {};
    return "Dikkat: klasörde adı bundan daha yeni bir yedek var: " + *taken.newer +
           "\nBilgisayarın saati geri kalmış olabilir; tarihi ve saati denetleyin. Saat doğruysa o dosyayı "
           "başka bir klasöre taşıyın. O zamana kadar hiçbir eski yedek silinmez.";
}

} // namespace veldona::backup
