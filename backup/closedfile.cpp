#include "backup/closedfile.h"

#include <cstdio>
#include <filesystem>

#include "backup/keeping.h"
#include "backup/place.h"
#include "backup/proof.h"
#include "backup/refusal.h"
#include "core/books.h"
#include "platform/store/engine/durable.h"

namespace veldona::backup {

// A file without a journal needs no room to be settled, and a full disk has none.
ClosedFile::ClosedFile(const std::string& path) : path_(path) {
    if (hasJournal(path)) settleBooks(path);
    lock_ = store::FileLock::takeAlone(path);
    if (lock_ == nullptr || hasJournal(path))
        throw Refusal(path + " şu anda bir programda açık ve olduğu gibi bırakıldı. Programı kapatıp yeniden "
                             "deneyin.");
    auto [engine, password] = openBooksAloneBy(path);
    engine_ = std::move(engine);
    password_ = std::move(password);
}

std::string ClosedFile::setAside(DateTime now) {
    std::string kept = freePlaceOfReplaced(std::filesystem::path(path_).parent_path().string(), now);
    engine_.reset();
    if (std::rename(path_.c_str(), kept.c_str()) != 0)
        throw Refusal(path_ + " yeniden adlandırılamadı: " + lastReason());
    store::syncFolderOf(path_);
    return kept;
}

std::unique_ptr<store::FileLock> ClosedFile::handOver() {
    engine_.reset();
    return std::move(lock_);
}

} // namespace veldona::backup
