#include "provider/ProviderFailure.h"

#include "provider/ProviderError.h"
#include "support/Filled.h"

#include <curl/curl.h>

#include <string>
#include <string_view>

namespace vorq::gateway {
namespace {

// The numbers that OpenSSL gives for what it finds wrong with a certificate.
constexpr long kNotYetValid = 9;
constexpr long kExpired = 10;
constexpr long kUnspecified = 1;

bool isOpenSsl() {
    const char* const library = curl_version_info(CURLVERSION_NOW)->ssl_version;
    return library != nullptr && std::string_view(library).starts_with("OpenSSL");
}

std::string badCertificate(const ProviderConfig& config, long verification) {
    const std::string start =
        filled("The certificate of the AI provider at {} ", siteOf(config.endpoint));
    if (isOpenSsl() && verification == kExpired) {
        return start + "has expired. It must be renewed there, unless the clock of this computer "
                       "is wrong.";
    }
    if (isOpenSsl() && verification == kNotYetValid) {
        return start + "is not valid yet. Check the clock of this computer.";
    }
    // libcurl compares the name itself, when OpenSSL has found nothing wrong.
    if (isOpenSsl() && verification <= kUnspecified) {
        return start + "is for another name. Write the name that the certificate holds into "
                       "\"url\" in the settings.";
    }
    if (!config.caFile.empty()) {
        return start +
               filled("is not signed by an authority in {}, the \"caFile\" of the settings.",
                      config.caFile);
    }
    return start + "is not signed by an authority that this computer knows. If you trust it, save "
                   "the certificate in a file and name that file as \"caFile\" in the settings.";
}

std::string unreadableAuthorities(const ProviderConfig& config) {
    if (config.caFile.empty()) {
        return "The certificates of this computer's authorities could not be read. Install the "
               "package ca-certificates, or name a file as \"caFile\" in the settings.";
    }
    return filled("{}, the \"caFile\" of the settings, could not be read as a file of "
                  "certificates.",
                  config.caFile);
}

} // namespace

EngineError transferFailure(const ProviderConfig& config, const TransferEnd& end) {
    const std::string site = siteOf(config.endpoint);
    switch (end.code) {
    case CURLE_OPERATION_TIMEDOUT:
        return tooSlow(config);
    case CURLE_WRITE_ERROR:
        return tooLong();
    case CURLE_PEER_FAILED_VERIFICATION:
        return {502, badCertificate(config, end.verification)};
    case CURLE_SSL_CACERT_BADFILE:
        return {502, unreadableAuthorities(config)};
    case CURLE_SSL_CONNECT_ERROR:
        return {502, filled("The AI provider at {} does not speak TLS as it should. If it speaks "
                            "none at all, write http:// in \"url\" in the settings.",
                            site)};
    case CURLE_COULDNT_RESOLVE_HOST:
        return {502, filled("The host of the AI provider at {} was not found. Check \"url\" in the "
                            "settings, and the network.",
                            site)};
    case CURLE_COULDNT_RESOLVE_PROXY:
        return {502, filled("The proxy on the way to the AI provider at {} was not found. Check "
                            "http_proxy, https_proxy and no_proxy in the environment.",
                            site)};
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
        return {502, filled("What answers at {} is no web server. Check \"url\" in the settings.",
                            site)};
    default:
        return end.anythingArrived ? brokeOff() : unreachable(config);
    }
}

} // namespace vorq::gateway
