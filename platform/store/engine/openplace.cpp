#include "platform/store/engine/openplace.h"

#include "platform/store/engine/openserver.h"

namespace veldona::store {

Place placeOf(const std::string& booksPath) {
    if (auto address = ServerAddress::beside(booksPath)) return ServerPlace{std::move(*address)};
    return FilePlace{booksPath};
}

std::unique_ptr<Engine> openToWork(const Place& place, std::string_view password, const Opening& opening,
                                   const Delivered& delivered) {
    if (const auto* server = std::get_if<ServerPlace>(&place))
        return openServerToWork(*server, opening, delivered);
    return openFileToWork(std::get<FilePlace>(place).path, password, opening, delivered);
}

std::unique_ptr<Engine> open(const Place& place, std::string_view password, std::chrono::milliseconds wait,
                             const Delivered& delivered) {
    if (const auto* server = std::get_if<ServerPlace>(&place)) return openServer(*server, wait, delivered);
    return openFile(std::get<FilePlace>(place).path, password, wait, delivered);
}

std::unique_ptr<Engine> openToRead(const Place& place, std::string_view password,
                                   std::chrono::milliseconds wait, const Delivered& delivered) {
    if (const auto* server = std::get_if<ServerPlace>(&place))
        return openServerToRead(*server, wait, delivered);
    return openFileToRead(std::get<FilePlace>(place).path, password, wait, delivered);
}

} // namespace veldona::store
