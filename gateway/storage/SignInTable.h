#pragma once

#include "storage/TokenTable.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// One sign-in of an account, on one device.
struct SignIn {
    std::int64_t familyId = 0;
    SignInOrigin origin;
    std::int64_t createdAt = 0;
    std::int64_t lastUsedAt = 0;
};

/// A browser's sign-in, as its cookie finds it.
struct BrowserSession {
    TokenOwner owner;
    std::int64_t lastUsedAt = 0;
};

/// The sign-ins of accounts, and those of browsers, of whose secrets only hashes are kept. Borrows
/// the database; its owner locks. All times in milliseconds since 1970.
class SignInTable {
  public:
    explicit SignInTable(Database& database) : m_database(database) {}

    /// The last used first.
    [[nodiscard]] std::vector<SignIn> ofAccount(std::int64_t accountId);
    /// Whether the sign-in has not ended.
    [[nodiscard]] bool holds(std::int64_t familyId);
    void noteUse(std::int64_t familyId, std::int64_t nowMs);
    /// Ends a sign-in, if it is one of that account.
    void end(std::int64_t accountId, std::int64_t familyId);
    /// Codes that nobody has used yet as well.
    void endAll(std::int64_t accountId);

    void addBrowser(std::string_view secret, std::int64_t familyId, std::int64_t expiresAt);
    /// Nothing for one that has expired.
    [[nodiscard]] std::optional<BrowserSession> browser(std::string_view secret,
                                                        std::int64_t nowMs);

  private:
    Database& m_database;
};

} // namespace vorq::gateway
