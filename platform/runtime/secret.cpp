#include "platform/runtime/secret.h"

#include <cstring>

namespace veldona {

Secret Secret::taken(std::string& text) {
    Secret secret(text);
    wipe(text.data(), text.size());
    text.clear();
    return secret;
}

// A plain memset on what is never read again is left out by the compiler.
void Secret::wipe(char* bytes, std::size_t size) {
    if (size > 0) explicit_bzero(bytes, size);
}

} // namespace veldona
