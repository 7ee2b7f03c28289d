#include "backup/keeping.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <set>

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kShape = "vorel-dddd-dd-dd_dddddd.mdb"; // d: a digit
constexpr std::size_t kDays = 30, kMonths = 12;

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
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        std::string name = entry.path().filename().string();
        if (entry.is_regular_file() && isBackupName(name)) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

void clearUnfinished(const std::string& folder) {
    std::vector<fs::path> unfinished;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        const std::size_t nameLength = kShape.size();
        if (isBackupName(name.substr(0, nameLength)) &&
            std::string_view(name).substr(nameLength).starts_with(".yarim"))
            unfinished.push_back(entry.path());
    }
    for (const fs::path& file : unfinished)
        fs::remove(file);
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
