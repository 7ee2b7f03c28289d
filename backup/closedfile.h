// The file of the books as it stands by itself, which nobody else opens as long as this lives.
#pragma once

#include <memory>
#include <string>

#include "platform/runtime/datetime.h"
#include "platform/runtime/secret.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/filelock.h"

namespace veldona::backup {

class ClosedFile {
public:
    // Takes in what a journal holds. Raises Refusal where a program has the file open, or StoreError.
    explicit ClosedFile(const std::string& path);

    [[nodiscard]] store::Engine& engine() { return *engine_; }
    [[nodiscard]] const Secret& password() const { return password_; } // by which it opened

    // Renames it, and answers its new name.
    std::string setAside(DateTime now);
    // For who exchanges it: it is read no more, and still nobody opens it.
    [[nodiscard]] std::unique_ptr<store::FileLock> handOver();

private:
    std::string path_;
    Secret password_;
    std::unique_ptr<store::FileLock> lock_;
    std::unique_ptr<store::Engine> engine_;
};

} // namespace veldona::backup
