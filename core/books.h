// The shop's books, in a file of this machine or on a server, for whoever is no screen: a tool, a backup.
// Books that hold anything that was not delivered are refused before anything is changed (StoreError,
// Damaged).
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/store/engine/engine.h"
#include "platform/store/engine/place.h"

namespace veldona {

[[nodiscard]] std::unique_ptr<store::Engine> openBooks(const store::Place& place,
                                                       std::chrono::milliseconds wait);
[[nodiscard]] std::unique_ptr<store::Engine> openBooksToRead(const store::Place& place,
                                                             std::chrono::milliseconds wait);

// Of a file alone.
[[nodiscard]] std::unique_ptr<store::Engine> openBooks(const std::string& nativePath,
                                                       std::chrono::milliseconds wait);
// Leaves the file as it is, also beside a program at work on it.
[[nodiscard]] std::unique_ptr<store::Engine> openBooksToRead(const std::string& nativePath,
                                                             std::chrono::milliseconds wait);
// The file as it stands by itself, which nobody has open: nothing beside it is looked at or made.
[[nodiscard]] std::unique_ptr<store::Engine> openBooksAlone(const std::string& nativePath);

} // namespace veldona
