#include "storage/AccountTable.h"

#include "support/Utf8.h"

#include <string_view>

namespace vorq::gateway {
namespace {

constexpr std::string_view kById =
    "SELECT id, isLocal, email, firstName, lastName, username, useCase, preferredModel, "
    "passwordHash FROM accounts WHERE id = ?";
constexpr std::string_view kByEmail =
    "SELECT id, isLocal, email, firstName, lastName, username, useCase, preferredModel, "
    "passwordHash FROM accounts WHERE email = ?";
constexpr std::string_view kLocal =
    "SELECT id, isLocal, email, firstName, lastName, username, useCase, preferredModel, "
    "passwordHash FROM accounts WHERE isLocal = 1";

void bindFields(Statement& statement, const Account& account) {
    statement.bind(1, std::int64_t{account.isLocal ? 1 : 0})
        .bind(2, lowered(account.email))
        .bind(3, account.firstName)
        .bind(4, account.lastName)
        .bind(5, account.username)
        .bind(6, account.useCase)
        .bind(7, account.preferredModel);
    if (account.passwordHash) {
        statement.bind(8, *account.passwordHash);
    } else {
        statement.bindNull(8);
    }
}

} // namespace

void AccountTable::insert(Account& account, std::int64_t nowMs) {
    Statement statement = m_database.prepare(
        "INSERT INTO accounts (isLocal, email, firstName, lastName, username, useCase, "
        "preferredModel, passwordHash, createdAt) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?) RETURNING id");
    bindFields(statement, account);
    statement.bind(9, nowMs).step();
    account.id = statement.integer(0);
}

void AccountTable::update(const Account& account) {
    Statement statement = m_database.prepare(
        "UPDATE accounts SET isLocal = ?, email = ?, firstName = ?, lastName = ?, username = ?, "
        "useCase = ?, preferredModel = ?, passwordHash = ? WHERE id = ?");
    bindFields(statement, account);
    statement.bind(9, account.id).step();
}

std::optional<Account> AccountTable::only(Statement& statement) {
    if (!statement.step()) return std::nullopt;
    return Account{.id = statement.integer(0),
                   .isLocal = statement.integer(1) != 0,
                   .email = statement.text(2),
                   .firstName = statement.text(3),
                   .lastName = statement.text(4),
                   .username = statement.text(5),
                   .useCase = statement.text(6),
                   .preferredModel = statement.text(7),
                   .passwordHash = statement.optionalText(8)};
}

std::optional<Account> AccountTable::byId(std::int64_t id) {
    Statement statement = m_database.prepare(kById);
    return only(statement.bind(1, id));
}

std::optional<Account> AccountTable::byEmail(const std::string& email) {
    Statement statement = m_database.prepare(kByEmail);
    return only(statement.bind(1, lowered(email)));
}

std::optional<Account> AccountTable::local() {
    Statement statement = m_database.prepare(kLocal);
    return only(statement);
}

bool AccountTable::emailTaken(const std::string& email, std::int64_t id) {
    Statement statement = m_database.prepare("SELECT 1 FROM accounts WHERE email = ? AND id <> ?");
    return statement.bind(1, lowered(email)).bind(2, id).step();
}

bool AccountTable::usernameTaken(const std::string& username, std::int64_t id) {
    if (username.empty()) return false;
    Statement statement =
        m_database.prepare("SELECT 1 FROM accounts WHERE username = ? AND id <> ?");
    return statement.bind(1, username).bind(2, id).step();
}

} // namespace vorq::gateway
