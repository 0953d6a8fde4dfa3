#include "support/Secrets.h"

#include <sodium.h>

#include <array>
#include <new>
#include <span>
#include <stdexcept>

namespace vorq::gateway {

namespace {

/// In characters that are safe in a URL.
std::string textOfBytes(std::span<const unsigned char> bytes) {
    constexpr int variant = sodium_base64_VARIANT_URLSAFE_NO_PADDING;
    std::string text(sodium_base64_ENCODED_LEN(bytes.size(), variant), '\0');
    sodium_bin2base64(text.data(), text.size(), bytes.data(), bytes.size(), variant);
    text.pop_back(); // the terminating NUL
    return text;
}

} // namespace

void initSecrets() {
    if (sodium_init() < 0) throw std::runtime_error("The cryptography library did not start.");
}

std::string randomSecret() {
    std::array<unsigned char, 32> bytes{};
    randombytes_buf(bytes.data(), bytes.size());
    return textOfBytes(bytes);
}

std::string hashOfSecret(std::string_view secret) {
    std::string digest(crypto_hash_sha256_BYTES, '\0');
    crypto_hash_sha256(reinterpret_cast<unsigned char*>(digest.data()),
                       reinterpret_cast<const unsigned char*>(secret.data()), secret.size());
    return digest;
}

std::string derivedToken(std::string_view secret, std::string_view purpose) {
    const std::string digest = hashOfSecret(std::string(purpose) + '\0' + std::string(secret));
    return textOfBytes({reinterpret_cast<const unsigned char*>(digest.data()), digest.size()});
}

bool isSameSecret(std::string_view one, std::string_view other) {
    return one.size() == other.size() && sodium_memcmp(one.data(), other.data(), one.size()) == 0;
}

std::string hashOfPassword(std::string_view password) {
    std::array<char, crypto_pwhash_argon2id_STRBYTES> text{};
    if (crypto_pwhash_argon2id_str(text.data(), password.data(), password.size(),
                                   crypto_pwhash_argon2id_OPSLIMIT_INTERACTIVE,
                                   crypto_pwhash_argon2id_MEMLIMIT_INTERACTIVE) != 0) {
        throw std::bad_alloc();
    }
    return text.data();
}

bool passwordMatches(const std::string& hash, std::string_view password) {
    return crypto_pwhash_argon2id_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

} // namespace vorq::gateway
