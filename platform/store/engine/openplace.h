// Books opened wherever they live (openfile.h, openserver.h). The password is that of a file.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/place.h"

namespace veldona::store {

// For the operator: the file, or the server.
[[nodiscard]] std::string shown(const Place& place);

[[nodiscard]] std::unique_ptr<Engine> openToWork(const Place& place, std::string_view password,
                                                 const Opening& opening, const Delivered& delivered);
[[nodiscard]] std::unique_ptr<Engine> open(const Place& place, std::string_view password,
                                           std::chrono::milliseconds wait, const Delivered& delivered);
[[nodiscard]] std::unique_ptr<Engine> openToRead(const Place& place, std::string_view password,
                                                 std::chrono::milliseconds wait, const Delivered& delivered);

} // namespace veldona::store
