// Reads a workbook back out of its archive.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <zlib.h>

#include "tests/support/files.h"

namespace veldona::test {

inline std::uint32_t numberAt(const std::string& bytes, std::size_t at, std::size_t size) {
    std::uint32_t number = 0;
    std::memcpy(&number, bytes.data() + at, size);
    return number;
}

// A file of a zip archive, found through the archive's own list.
inline std::string partOf(const std::string& archive, const std::string& part) {
    const std::string bytes = bytesOf(archive);
    const std::string listed("PK\1\2");
    for (std::size_t at = bytes.find(listed); at != std::string::npos; at = bytes.find(listed, at + 4)) {
        if (bytes.substr(at + 46, numberAt(bytes, at + 28, 2)) != part) continue;
        const std::size_t head = numberAt(bytes, at + 42, 4);
        const std::size_t start = head + 30 + numberAt(bytes, head + 26, 2) + numberAt(bytes, head + 28, 2);
        std::string packed = bytes.substr(start, numberAt(bytes, at + 20, 4));
        std::string text(numberAt(bytes, at + 24, 4), '\0');
        z_stream stream{};
        stream.next_in = reinterpret_cast<Bytef*>(packed.data());
        stream.avail_in = static_cast<uInt>(packed.size());
        stream.next_out = reinterpret_cast<Bytef*>(text.data());
        stream.avail_out = static_cast<uInt>(text.size());
        EXPECT_EQ(inflateInit2(&stream, -MAX_WBITS), Z_OK);
        EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
        inflateEnd(&stream);
        return text;
    }
    return {};
}

} // namespace veldona::test
