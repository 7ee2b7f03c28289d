// Opens a file that must hold nothing but what is delivered, for whoever is no screen: a tool, a backup.
//
// A file that holds anything else, a backup that was prepared, raises StoreError (Damaged) before anything is
// changed. To who only looks, what older books lack is there and empty.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

[[nodiscard]] std::unique_ptr<Engine> openFile(const std::string& nativePath, std::string_view password,
                                               std::chrono::milliseconds wait, const Delivered& delivered);
// Leaves the file as it is, also beside a program at work on it.
[[nodiscard]] std::unique_ptr<Engine> openFileToRead(const std::string& nativePath, std::string_view password,
                                                     std::chrono::milliseconds wait,
                                                     const Delivered& delivered);
// The file as it stands by itself, which nobody has open: nothing beside it is looked at or made.
[[nodiscard]] std::unique_ptr<Engine> openFileAlone(const std::string& nativePath, std::string_view password,
                                                    const Delivered& delivered);

} // namespace veldona::store
