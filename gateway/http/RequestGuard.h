#pragma once

#include "http/Api.h"
#include "support/IpRange.h"
#include "support/PublicUrl.h"

#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

/// Keeps other websites out. A page in the user's browser can reach a server on this computer; it
/// is refused by its Origin, by the Host name it had to use, and by the content type it may not
/// set.
class RequestGuard {
  public:
    /// `listenHost` is the address the server was told to listen on, `trustedProxies` the addresses
    /// whose word on where a request came from is taken, `publicUrl` where a proxy makes it
    /// reached.
    explicit RequestGuard(std::string listenHost, std::vector<IpRange> trustedProxies = {},
                          std::optional<PublicUrl> publicUrl = std::nullopt);

    /// Throws ApiError 403 for a foreign Host or Origin.
    void checkSender(const HttpRequest& request) const;
    /// Throws ApiError 415 unless the body, if there is one, is declared to be JSON.
    static void checkContentType(const HttpRequest& request);
    /// Throws ApiError for a form that another website sent, or one that is sent in another way
    /// than browsers send ours.
    static void checkPage(const HttpRequest& request);
    /// Whether the request comes from this very computer: no proxy passed it on, and it was sent to
    /// a name of this computer. Whose program sent it is another question.
    [[nodiscard]] static bool isFromHere(const HttpRequest& request);
    /// Where the request came from: the address that connected or, if that is a trusted proxy, the
    /// last one that no trusted proxy has. For what it was told that is no address, a proxy stands
    /// itself.
    [[nodiscard]] std::string senderAddress(const HttpRequest& request) const;

    /// Whether the browser sent the request by TLS, which ended at the proxy.
    [[nodiscard]] bool isSecure(const HttpRequest& request) const;

  private:
    [[nodiscard]] bool isPublic(const HttpRequest& request) const;
    [[nodiscard]] bool isOwnName(const std::string& authority) const;
    [[nodiscard]] bool isTrustedProxy(const std::string& address) const;

    std::string m_listenHost;
    std::vector<IpRange> m_trustedProxies;
    std::optional<PublicUrl> m_publicUrl;
};

} // namespace vorq::gateway
