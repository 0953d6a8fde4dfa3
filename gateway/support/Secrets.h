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

/// argon2id, in the library's own string form.
[[nodiscard]] std::string hashOfPassword(std::string_view password);
[[nodiscard]] bool passwordMatches(const std::string& hash, std::string_view password);

} // namespace vorq::gateway
