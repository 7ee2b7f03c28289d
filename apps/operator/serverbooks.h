// The books of one scenario on a server: a schema of their own, which the file beside the books' place names.
// Both are removed with this.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "platform/store/engine/place.h"

namespace veldona::console {

class ServerBooks {
public:
    explicit ServerBooks(store::ServerAddress address) : address_(std::move(address)) {}
    ~ServerBooks();
    ServerBooks(const ServerBooks&) = delete;
    ServerBooks& operator=(const ServerBooks&) = delete;

    // The books as delivered, for the place where a file of books would be; in place of those made before.
    // Raises StoreError.
    void make(const std::string& booksPath);

private:
    void remove();

    store::ServerAddress address_;
    std::optional<store::ServerPlace> place_; // nothing until they are made
    std::string file_;
};

} // namespace veldona::console
