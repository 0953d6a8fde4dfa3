#pragma once

#include <string>
#include <string_view>

namespace vorq::gateway {

/// Readies the cryptography library. Throws std::runtime_error if it refuses.
void initSecrets();

/// A fresh secret of 256 random bits, safe in a URL.
[[nodiscard]] std::string randomSecret();

/// What is stored in place of a secret: its SHA-256 as raw bytes.
[[nodiscard]] std::string hashOfSecret(std::string_view secret);

/// What only the holder of `secret` can name, and which does not tell the secret: one for each
/// purpose.
[[nodiscard]] std::string derivedToken(std::string_view secret, std::string_view purpose);
/// Compares in a time that does not depend on where the two differ.
[[nodiscard]] bool isSameSecret(std::string_view one, std::string_view other);

/// argon2id, in the library's own string form.
[[nodiscard]] std::string hashOfPassword(std::string_view password);
[[nodiscard]] bool passwordMatches(const std::string& hash, std::string_view password);

} // namespace vorq::gateway
