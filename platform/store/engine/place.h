// Where books live: an encrypted file of this machine, or a schema of a server that several tills open.
#pragma once

#include <string>
#include <variant>

#include "platform/store/engine/postgres/serveraddress.h"

namespace veldona::store {

struct FilePlace {
    std::string path; // of this machine
};

inline constexpr const char* kBooksSchema = "vorel";

struct ServerPlace {
    // The schema is the one that the address names by options='-c search_path=…', so that several shops can
    // live in one database; else kBooksSchema.
    explicit ServerPlace(ServerAddress itsAddress);

    ServerAddress address;
    std::string schema;
};

using Place = std::variant<FilePlace, ServerPlace>;

// The books that a path stands for: on the server that the file beside it names, where one stands there.
// Raises StoreError where that file can't be understood.
[[nodiscard]] Place placeOf(const std::string& booksPath);

} // namespace veldona::store
