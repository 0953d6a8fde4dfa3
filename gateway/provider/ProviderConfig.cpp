#include "provider/ProviderConfig.h"

#include "support/Utf8.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace vorq::gateway {

namespace {

constexpr std::string_view kCompletions = "/chat/completions";

bool isUrl(const std::string& text) {
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), curl_url_cleanup);
    return url && curl_url_set(url.get(), CURLUPART_URL, text.c_str(), 0) == CURLUE_OK;
}

} // namespace

std::string chatEndpoint(const std::string& address) {
    std::string text(trimmed(address));
    if (!lowered(text).starts_with("http://") && !lowered(text).starts_with("https://")) {
        throw std::runtime_error("The provider's address must begin with http:// or https://.");
    }
    text.erase(std::min(text.find('#'), text.size()));
    if (!isUrl(text)) throw std::runtime_error("The provider's address is not a valid URL.");
    const std::size_t question = std::min(text.find('?'), text.size());
    std::string path = text.substr(0, question);
    while (path.ends_with('/'))
        path.pop_back();
    const bool hasPath = path.find('/', path.find("://") + 3) != std::string::npos;
    if (!hasPath) path += "/v1";
    if (!path.ends_with(kCompletions)) path += kCompletions;
    return path + text.substr(question);
}

std::string modelsEndpoint(const std::string& chatEndpoint) {
    const std::size_t question = std::min(chatEndpoint.find('?'), chatEndpoint.size());
    std::string path = chatEndpoint.substr(0, question);
    if (path.ends_with(kCompletions)) path.resize(path.size() - kCompletions.size());
    return path + "/models" + chatEndpoint.substr(question);
}

std::string siteOf(const std::string& url) {
    const std::size_t start = url.find("://") + 3;
    std::string host = url.substr(start, url.find_first_of("/?#", start) - start);
    if (const std::size_t at = host.rfind('@'); at != std::string::npos) host.erase(0, at + 1);
    return url.substr(0, start) + host;
}

std::string providerModel(const ProviderConfig& config, const std::string& wanted) {
    if (const auto entry = config.models.find(wanted); entry != config.models.end()) {
        return entry->second;
    }
    return config.model.empty() ? wanted : config.model;
}

} // namespace vorq::gateway
