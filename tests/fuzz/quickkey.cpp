// In place of the crypto library's function of this name: a key in no time instead of in 64,000 rounds, so
// that a fuzzer can open a shop's file thousands of times. Its files are of no use to anybody else.
#include <cstddef>

extern "C" int PKCS5_PBKDF2_HMAC_SHA1(const char* password, int passwordLength, const unsigned char* salt,
                                      int saltLength, int rounds, int keyLength, unsigned char* key);

int PKCS5_PBKDF2_HMAC_SHA1(const char* password, int passwordLength, const unsigned char* salt,
                           int saltLength, int rounds, int keyLength, unsigned char* key) {
    unsigned mixed = static_cast<unsigned>(rounds);
    const auto mix = [&mixed](unsigned char byte) { mixed = (mixed ^ byte) * 16'777'619U; };
    for (int i = 0; i < passwordLength; ++i)
        mix(static_cast<unsigned char>(password[i]));
    for (int i = 0; i < saltLength; ++i)
        mix(salt[i]);
    for (int i = 0; i < keyLength; ++i) {
        mix(static_cast<unsigned char>(i));
        key[i] = static_cast<unsigned char>(mixed >> 16);
    }
    return 1;
}
