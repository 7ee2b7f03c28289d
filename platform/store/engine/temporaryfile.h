// The name under which a database file is built: nobody sees a half-made one under its own name. What an
// earlier attempt left under it goes at the start, what this one leaves goes at the end, with the engine's
// files beside it.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace veldona::store {

class TemporaryFile {
public:
    explicit TemporaryFile(std::string path) : path_(std::move(path)) { remove(); }
    ~TemporaryFile() { remove(); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    void remove() {
        std::error_code ignored; // what is not there need not be removed
        for (const char* suffix : {"", "-wal", "-shm", "-journal"})
            std::filesystem::remove(path_ + suffix, ignored);
    }
    std::string path_;
};

} // namespace veldona::store
