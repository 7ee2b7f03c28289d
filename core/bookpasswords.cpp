#include "core/bookpasswords.h"

#include <algorithm>
#include <filesystem>
#include <mutex>

#include "platform/runtime/wholefile.h"
#include "platform/store/engine/passwordfit.h"
#include "platform/store/engine/place.h"

namespace veldona {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNote =
    "# Bu defterin kendi parolası var; parola burada yazmaz. Bu dosyayı silmek parolayı kaldırmaz.\n";

struct Known {
    std::mutex guard;
    std::vector<Secret> own; // the newest first
};

Known& ofProcess() {
    static Known known;
    return known;
}

} // namespace

namespace passwords {

void learn(const Secret& password) {
    Known& all = ofProcess();
    const std::lock_guard hold(all.guard);
    std::erase(all.own, password);
    if (password != deliveredPassword()) all.own.insert(all.own.begin(), password);
}

void forget() {
    Known& all = ofProcess();
    const std::lock_guard hold(all.guard);
    all.own.clear();
}

std::vector<Secret> known() {
    Known& all = ofProcess();
    const std::lock_guard hold(all.guard);
    std::vector<Secret> list = all.own;
    list.push_back(deliveredPassword());
    return list;
}

} // namespace passwords

Secret deliveredPassword() {
    return Secret(kDeliveredPassword);
}

std::string passwordNoteOf(const std::string& books) {
    return (fs::path(books).parent_path() / "vorel.parola").string();
}

bool isNotedAsOwn(const std::string& books) {
    std::error_code unreachable;
    return fs::exists(passwordNoteOf(books), unreachable);
}

bool noteAsOwn(const std::string& books, bool own) {
    std::error_code stays;
    if (own) return isNotedAsOwn(books) || writeWholeFile(passwordNoteOf(books), kNote);
    fs::remove(passwordNoteOf(books), stays);
    return !stays;
}

bool opensBy(const std::string& file, const Secret& password) {
    return store::fitOf(file, password.text()) != store::Fit::Unknown;
}

// The delivered one is tried although there is a note: a program that was killed behind an exchange, or
// somebody who copied a backup over the books, leaves the note as it was.
std::optional<Secret> passwordOfBooks(const std::string& books) {
    std::error_code unreachable;
    const std::string server = store::ServerAddress::fileBeside(books);
    if (fs::exists(server, unreachable) || !fs::is_regular_file(books, unreachable))
        return deliveredPassword();
    for (const Secret& each : passwords::known())
        if (opensBy(books, each)) return each;
    return std::nullopt;
}

} // namespace veldona
