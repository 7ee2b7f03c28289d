#include "backup/keeping.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>

#include "backup/place.h"
#include "backup/refusal.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kShape = "vorel-dddd-dd-dd_dddddd.mdb"; // d: a digit
constexpr std::string_view kReplaced = "degistirilen-";
constexpr std::size_t kDays = 30, kMonths = 12;

template <class Visit> void forEachIn(const std::string& folder, Visit visit) {
    std::error_code failed;
    fs::directory_iterator entry(folder, failed);
    for (; !failed && entry != fs::directory_iterator(); entry.increment(failed))
        visit(*entry);
    if (failed) throw Refusal(folder + " klasörü okunamadı: " + reasonOf(failed));
}

bool isFile(const fs::directory_entry& entry) {
    std::error_code unreachable;
    return entry.is_regular_file(unreachable);
}

std::string stampOf(std::string_view name) {
    return std::string(name.substr(name.size() - 21, 17));
}

// What a power cut left in the middle of an exchange is a second name of the books themselves.
std::vector<Restorable> listReplaced(const std::string& books) {
    std::vector<Restorable> replaced;
    forEachIn(fs::path(books).parent_path().string(), [&](const fs::directory_entry& entry) {
        const std::string name = entry.path().filename().string();
        std::error_code missing;
        if (!name.starts_with(kReplaced) || !isBackupName(name.substr(kReplaced.size()))) return;
        if (isFile(entry) && !fs::equivalent(entry.path(), books, missing))
            replaced.push_back({entry.path().string(), stampOf(name), true});
    });
    return replaced;
}

std::string dayOf(const std::string& name) {
    return name.substr(6, 10);
}

std::string monthOf(const std::string& name) {
    return name.substr(6, 7);
}

} // namespace

std::string backupName(DateTime at) {
    char name[64];
    std::snprintf(name, sizeof name, "vorel-%04d-%02d-%02d_%02d%02d%02d.mdb", at.year(), at.month(), at.day(),
                  at.hour(), at.minute(), at.second());
    return name;
}

// The letter d of the file's ending stands for itself.
bool isBackupName(std::string_view name) {
    if (name.size() != kShape.size() || !name.ends_with(".mdb")) return false;
    for (std::size_t i = 0; i < name.size() - 4; ++i) {
        const bool isDigit = name[i] >= '0' && name[i] <= '9';
        if (kShape[i] == 'd' ? !isDigit : name[i] != kShape[i]) return false;
    }
    return true;
}

std::vector<std::string> listBackups(const std::string& folder) {
    std::vector<std::string> names;
    forEachIn(folder, [&](const fs::directory_entry& entry) {
        std::string name = entry.path().filename().string();
        if (isFile(entry) && isBackupName(name)) names.push_back(std::move(name));
    });
    std::sort(names.begin(), names.end());
    return names;
}

std::string replacedName(DateTime at) {
    return std::string(kReplaced) + backupName(at);
}

std::string freePlaceOfReplaced(const std::string& folder, DateTime now) {
    for (;; now = now.plusSeconds(1)) {
        std::string place = (fs::path(folder) / replacedName(now)).string();
        if (!stands(place)) return place;
    }
}

std::vector<Restorable> listRestorable(const std::set<std::string>& folders, const std::string& books) {
    std::error_code unreachable;
    std::vector<Restorable> all;
    for (const std::string& folder : folders) {
        if (!fs::exists(folder, unreachable)) continue;
        for (const std::string& name : listBackups(folder))
            all.push_back({(fs::path(folder) / name).string(), stampOf(name), false});
    }
    if (fs::exists(fs::path(books).parent_path(), unreachable)) {
        const std::vector<Restorable> replaced = listReplaced(books);
        all.insert(all.end(), replaced.begin(), replaced.end());
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const Restorable& a, const Restorable& b) { return a.stamp < b.stamp; });
    return all;
}

void clearUnfinished(const std::string& folder) {
    std::vector<fs::path> unfinished;
    forEachIn(folder, [&](const fs::directory_entry& entry) {
        const std::string name = entry.path().filename().string();
        const std::size_t nameLength = kShape.size();
        if (isBackupName(name.substr(0, nameLength)) &&
            std::string_view(name).substr(nameLength).starts_with(".yarim"))
            unfinished.push_back(entry.path());
    });
    for (const fs::path& file : unfinished) {
        std::error_code failed;
        if (!fs::remove(file, failed) && failed)
            throw Refusal(file.string() + " silinemedi: " + reasonOf(failed));
    }
}

std::vector<std::string> expired(const std::vector<std::string>& names) {
    std::vector<std::string> gone;
    std::set<std::string> days, months;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        const bool ofNewestDay = dayOf(*name) == dayOf(names.back());
        const bool newDay = days.size() < kDays && days.insert(dayOf(*name)).second;
        const bool newMonth = months.size() < kMonths && months.insert(monthOf(*name)).second;
        if (!ofNewestDay && !newDay && !newMonth) gone.push_back(*name);
    }
    return gone;
}

} // namespace veldona::backup
