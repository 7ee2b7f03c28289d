// The key store of the desktop's own secret service. Where none runs, as in a bare terminal, it says so and
// keeps nothing.
#pragma once

#include "platform/desktop/keystore.h"

namespace veldona {

class DesktopKeys : public KeyStore {
public:
    // Asks nobody to unlock it, and waits some seconds at most: a program without a window may look, too.
    [[nodiscard]] std::optional<Secret> find(const std::string& books) override;
    [[nodiscard]] std::string keep(const std::string& books, const Secret& password) override;
    void forget(const std::string& books) override;
};

} // namespace veldona
