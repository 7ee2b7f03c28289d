#include "platform/store/engine/journalseal.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/rand.h>

#include <new>

#include "platform/store/dialect/storeerror.h"

namespace veldona::store {
namespace {

constexpr std::string_view kOfTheProgram = "veldona.gunluk.9f3c71e0a58d4b26";
constexpr std::size_t kKeyBytes = 32, kSealBytes = 16, kBlockBytes = 64;

std::string hexOf(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string hex;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        hex.append({digits[value >> 4], digits[value & 15]});
    }
    return hex;
}

std::string keyedHash(std::string_view key, std::string_view message) {
    std::string hash(EVP_MAX_MD_SIZE, '\0');
    unsigned int size = 0;
    if (HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()),
             reinterpret_cast<const unsigned char*>(message.data()), message.size(),
             reinterpret_cast<unsigned char*>(hash.data()), &size) == nullptr)
        throw std::bad_alloc();
    hash.resize(size);
    return hash;
}

} // namespace

std::string newJournalKey() {
    std::string key(kKeyBytes, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char*>(key.data()), static_cast<int>(key.size())) != 1)
        throw StoreError(StoreError::Kind::InputOutput, "Bu bilgisayar gizli bir anahtar üretemedi.");
    return hexOf(key);
}

JournalKey::JournalKey(std::string_view keptInBooks) : key_(keyedHash(kOfTheProgram, keptInBooks)) {}

// The length before each value: else two values could be told from other two only by where one ends.
std::string JournalKey::seal(std::string_view before,
                             std::span<const std::optional<std::string>> values) const {
    std::string message(before);
    for (const auto& value : values) {
        if (value) {
            message += std::to_string(value->size());
            message += ':';
            message += *value;
        } else {
            message += '-';
        }
    }
    return hexOf(keyedHash(key_, message).substr(0, kSealBytes));
}

std::string JournalKey::padded(char with) const {
    std::string pad(kBlockBytes, with);
    for (std::size_t i = 0; i < key_.size(); ++i)
        pad[i] = static_cast<char>(pad[i] ^ key_[i]);
    return hexOf(pad);
}

} // namespace veldona::store
