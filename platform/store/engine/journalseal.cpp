#include "platform/store/engine/journalseal.h"

#include <openssl/evp.h>
#include <openssl/params.h>
#include <openssl/rand.h>

#include <array>
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

} // namespace

struct JournalKey::Hash {
    explicit Hash(std::string_view key) {
        const std::unique_ptr<EVP_MAC, decltype(&EVP_MAC_free)> kind(EVP_MAC_fetch(nullptr, "HMAC", nullptr),
                                                                     EVP_MAC_free);
        context.reset(EVP_MAC_CTX_new(kind.get()));
        std::string digest = "SHA256";
        const std::array<OSSL_PARAM, 2> parameters = {
            OSSL_PARAM_construct_utf8_string("digest", digest.data(), 0), OSSL_PARAM_construct_end()};
        if (!context || EVP_MAC_init(context.get(), bytesOf(key), key.size(), parameters.data()) != 1)
            throw std::bad_alloc();
    }
    // Without a key, the one of before goes on.
    std::string of(std::string_view message) {
        std::string hash(EVP_MAX_MD_SIZE, '\0');
        std::size_t size = 0;
        if (EVP_MAC_init(context.get(), nullptr, 0, nullptr) != 1 ||
            EVP_MAC_update(context.get(), bytesOf(message), message.size()) != 1 ||
            EVP_MAC_final(context.get(), reinterpret_cast<unsigned char*>(hash.data()), &size, hash.size()) !=
                1)
            throw std::bad_alloc();
        hash.resize(size);
        return hash;
    }
    static const unsigned char* bytesOf(std::string_view text) {
        return reinterpret_cast<const unsigned char*>(text.data());
    }

    std::unique_ptr<EVP_MAC_CTX, decltype(&EVP_MAC_CTX_free)> context{nullptr, EVP_MAC_CTX_free};
};

void JournalKey::Freed::operator()(Hash* hash) const {
    delete hash;
}

std::string newJournalKey() {
    std::string key(kKeyBytes, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char*>(key.data()), static_cast<int>(key.size())) != 1)
        throw StoreError(StoreError::Kind::InputOutput, "Bu bilgisayar gizli bir anahtar üretemedi.");
    return hexOf(key);
}

JournalKey::JournalKey(std::string_view keptInBooks)
    : key_(Hash(kOfTheProgram).of(keptInBooks)), hash_(new Hash(key_)) {}

// The length before each value: else two values could be told from other two only by where one ends.
std::string JournalKey::seal(std::string_view before, const Values& values) {
    message_ = before;
    for (const auto& value : values) {
        if (value) {
            message_ += std::to_string(value->size());
            message_ += ':';
            message_ += *value;
        } else {
            message_ += '-';
        }
    }
    return hexOf(std::string_view(hash_->of(message_)).substr(0, kSealBytes));
}

std::string JournalKey::padded(char with) const {
    std::string pad(kBlockBytes, with);
    for (std::size_t i = 0; i < key_.size(); ++i)
        pad[i] = static_cast<char>(pad[i] ^ key_[i]);
    return hexOf(pad);
}

} // namespace veldona::store
