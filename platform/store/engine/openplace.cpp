#include "platform/store/engine/openplace.h"

#include "platform/store/engine/openserver.h"

namespace veldona::store {

namespace {

std::string schemaOf(const ServerAddress& address) {
    constexpr std::string_view setting = "search_path=";
    const auto options = address.keywords().find("options");
    if (options == address.keywords().end()) return kBooksSchema;
    const std::size_t at = options->second.find(setting);
    if (at == std::string::npos) return kBooksSchema;
    const std::size_t begin = at + setting.size();
    return options->second.substr(begin, options->second.find_first_of(" ,", begin) - begin);
}

} // namespace

ServerPlace::ServerPlace(ServerAddress itsAddress)
    : address(std::move(itsAddress)), schema(schemaOf(address)) {}

Place placeOf(const std::string& booksPath) {
    if (auto address = ServerAddress::beside(booksPath)) return ServerPlace{std::move(*address)};
    return FilePlace{booksPath};
}

std::string shown(const Place& place) {
    if (const auto* server = std::get_if<ServerPlace>(&place)) return server->address.shown();
    return std::get<FilePlace>(place).path;
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
