// Records of a BIFF8 stream: a number, a length, bytes, all little endian.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldona::exports {

class LittleEndian {
public:
    LittleEndian& byte(unsigned value) {
        bytes_ += static_cast<char>(value & 0xFF);
        return *this;
    }
    LittleEndian& word(unsigned value) { return byte(value).byte(value >> 8); }
    LittleEndian& dword(std::uint32_t value) { return word(value & 0xFFFF).word(value >> 16); }
    LittleEndian& real(double value) {
        const auto bits = std::bit_cast<std::uint64_t>(value);
        return dword(static_cast<std::uint32_t>(bits)).dword(static_cast<std::uint32_t>(bits >> 32));
    }
    LittleEndian& raw(std::string_view bytes) {
        bytes_ += bytes;
        return *this;
    }
    LittleEndian& units(std::u16string_view text) {
        for (const char16_t unit : text)
            word(unit);
        return *this;
    }
    LittleEndian& zeros(std::size_t count) {
        bytes_.append(count, '\0');
        return *this;
    }
    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    [[nodiscard]] std::string take() { return std::move(bytes_); }

private:
    std::string bytes_;
};

// Appends a record to `stream`.
void appendRecord(std::string& stream, unsigned number, const LittleEndian& content);
// A text behind its length, counted in one byte or in two, as 16-bit letters. At most `most` letters of it.
[[nodiscard]] LittleEndian shortText(std::string_view text, std::size_t most = 255);
[[nodiscard]] LittleEndian longText(std::string_view text, std::size_t most = 4000);

} // namespace veldona::exports
