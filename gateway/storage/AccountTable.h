#pragma once

#include "storage/Database.h"

#include <cstdint>
#include <optional>
#include <string>

namespace vorq::gateway {

/// One user of this gateway.
struct Account {
    std::int64_t id = 0;
    bool isLocal = false;
    std::string email;
    std::string firstName;
    std::string lastName;
    std::string username;
    std::string useCase;
    std::string preferredModel;
    std::optional<std::string> passwordHash;

    bool operator==(const Account&) const = default;
};

/// Reads and writes accounts. Borrows the database; its owner locks.
class AccountTable {
  public:
    explicit AccountTable(Database& database) : m_database(database) {}

    /// Stores a new account and gives it its id.
    void insert(Account& account, std::int64_t nowMs);
    void update(const Account& account);
    [[nodiscard]] std::optional<Account> byId(std::int64_t id);
    /// In any case of its letters.
    [[nodiscard]] std::optional<Account> byEmail(const std::string& email);
    /// The account of this computer's user, who signs in without a password.
    [[nodiscard]] std::optional<Account> local();
    /// Whether another account than `id` has that address or (not empty) username.
    [[nodiscard]] bool emailTaken(const std::string& email, std::int64_t id);
    [[nodiscard]] bool usernameTaken(const std::string& username, std::int64_t id);

  private:
    [[nodiscard]] std::optional<Account> only(Statement& statement);
    Database& m_database;
};

} // namespace vorq::gateway
