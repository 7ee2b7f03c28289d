// What the bytes of one field mean. Nothing is taken for granted: bytes that are no value of their type are
// told from a value.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

#include <mdbtools.h> // behind the others: it takes the headers that it needs as C

#include "platform/runtime/value.h"

namespace veldona::aktar {

template <class T> T numberAt(const void* bytes) {
    T number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

// Bytes of a type whose fields are all of one size; 0 for the others.
[[nodiscard]] std::size_t sizeOfFixed(int type);

// Whether values of the type are read at all. A flag is, but it has no bytes of its own.
[[nodiscard]] bool isReadable(int type);

// `bytes` are a field that is not Null, of a readable type other than a flag. A long text is fetched from the
// pages that hold it, by way of the file's second page buffer, and what it takes goes off `longLeft`: the
// long texts of a table are never longer than its file, but a damaged one may point to itself. Nothing where
// the bytes are no such value.
[[nodiscard]] std::optional<Value> valueOf(MdbHandle* mdb, int type, std::string_view bytes,
                                           std::uint64_t& longLeft);

} // namespace veldona::aktar
