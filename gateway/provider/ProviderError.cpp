#include "provider/ProviderError.h"

#include "provider/ErrorMessage.h"
#include "support/Filled.h"
#include "support/Utf8.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestMessage = 400;

std::string withDetail(std::string sentence, const std::string& detail) {
    return detail.empty() ? sentence + "." : sentence + ": " + detail;
}

/// The address of the endpoint without what may be secret in it.
std::string placeOf(const ProviderConfig& config) {
    const std::string& url = config.endpoint;
    const std::size_t start = std::min(url.find('/', url.find("://") + 3), url.size());
    return siteOf(url) + url.substr(start, url.find('?', start) - start);
}

} // namespace

std::string withoutKey(const ProviderConfig& config, std::string text) {
    std::size_t at = config.key.empty() ? std::string::npos : text.find(config.key);
    for (; at != std::string::npos; at = text.find(config.key, at)) {
        text.replace(at, config.key.size(), "…");
    }
    return clipped(text, kLongestMessage);
}

EngineError unreachable(const ProviderConfig& config) {
    return {502, filled("Could not reach the AI provider at {}. Is it running?",
                        siteOf(config.endpoint))};
}

EngineError tooSlow(const ProviderConfig& config) {
    return {504, filled("The AI provider at {} took too long to answer.", siteOf(config.endpoint))};
}

EngineError brokeOff() {
    return {502, "The AI provider broke off in the middle of its answer. Try again."};
}

EngineError unreadable() {
    return {502, "The AI provider sent an answer that Vorq could not read."};
}

EngineError webPage() {
    return {502, "The AI provider sent a web page in place of an answer. Check \"url\" in the "
                 "settings."};
}

EngineError declined(const std::string& message) {
    return {502, "The AI model declined to answer: " + message};
}

EngineError filtered() {
    return {502, "The AI provider's content filter stopped the answer. Ask in other words, or with "
                 "another model."};
}

EngineError lengthReached() {
    return {502, "The AI model reached its length limit before it answered. Ask with less text, or "
                 "with another model."};
}

EngineError thoughtTooLong() {
    return {502, "The AI model reached its length limit while it was thinking. Ask for less at "
                 "once, or with another model."};
}

EngineError emptyReply() {
    return {502, "The AI provider sent an empty answer. Try again."};
}

EngineError tooLong() {
    return {502, "The AI provider's answer was far too long."};
}

EngineError refused(const ProviderConfig& config, long status, std::string_view body) {
    const std::string detail = withoutKey(config, errorMessageIn(body));
    if (status == 401 && config.key.empty()) {
        return {502,
                withDetail("The AI provider asks for a key. Set \"key\" in the settings", detail)};
    }
    if (status == 401 || status == 403) {
        return {502,
                withDetail(filled("The AI provider refused the key (status {})", status), detail)};
    }
    if (status == 429) {
        return {503, withDetail("The AI provider is busy, or its limit is reached", detail)};
    }
    if (status >= 300 && status < 400) {
        return {502, filled("The AI provider has moved away from {} (status {}). Check \"url\" in "
                            "the settings.",
                            placeOf(config), status)};
    }
    if ((status == 404 || status == 405) && detail.empty()) {
        return {502, filled("The AI provider has nothing at {} (status {}). Check \"url\" in the "
                            "settings.",
                            placeOf(config), status)};
    }
    return {502, withDetail(filled("The AI provider answered with status {}", status), detail)};
}

EngineError gaveUp(const std::string& message) {
    if (message.empty()) return {502, "The AI provider gave up. Try again."};
    return {502, "The AI provider gave up: " + message};
}

} // namespace vorq::gateway
