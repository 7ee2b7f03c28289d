// The books of one scenario on a server: a schema of their own, removed with this.
#pragma once

#include <optional>

#include "platform/store/engine/place.h"

namespace veldona::console {

class ServerBooks {
public:
    explicit ServerBooks(store::ServerAddress address) : address_(std::move(address)) {}
    ~ServerBooks();
    ServerBooks(const ServerBooks&) = delete;
    ServerBooks& operator=(const ServerBooks&) = delete;

    // The books as delivered, in place of those made before. Raises StoreError.
    void make();
    [[nodiscard]] const std::optional<store::ServerPlace>& place() const { return place_; }

private:
    void remove();

    store::ServerAddress address_;
    std::optional<store::ServerPlace> place_; // nothing until they are made
};

} // namespace veldona::console
