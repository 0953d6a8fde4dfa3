#pragma once

#include "storage/Database.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorq::gateway {

/// Whose token it is, and the sign-in it descends from.
struct TokenOwner {
    std::int64_t accountId = 0;
    std::int64_t familyId = 0;

    bool operator==(const TokenOwner&) const = default;
};

/// Where a sign-in comes from, as its owner reads it later. Texts of the client's own.
struct SignInOrigin {
    bool isBrowser = false; ///< or else the program
    std::string agent = {};
    std::string address = {};
};

/// Where in the history of its sign-in a token stands. Each refresh makes a new generation.
struct TokenAge {
    std::int64_t generation = 0;
    std::int64_t latest = 0;    ///< generation of the sign-in
    std::int64_t confirmed = 0; ///< latest generation that is known to have reached its program
};

struct AccessTokenRow {
    TokenOwner owner;
    TokenAge age;
};

struct RefreshTokenRow {
    TokenOwner owner;
    TokenAge age;
    std::int64_t expiresAt = 0;
    bool isSuperseded = false; ///< an answer that was taken for lost held it
    std::int64_t traded = 0;   ///< generation of the sign-in that was traded last
    std::int64_t tradedAt = 0;
};

/// Tokens and one-time codes. Only hashes of the secrets are kept, so a stolen file signs nobody
/// in. Borrows the database; its owner locks. All times in milliseconds since 1970.
class TokenTable {
  public:
    explicit TokenTable(Database& database) : m_database(database) {}

    [[nodiscard]] std::int64_t startFamily(std::int64_t accountId, const SignInOrigin& origin,
                                           std::int64_t nowMs);
    /// Begins the next generation of the sign-in and gives its number.
    [[nodiscard]] std::int64_t startGeneration(std::int64_t familyId);
    void addAccess(std::string_view secret, std::int64_t familyId, std::int64_t generation,
                   std::int64_t expiresAt);
    void addRefresh(std::string_view secret, std::int64_t familyId, std::int64_t generation,
                    std::int64_t expiresAt);
    void addHandoff(std::string_view secret, std::int64_t accountId, std::int64_t expiresAt);

    /// Nothing for a token that has expired.
    [[nodiscard]] std::optional<AccessTokenRow> access(std::string_view secret, std::int64_t nowMs);
    [[nodiscard]] std::optional<RefreshTokenRow> refresh(std::string_view secret);
    /// Notes that the generation has reached its program.
    void confirm(std::int64_t familyId, std::int64_t generation);
    /// Notes that the generation was traded, and so has reached its program.
    void noteTrade(std::int64_t familyId, std::int64_t generation, std::int64_t nowMs);
    /// Makes the generations after that one worthless; presenting one of their refresh tokens
    /// counts as theft.
    void supersedeAfter(std::int64_t familyId, std::int64_t generation);
    /// Whose code it is, whether or not it is still valid.
    [[nodiscard]] std::optional<std::int64_t> ownerOfHandoff(std::string_view secret);
    /// Removes the code and gives its account, if the code was still valid. One that has more than
    /// `lifeMs` to go is older than the clock, which was set back, and worth nothing.
    [[nodiscard]] std::optional<std::int64_t> takeHandoff(std::string_view secret,
                                                          std::int64_t nowMs, std::int64_t lifeMs);

    void dropFamily(std::int64_t familyId);
    /// Codes that nobody has used yet count as other sign-ins.
    void dropOtherFamilies(const TokenOwner& kept);
    /// What is in use at the moment stays until the next time.
    void dropExpired(std::int64_t nowMs);

  private:
    void add(const char* sql, std::string_view secret, std::int64_t familyId,
             std::int64_t generation, std::int64_t expiresAt);
    Database& m_database;
};

} // namespace vorq::gateway
