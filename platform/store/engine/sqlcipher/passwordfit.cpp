#include "platform/store/engine/passwordfit.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <sqlcipher/sqlite3.h>

namespace veldona::store {
namespace {

// The form of a file's pages: 16 bytes of salt in place of the first one's head; at the end of each page the
// start vector, a seal over all before it and the page's number, and a rest that means nothing.
constexpr int kPage = 4096, kSalt = 16, kSeal = 20, kRest = 12;
constexpr int kSealed = kPage - kSeal - kRest; // what the seal is over ends here
constexpr int kRounds = 64'000, kSealRounds = 2, kKey = 32;
constexpr unsigned char kSealSalt = 0x3a;
constexpr sqlite3_int64 kMostLooks = 64;

using Salt = std::array<unsigned char, kSalt>;
using Key = std::array<unsigned char, kKey>;
using Page = std::array<unsigned char, kPage>;

// Read through the engine's descriptor: closing one of our own would drop the locks that this process holds.
class Pages {
public:
    explicit Pages(const std::string& path) {
        sqlite3* opened = nullptr;
        sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
        connection_.reset(opened);
        sqlite3_file_control(opened, "main", SQLITE_FCNTL_FILE_POINTER, &file_);
        if (file_ != nullptr && file_->pMethods == nullptr) file_ = nullptr;
    }
    [[nodiscard]] sqlite3_int64 count() const {
        sqlite3_int64 size = 0;
        if (file_ == nullptr || file_->pMethods->xFileSize(file_, &size) != SQLITE_OK) return 0;
        return size / kPage;
    }
    // From 1.
    [[nodiscard]] bool read(sqlite3_int64 number, Page& page) const {
        return file_->pMethods->xRead(file_, page.data(), kPage, (number - 1) * kPage) == SQLITE_OK;
    }

private:
    std::unique_ptr<sqlite3, int (*)(sqlite3*)> connection_{nullptr, sqlite3_close_v2};
    sqlite3_file* file_ = nullptr;
};

class SealKey {
public:
    SealKey(std::string_view password, Salt salt) {
        Key key;
        PKCS5_PBKDF2_HMAC_SHA1(password.data(), static_cast<int>(password.size()), salt.data(), kSalt,
                               kRounds, kKey, key.data());
        for (unsigned char& byte : salt)
            byte ^= kSealSalt;
        PKCS5_PBKDF2_HMAC_SHA1(reinterpret_cast<const char*>(key.data()), kKey, salt.data(), kSalt,
                               kSealRounds, kKey, key_.data());
        OPENSSL_cleanse(key.data(), key.size());
    }
    ~SealKey() { OPENSSL_cleanse(key_.data(), key_.size()); }
    SealKey(const SealKey&) = delete;
    SealKey& operator=(const SealKey&) = delete;

    [[nodiscard]] bool hasSealed(const Page& page, sqlite3_int64 number) const {
        const int from = number == 1 ? kSalt : 0;
        std::array<unsigned char, kSealed + 4> sealed;
        const auto size = static_cast<std::size_t>(kSealed - from);
        std::copy_n(page.data() + from, size, sealed.begin());
        for (std::size_t i = 0; i < 4; ++i)
            sealed[size + i] = static_cast<unsigned char>(number >> (8 * i));
        std::array<unsigned char, EVP_MAX_MD_SIZE> seal;
        unsigned length = 0;
        HMAC(EVP_sha1(), key_.data(), kKey, sealed.data(), size + 4, seal.data(), &length);
        return length == kSeal && std::memcmp(seal.data(), page.data() + kSealed, kSeal) == 0;
    }

private:
    Key key_;
};

} // namespace

Fit fitOf(const std::string& nativePath, std::string_view password) {
    const Pages pages(nativePath);
    const sqlite3_int64 count = pages.count();
    Page page;
    if (count == 0 || !pages.read(1, page)) return Fit::Unknown;
    Salt salt;
    std::copy_n(page.begin(), kSalt, salt.begin());
    const SealKey key(password, salt);
    if (key.hasSealed(page, 1)) return Fit::Fits;
    const sqlite3_int64 step = std::max<sqlite3_int64>(1, count / kMostLooks);
    for (sqlite3_int64 number = 2; number <= count; number += step)
        if (pages.read(number, page) && key.hasSealed(page, number)) return Fit::FitsDamaged;
    return Fit::Unknown;
}

bool looksSealed(const std::string& nativePath) {
    constexpr std::string_view plain = "SQLite format 3";
    const Pages pages(nativePath);
    Page page;
    return pages.count() > 0 && pages.read(1, page) && !std::equal(plain.begin(), plain.end(), page.begin());
}

} // namespace veldona::store
