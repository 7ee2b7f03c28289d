// The shop's books as a file of this machine, for whoever is no screen: a tool, a backup. A file that holds
// anything that was not delivered is refused before anything is changed (StoreError, Damaged).
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/store/engine/engine.h"

namespace veldona {

[[nodiscard]] std::unique_ptr<store::Engine> openBooks(const std::string& nativePath,
                                                       std::chrono::milliseconds wait);
// Leaves the file as it is, also beside a program at work on it.
[[nodiscard]] std::unique_ptr<store::Engine> openBooksToRead(const std::string& nativePath,
                                                             std::chrono::milliseconds wait);
// The file as it stands by itself, which nobody has open: nothing beside it is looked at or made.
[[nodiscard]] std::unique_ptr<store::Engine> openBooksAlone(const std::string& nativePath);

} // namespace veldona
