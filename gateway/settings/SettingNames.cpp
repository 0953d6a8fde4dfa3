#include "settings/SettingNames.h"

#include "support/Filled.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <numeric>
#include <span>
#include <string_view>

namespace vorq::gateway {
namespace {

using Names = std::span<const std::string_view>;

constexpr std::array<std::string_view, 6> kNames = {
    "database", "openSignUp", "provider", "publicUrl", "trustedProxies", "wrongPasswordsPerMinute"};
constexpr std::array<std::string_view, 10> kProviderNames = {
    "caFile", "connectTimeoutSeconds", "idleTimeoutSeconds",  "key", "keyHeader", "model",
    "models", "offersModels",          "replyTimeoutSeconds", "url"};
constexpr std::size_t kLongestName = 100;

/// How many letters have to be put in, taken out or replaced.
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t replaced = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::string noticeOf(std::string_view name, Names known) {
    std::string notice = filled("\"{}\" in the settings means nothing to vorq-gateway.",
                                clipped(sanitized(name), kLongestName));
    if (name.size() > kLongestName) return notice;
    const std::string lower = lowered(name);
    const auto away = [&](std::string_view each) { return distance(lower, lowered(each)); };
    const std::string_view nearest = *std::ranges::min_element(known, {}, away);
    if (away(nearest) <= std::max<std::size_t>(1, nearest.size() / 3))
        notice += filled(" Is it \"{}\" that you mean?", nearest);
    return notice;
}

void addUnknown(std::vector<std::string>& notices, const nlohmann::json& object, Names known) {
    for (const auto& entry : object.items()) {
        if (std::ranges::find(known, entry.key()) == known.end())
            notices.push_back(noticeOf(entry.key(), known));
    }
}

} // namespace

std::vector<std::string> unknownSettings(const nlohmann::json& document) {
    std::vector<std::string> notices;
    addUnknown(notices, document, kNames);
    const auto provider = document.find("provider");
    if (provider != document.end() && provider->is_object())
        addUnknown(notices, *provider, kProviderNames);
    return notices;
}

} // namespace vorq::gateway
