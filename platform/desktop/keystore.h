// The desktop's store of passwords: encrypted by the user's own login, open while the user is logged in.
#pragma once

#include <optional>
#include <string>

#include "platform/runtime/secret.h"

namespace veldona {

class KeyStore {
public:
    virtual ~KeyStore() = default;
    // The password kept for these books; nothing also where there is no store, or it is locked.
    [[nodiscard]] virtual std::optional<Secret> find(const std::string& books) = 0;
    // "" where it is kept, else why not, in a sentence. It is never kept anywhere else.
    [[nodiscard]] virtual std::string keep(const std::string& books, const Secret& password) = 0;
    virtual void forget(const std::string& books) = 0;
};

} // namespace veldona
