// The files of books, opened, made and settled: who stands above names no engine.
//
// A file that holds anything that was not delivered, a backup that was prepared, raises StoreError (Damaged)
// before anything is changed. To who only looks, what older books lack is there and empty. Without delivered
// tables any file is taken.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/datetime.h"
#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// How the program works on its books.
struct Opening {
    std::chrono::milliseconds wait; // for another workstation's lock
    std::function<DateTime()> clock;
    std::shared_ptr<LockWait> lockWait;
    bool keepsFormer = true; // older books, as a copy beside, before they get tables or columns
};
// Brings the file up to what is delivered today, as far as that can be done now, and sorts its texts anew
// where the alphabet is another one. Raises StoreError.
[[nodiscard]] std::unique_ptr<Engine> openFileToWork(const std::string& nativePath, std::string_view password,
                                                     const Opening& opening, const Delivered& delivered);

// For whoever is no screen: a tool, a backup.
[[nodiscard]] std::unique_ptr<Engine> openFile(const std::string& nativePath, std::string_view password,
                                               std::chrono::milliseconds wait, const Delivered& delivered);
// Leaves the file as it is, also beside a program at work on it.
[[nodiscard]] std::unique_ptr<Engine> openFileToRead(const std::string& nativePath, std::string_view password,
                                                     std::chrono::milliseconds wait,
                                                     const Delivered& delivered);
// The file as it stands by itself, which nobody has open: nothing beside it is looked at or made.
[[nodiscard]] std::unique_ptr<Engine> openFileAlone(const std::string& nativePath, std::string_view password,
                                                    const Delivered& delivered);

// An empty file, readable by its owner alone, where there is none. It is written without a journal: only for
// a file that is thrown away where its making fails.
[[nodiscard]] std::unique_ptr<Engine> createFile(const std::string& nativePath, std::string_view password);
// Moves what a journal beside the file holds into the file, so that it is whole by itself. Raises StoreError,
// also where somebody else has the file open.
void settleFile(const std::string& nativePath, std::string_view password);

} // namespace veldona::store
