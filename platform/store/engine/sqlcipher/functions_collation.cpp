#include <sqlcipher/sqlite3.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string_view>

#include "platform/store/engine/sqlcipher/functions.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store {
namespace {

UCollator* openAlphabet() {
    UErrorCode status = U_ZERO_ERROR;
    UCollator* alphabet = ucol_open("tr", &status);
    if (U_FAILURE(status)) throw std::runtime_error("the Turkish alphabet is missing from the machine's ICU");
    // Accents count, capitals do not.
    ucol_setStrength(alphabet, UCOL_SECONDARY);
    return alphabet;
}

bool isDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char letter) { return letter >= '0' && letter <= '9'; });
}

// Account numbers are most of what is looked up: equal bytes and plain digits need no alphabet.
int compare(void* alphabet, int lengthA, const void* a, int lengthB, const void* b) {
    const std::string_view left(static_cast<const char*>(a), static_cast<std::size_t>(lengthA));
    const std::string_view right(static_cast<const char*>(b), static_cast<std::size_t>(lengthB));
    if (left == right) return 0;
    if (isDigits(left) && isDigits(right)) return left.compare(right) < 0 ? -1 : 1;
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(static_cast<UCollator*>(alphabet), left.data(), lengthA, right.data(), lengthB,
                            &status);
}

} // namespace

namespace sql {

void registerCollation(sqlite3* connection) {
    const auto close = [](void* alphabet) { ucol_close(static_cast<UCollator*>(alphabet)); };
    UCollator* alphabet = openAlphabet();
    const int result =
        sqlite3_create_collation_v2(connection, "TURKISH", SQLITE_UTF8, alphabet, compare, close);
    if (result == SQLITE_OK) return;
    ucol_close(alphabet); // the engine does so for functions, not for a collation
    throw std::bad_alloc();
}

} // namespace sql

const char* collationVersion() {
    static const std::array<char, U_MAX_VERSION_STRING_LENGTH> written = [] {
        UCollator* alphabet = openAlphabet();
        UVersionInfo version;
        ucol_getVersion(alphabet, version);
        ucol_close(alphabet);
        std::array<char, U_MAX_VERSION_STRING_LENGTH> digits{};
        u_versionToString(version, digits.data());
        return digits;
    }();
    return written.data();
}

} // namespace veldona::store
