// Proven files that get a name: a free one, or that of the books, which are then set aside.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "backup/fingerprint.h"
#include "backup/onlooker.h"
#include "platform/store/engine/filelock.h"

namespace veldona::backup {

// What stands at `path`, a dead link included.
[[nodiscard]] bool stands(const std::string& path);

// Whether they do not lie in the file of that name but on a server.
[[nodiscard]] bool areOnServer(const std::string& books);

// Held by who makes files of fixed names in a folder, of which two at once would take each other's away.
class FolderLock {
public:
    // Raises Refusal with the sentence `busy` where another holds it.
    FolderLock(const std::string& folder, const std::string& busy);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int descriptor_;
};

// Makes the folder where it is not there, for its owner alone. Raises Refusal.
void makeFolder(const std::string& folder);

// Gives `temporary`, which holds `proven`, the name `file`, makes that last and proves it once more. What
// fails leaves no file. Raises Refusal, also where something stands at `file`.
void giveName(const std::string& temporary, const std::string& file, const Fingerprint& proven,
              const Onlooker& onlooker = {});

// Raises Refusal where somebody has the books open. They need not be there.
void requireClosed(const std::string& books);

// The names that the replaced file and a journal beside it get; the journal's own ending follows.
struct SetAside {
    std::string books, journal;
};

// Puts `temporary`, which holds `proven`, in the place of `books` and answers what was set aside: nothing
// where nothing stood there. From before the exchange to behind the last proof nobody can open either file:
// who tries waits, and finds what stands then. What fails leaves the books as they were. Raises Refusal or
// StoreError.
// `present`: the lock of the books, of who has it already.
std::vector<std::string> exchange(const std::string& temporary, const Fingerprint& proven,
                                  const std::string& books, const SetAside& names,
                                  std::unique_ptr<store::FileLock> present = nullptr);

} // namespace veldona::backup
