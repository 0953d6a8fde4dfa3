#include "provider/ProviderConfig.h"

#include "support/Utf8.h"

#include <stdexcept>

namespace vorq::gateway {

std::string chatEndpoint(std::string address) {
    std::string endpoint(trimmed(address));
    if (!lowered(endpoint).starts_with("http://") && !lowered(endpoint).starts_with("https://")) {
        throw std::runtime_error("The provider's address must begin with http:// or https://.");
    }
    while (endpoint.ends_with('/'))
        endpoint.pop_back();
    if (endpoint.ends_with("/chat/completions")) return endpoint;
    const std::size_t slash = endpoint.rfind('/');
    const std::string last = endpoint.substr(slash + 1);
    const bool isVersion = last.size() >= 2 && last[0] == 'v' &&
                           last.find_first_not_of("0123456789", 1) == std::string::npos;
    return endpoint + (isVersion ? "/chat/completions" : "/v1/chat/completions");
}

std::string providerModel(const ProviderConfig& config, const std::string& wanted) {
    if (const auto entry = config.models.find(wanted); entry != config.models.end()) {
        return entry->second;
    }
    return config.model.empty() ? wanted : config.model;
}

} // namespace vorq::gateway
