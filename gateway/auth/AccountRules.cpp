#include "auth/AccountRules.h"

#include "support/ApiError.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <algorithm>
#include <string_view>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestField = 200;
constexpr std::size_t kLongestUsername = 64;
constexpr std::size_t kLongestEmail = 254;
constexpr std::size_t kShortestPassword = 8;
constexpr std::size_t kLongestPassword = 1024;
constexpr std::string_view kHere = "@localhost";

std::string checkedField(const std::string& value, std::string_view name,
                         const std::string& field) {
    const std::string_view text = trimmed(value);
    if (text.size() > kLongestField) {
        throw ApiError(400, filled("The {} is too long.", name), field);
    }
    return std::string(trimmed(sanitized(text)));
}

bool isUsernameCharacter(char32_t c) {
    return isWordCharacter(c) || c == U'.' || c == U'_' || c == U'-';
}

bool isUsername(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint c = decodeAt(text, i);
        if (!isUsernameCharacter(c.value)) return false;
        i += c.length;
    }
    return text.size() <= kLongestUsername;
}

std::string canonicalUsername(std::string_view value) {
    std::string_view text = trimmed(value);
    while (text.starts_with('@'))
        text.remove_prefix(1);
    while (text.ends_with('@'))
        text.remove_suffix(1);
    return lowered(trimmed(text));
}

bool isEmail(std::string_view text) {
    const bool plain = std::ranges::all_of(
        text, [](char c) { return static_cast<unsigned char>(c) > 0x20 && c != 0x7F; });
    const std::size_t at = text.find('@');
    return plain && text.size() <= kLongestEmail && at != std::string_view::npos && at > 0 &&
           at + 1 < text.size() && text.find('@', at + 1) == std::string_view::npos;
}

} // namespace

Account newLocalAccount(const std::string& loginName) {
    std::string name = canonicalUsername(loginName);
    if (name.empty() || !isUsername(name)) name = "user";
    Account account;
    account.isLocal = true;
    account.email = localEmail(name);
    account.username = name;
    return account;
}

std::string localEmail(const std::string& name, int number) {
    const std::string another = number > 1 ? "." + std::to_string(number) : "";
    return name + another + std::string(kHere);
}

void applyProfile(Account& account, const ProfileChange& change) {
    if (change.firstName)
        account.firstName = checkedField(*change.firstName, "first name", "firstName");
    if (change.lastName) account.lastName = checkedField(*change.lastName, "last name", "lastName");
    if (change.useCase) account.useCase = checkedField(*change.useCase, "use case", "useCase");
    if (change.preferredModel) {
        account.preferredModel = checkedField(*change.preferredModel, "model", "preferredModel");
    }
    if (!change.username) return;
    const std::string username = canonicalUsername(*change.username);
    if (!isUsername(username)) {
        throw ApiError(400,
                       "A username has letters, digits, points, hyphens and underscores only, "
                       "at most 64 of them.",
                       "username");
    }
    account.username = username;
}

std::string checkedEmail(const std::string& email) {
    std::string checked = lowered(trimmed(email));
    if (!isEmail(checked)) throw ApiError(400, "That is not an email address.", "email");
    return checked;
}

void checkNewEmail(const std::string& email) {
    if (email.ends_with(kHere))
        throw ApiError(400, "An address at localhost is for the user of this computer.", "email");
}

void checkNewPassword(const std::string& password, const std::string& field) {
    if (characterCount(password) < kShortestPassword) {
        throw ApiError(400, "New password must be at least 8 characters.", field);
    }
    if (password.size() > kLongestPassword) {
        throw ApiError(400, "The password is too long.", field);
    }
}

PrivacyChange checkedPrivacy(const PrivacyChange& change) {
    PrivacyChange checked = change;
    checked.email = trimmed(change.email);
    if (change.currentPassword.empty()) {
        throw ApiError(400, "Current password is required.", "currentPassword");
    }
    if (checked.email.empty() && change.newPassword.empty()) {
        throw ApiError(400, "Enter a new email and/or a new password.", "email");
    }
    if (!change.newPassword.empty()) checkNewPassword(change.newPassword, "newPassword");
    if (change.currentPassword.size() > kLongestPassword) {
        throw ApiError(400, "The password is too long.", "currentPassword");
    }
    if (!checked.email.empty()) checked.email = checkedEmail(checked.email);
    return checked;
}

} // namespace vorq::gateway
