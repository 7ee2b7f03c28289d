#include "apps/aktar/jetheader.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <optional>
#include <system_error>

#include "apps/aktar/jettext.h"
#include "apps/hazirla/delivered.h"

namespace veldona::aktar {
namespace {

using hazirla::Refusal;

constexpr std::size_t kPageSize = 4096;
constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kMaskedFrom = 0x18;
constexpr std::size_t kMaskedBytes = 128;
constexpr std::size_t kPasswordAt = 0x42;
constexpr std::size_t kPasswordBytes = 40;
constexpr std::size_t kCreatedAt = 0x72;

using Page = std::array<char, kPageSize>;

// The header's mask: the cipher RC4 with a key that is the same in every file.
void unmask(Page& page) {
    constexpr std::array<std::uint8_t, 4> key = {0xC7, 0xDA, 0x39, 0x6B};
    std::array<std::uint8_t, 256> state{};
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + key[i % key.size()]);
        std::swap(state[i], state[j]);
    }
    j = 0;
    for (std::size_t n = 0; n < kMaskedBytes; ++n) {
        const auto i = static_cast<std::uint8_t>(n + 1);
        j = static_cast<std::uint8_t>(j + state[i]);
        std::swap(state[i], state[j]);
        const std::uint8_t mask = state[static_cast<std::uint8_t>(state[i] + state[j])];
        char& byte = page[kMaskedFrom + n];
        byte = static_cast<char>(static_cast<std::uint8_t>(byte) ^ mask);
    }
}

[[noreturn]] void refuseDamaged(const std::string& path) {
    throw Refusal(path + " bozuk: dosyanın başlığı okunamıyor. Hiçbir şey aktarılmadı.");
}

// Masked once more, by the day on which the file was made.
std::string passwordOf(const Page& page, const std::string& path) {
    double created = 0;
    std::memcpy(&created, &page[kCreatedAt], sizeof created);
    if (!(std::abs(created) < 3'000'000)) refuseDamaged(path);
    const auto day = static_cast<std::int32_t>(created);
    std::array<char, sizeof day> mask{};
    std::memcpy(mask.data(), &day, sizeof day);
    std::string bytes(&page[kPasswordAt], kPasswordBytes);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(bytes[i] ^ mask[i % mask.size()]);
    std::size_t length = 0;
    while (length < bytes.size() && (bytes[length] != 0 || bytes[length + 1] != 0))
        length += 2;
    const std::optional<std::string> password = decodeJetText(std::string_view(bytes).substr(0, length));
    if (!password) refuseDamaged(path);
    return *password;
}

Page readFirstPage(const std::string& path) {
    std::error_code failed;
    if (!std::filesystem::is_regular_file(path, failed)) throw Refusal(path + " diye bir dosya yok.");
    const std::uintmax_t size = std::filesystem::file_size(path, failed);
    std::ifstream file(path, std::ios::binary);
    if (failed || !file) throw Refusal(path + " açılamıyor.");
    Page page{};
    file.read(page.data(), page.size());
    constexpr std::string_view mark("\0\1\0\0Standard Jet DB", 19);
    if (std::string_view(page.data(), mark.size()) != mark) throw Refusal(path + " bir Jet dosyası değil.");
    if (page[kVersionAt] != 1)
        throw Refusal(path + " başka bir Jet sürümünden; yalnızca Jet 4 (2000-2003) dosyaları aktarılır.");
    if (size % kPageSize != 0 || size < 3 * kPageSize)
        throw Refusal(path + " eksik: dosyanın sonu kesilmiş. Hiçbir şey aktarılmadı.");
    return page;
}

} // namespace

void checkJetHeader(const std::string& path, std::string_view password) {
    Page page = readFirstPage(path);
    unmask(page);
    const std::string stored = passwordOf(page, path);
    if (stored == password || stored.empty()) return;
    if (password.empty()) throw PasswordLacks(path + " parolalı. Parolasını --parola ile verin.");
    throw Refusal(path + " dosyasının parolası bu değil.");
}

} // namespace veldona::aktar
