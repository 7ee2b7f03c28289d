#include "journal/seen.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <utility>
#include <variant>

#include "platform/desktop/paths.h"
#include "platform/runtime/wholefile.h"

namespace veldona::journal {
namespace {

constexpr std::size_t kMostLost = 5; // of entries that the books don't have any more

struct Line {
    Seen seen;
    std::string books;
};

std::string nameOf(const store::Place& books) {
    if (const auto* server = std::get_if<store::ServerPlace>(&books))
        return server->address.shown() + '/' + server->schema;
    std::error_code unknown;
    const std::string& path = std::get<store::FilePlace>(books).path;
    const auto whole = std::filesystem::weakly_canonical(path, unknown);
    return unknown ? path : whole.string();
}

// "number seal day time books", a line each; others are passed over.
std::vector<Line> readLines(const std::string& path) {
    std::vector<Line> lines;
    std::ifstream file(path);
    for (std::string text; std::getline(file, text);) {
        std::istringstream words(text);
        Line line;
        std::string time;
        if (!(words >> line.seen.id >> line.seen.seal >> line.seen.moment >> time)) continue;
        line.seen.moment += ' ' + time;
        std::getline(words >> std::ws, line.books);
        lines.push_back(std::move(line));
    }
    return lines;
}

std::optional<Seen> entry(adodb::Connection& books, const std::string& which) {
    std::optional<Seen> found;
    books.walk("SELECT TOP 1 ID, OZET, AN FROM GUNLUK" + which, [&](const store::Statement& row) {
        found = Seen{row.whole(0), std::string(row.text(1)), std::string(row.text(2))};
    });
    return found;
}

// Whether it stands in the books as it was seen, or was taken out of them by age.
bool isAccountedFor(adodb::Connection& books, const Seen& seen, std::int64_t first) {
    if (seen.id < first) return true;
    const auto now = entry(books, " WHERE ID = " + std::to_string(seen.id));
    return now && now->seal == seen.seal;
}

} // namespace

std::string seenFileOfThisPerson() {
    return userSettingsFolder() + "/gunluk.txt";
}

std::vector<Seen> SeenFile::of(const store::Place& books) const {
    std::vector<Seen> seen;
    for (Line& line : readLines(path_))
        if (line.books == nameOf(books)) seen.push_back(std::move(line.seen));
    return seen;
}

void SeenFile::lookAt(adodb::Connection& open, const store::Place& books) const {
    const auto newest = entry(open, " ORDER BY ID DESC");
    if (path_.empty() || !newest) return;
    const std::string name = nameOf(books);
    std::vector<Line> lines = readLines(path_), lost;
    const auto ours = std::stable_partition(lines.begin(), lines.end(),
                                            [&](const Line& line) { return line.books != name; });
    if (lines.end() - ours == 1 && ours->seen.id == newest->id && ours->seen.seal == newest->seal) return;
    const auto first = entry(open, " ORDER BY ID");
    std::copy_if(ours, lines.end(), std::back_inserter(lost),
                 [&](const Line& line) { return !isAccountedFor(open, line.seen, first->id); });
    if (lost.size() > kMostLost) lost.resize(kMostLost); // the oldest say most
    lines.erase(ours, lines.end());
    lines.insert(lines.end(), lost.begin(), lost.end());
    lines.push_back({*newest, name});
    std::string text;
    for (const Line& line : lines)
        text += std::to_string(line.seen.id) + ' ' + line.seen.seal + ' ' + line.seen.moment + ' ' +
                line.books + '\n';
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), ignored);
    static_cast<void>(writeWholeFile(path_, text));
}

} // namespace veldona::journal
