// The shop's books, in a file of this machine or on a server, for whoever is no screen: a tool, a backup.
// Books that hold anything that was not delivered are refused before anything is changed (StoreError,
// Damaged). A file is opened by whichever known password fits (bookpasswords.h).
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/runtime/secret.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/place.h"

namespace veldona {

[[nodiscard]] std::unique_ptr<store::Engine> openBooks(const store::Place& place,
                                                       std::chrono::milliseconds wait);
[[nodiscard]] std::unique_ptr<store::Engine> openBooksToRead(const store::Place& place,
                                                             std::chrono::milliseconds wait);

// Also says by which password it opened; of books on a server that one means nothing.
struct OpenedBooks {
    std::unique_ptr<store::Engine> engine;
    Secret password;
};
[[nodiscard]] OpenedBooks openBooksToReadBy(const store::Place& place, std::chrono::milliseconds wait);

// Of a file alone.
[[nodiscard]] std::unique_ptr<store::Engine> openBooks(const std::string& nativePath,
                                                       std::chrono::milliseconds wait);
// Leaves the file as it is, also beside a program at work on it.
[[nodiscard]] std::unique_ptr<store::Engine> openBooksToRead(const std::string& nativePath,
                                                             std::chrono::milliseconds wait);
// The file as it stands by itself, which nobody has open: nothing beside it is looked at or made.
[[nodiscard]] std::unique_ptr<store::Engine> openBooksAlone(const std::string& nativePath);
[[nodiscard]] OpenedBooks openBooksAloneBy(const std::string& nativePath);
// Brings a file that nobody else has open, and that is thrown away where this fails, up to today's.
void renewBooks(const std::string& nativePath);
// What a journal beside the file holds goes into the file, so that it is whole by itself. Raises StoreError,
// also where somebody else has the file open.
void settleBooks(const std::string& nativePath);

} // namespace veldona
