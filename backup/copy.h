// A copy of the books that has its name only when it was looked through.
#pragma once

#include <optional>
#include <string>

#include "backup/fingerprint.h"
#include "backup/onlooker.h"
#include "platform/runtime/secret.h"

namespace veldona::backup {

// Copies the books that `books` stands for, in their file or on their server and perhaps in use, to
// `temporary`, an encrypted file which its owner takes away; then proves the copy by itself and holds its
// fingerprint against the one of the books at the moment of the copy. The copy has the password `under`, else
// that of the books. Raises Refusal or StoreError.
Fingerprint copyToTemporary(const std::string& books, const std::string& temporary,
                            const Onlooker& onlooker = {}, const std::optional<Secret>& under = {});
// The same of the file `books` that the caller has opened as `original`.
Fingerprint copyToTemporary(store::Engine& original, const std::string& books, const std::string& temporary,
                            const Secret& under, const Onlooker& onlooker = {});

// The same to `file`, which must not be there. What fails leaves no file.
Fingerprint copyBooks(const std::string& books, const std::string& file, const Onlooker& onlooker = {});

} // namespace veldona::backup
