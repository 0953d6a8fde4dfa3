#pragma once

#include "storage/Database.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace vorq::gateway {

/// Whose token it is, and the sign-in it descends from.
struct TokenOwner {
    std::int64_t accountId = 0;
    std::int64_t familyId = 0;

    bool operator==(const TokenOwner&) const = default;
};

struct RefreshTokenRow {
    TokenOwner owner;
    std::int64_t expiresAt = 0;
    std::optional<std::int64_t> usedAt; ///< TokenTable::superseded for one that never was
};

/// Tokens and one-time codes. Only hashes of the secrets are kept, so a stolen file signs nobody
/// in. Borrows the database; its owner locks. All times in milliseconds since 1970.
class TokenTable {
  public:
    /// In the place of a time of use: what replaced the token was asked for without it.
    static constexpr std::int64_t superseded = -1;

    explicit TokenTable(Database& database) : database_(database) {}

    [[nodiscard]] std::int64_t startFamily(std::int64_t accountId, std::int64_t nowMs);
    void addAccess(std::string_view secret, std::int64_t familyId, std::int64_t expiresAt);
    void addRefresh(std::string_view secret, std::int64_t familyId, std::int64_t expiresAt);
    void addHandoff(std::string_view secret, std::int64_t accountId, std::int64_t expiresAt);

    [[nodiscard]] std::optional<TokenOwner> accessOwner(std::string_view secret,
                                                        std::int64_t nowMs);
    [[nodiscard]] std::optional<RefreshTokenRow> refresh(std::string_view secret);
    void markRefreshUsed(std::string_view secret, std::int64_t nowMs);
    /// Makes what followed from a used refresh token worthless, so that presenting it counts as
    /// theft. False, with nothing changed, if some of it was used.
    [[nodiscard]] bool supersedeSuccessors(std::string_view secret, const RefreshTokenRow& row);
    /// Removes the code and gives its account, if the code was still valid.
    [[nodiscard]] std::optional<std::int64_t> takeHandoff(std::string_view secret,
                                                          std::int64_t nowMs);

    void dropFamily(std::int64_t familyId);
    void dropOtherFamilies(const TokenOwner& kept);
    void dropExpired(std::int64_t nowMs);

  private:
    void add(const char* sql, std::string_view secret, std::int64_t owner, std::int64_t expiresAt);
    Database& database_;
};

} // namespace vorq::gateway
