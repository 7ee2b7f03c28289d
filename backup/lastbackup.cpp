#include "backup/lastbackup.h"

#include <filesystem>
#include <fstream>

#include "backup/keeping.h"
#include "backup/refusal.h"
#include "backup/taking.h"
#include "core/delivered.h"
#include "platform/runtime/error.h"
#include "platform/runtime/format.h"
#include "platform/runtime/wholefile.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

constexpr int kShiftOfClocks = 2 * 3600; // seconds; an hour is put back every autumn where clocks change

int daysFrom(DateTime day, DateTime to) {
    return static_cast<int>((to.date().seconds() - day.date().seconds()) / kSecondsADay);
}

std::string noteBeside(const std::string& books) {
    return (fs::path(books).parent_path() / "son-yedek.txt").string();
}

// Nothing where the name, or a line that somebody edited, carries no moment.
std::optional<LastBackup> namedBackup(const std::string& file) {
    const std::string name = fs::path(file).filename().string();
    if (!isBackupName(name)) return std::nullopt;
    const auto number = [&name](std::size_t at, std::size_t length) {
        return std::stoi(name.substr(at, length));
    };
    try {
        return LastBackup{DateTime::of(number(6, 4), number(11, 2), number(14, 2), number(17, 2),
                                       number(19, 2), number(21, 2)),
                          file};
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

std::optional<LastBackup> noted(const std::string& books) {
    std::ifstream note(noteBeside(books));
    std::string file;
    std::getline(note, file);
    return namedBackup(file);
}

std::optional<LastBackup> newestIn(const std::string& folder) {
    std::error_code unreachable;
    if (!fs::exists(folder, unreachable)) return std::nullopt;
    try {
        const std::vector<std::string> names = listBackups(folder);
        if (names.empty()) return std::nullopt;
        return namedBackup((fs::path(folder) / names.back()).string());
    } catch (const Refusal&) {
        return std::nullopt; // what can't be read tells nothing
    }
}

} // namespace

void noteBackup(const std::string& books, const LastBackup& taken) {
    static_cast<void>(writeWholeFile(noteBeside(books), taken.file + "\n"));
}

std::optional<LastBackup> findLastBackup(const std::string& books, const std::string& folder) {
    const auto line = noted(books);
    const auto name = newestIn(folder);
    if (!line || !name) return line ? line : name;
    return line->at < name->at ? name : line;
}

// A folder that is not there yet is made in the one above it.
KnownLastBackup::Moments KnownLastBackup::moments() const {
    const auto written = [](const fs::path& file) {
        std::error_code missing;
        const fs::file_time_type moment = fs::last_write_time(file, missing);
        return missing ? fs::file_time_type::min() : moment;
    };
    return {written(fs::path(folder_).parent_path()), written(folder_), written(noteBeside(books_))};
}

const std::optional<LastBackup>& KnownLastBackup::of(const Paths& paths) {
    if (!folder_.empty() && moments() == seen_) return last_;
    books_ = paths.toNative(kDatabasePath);
    folder_ = usualFolder(paths);
    seen_ = moments();
    last_ = findLastBackup(books_, folder_);
    return last_;
}

std::string ageText(const std::optional<LastBackup>& last, DateTime now) {
    if (!last) return "Henüz yedek alınmadı";
    if (last->at > now.plusSeconds(kShiftOfClocks))
        return "Son yedek " + format(last->at, "dd/mm/yyyy") + " tarihli: bilgisayarın saatini denetleyin";
    const int days = daysFrom(last->at, now);
    if (days <= 0) return "Son yedek bugün " + format(last->at, "hh:mm");
    if (days == 1) return "Son yedek dün";
    return "Son yedek " + std::to_string(days) + " gün önce";
}

} // namespace veldona::backup
