// The engine's lock of a database file, taken without reading a byte of it: shared by everybody who has the
// file open, exclusive to who exchanges it for another. It is what tells whether a file is in use; a journal
// beside it does not, since a power cut leaves one too.
#pragma once

#include <chrono>
#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_file;

namespace veldona::store {

class FileLock {
public:
    // Shared, of the file that stands under `path` when it is got: whoever waited while files were exchanged
    // gets the one that arrived. As long as it is held the engine leaves a journal beside the file alone: the
    // last connection that closes would move its rows into the file and delete it, also where it could not
    // read a word of either. Raises StoreError Locked; a disk without locks gives one that holds nothing.
    [[nodiscard]] static std::unique_ptr<FileLock> share(const std::string& path,
                                                         std::chrono::milliseconds wait);
    // Nothing where somebody has the file open, in this process too. While it is held, no other descriptor of
    // the file may be opened and closed here but by the engine: closing one drops the locks of the process.
    [[nodiscard]] static std::unique_ptr<FileLock> takeAlone(const std::string& path);

    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Whether nobody else has the file open at this moment; the lock stays a shared one.
    [[nodiscard]] bool isAlone();

private:
    explicit FileLock(const std::string& path);
    int take(int level);
    void goDownTo(int level);

    sqlite3* connection_ = nullptr;
    sqlite3_file* file_ = nullptr;
};

} // namespace veldona::store
