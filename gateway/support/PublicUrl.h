#pragma once

#include <string>
#include <string_view>

namespace vorq::gateway {

/// Where browsers and programs reach the gateway through a proxy: a scheme, a host and perhaps a
/// port.
class PublicUrl {
  public:
    /// Throws std::runtime_error with a sentence unless `address` is one, such as
    /// https://vorq.example.org.
    explicit PublicUrl(std::string_view address);

    /// As browsers write it: in lower case, without the scheme's own port.
    [[nodiscard]] std::string origin() const { return m_scheme + "://" + m_authority; }
    [[nodiscard]] bool isSecure() const { return m_scheme == "https"; }
    /// Whether a request with that header Host was sent there.
    [[nodiscard]] bool isHost(std::string_view host) const;

  private:
    [[nodiscard]] std::string withoutOwnPort(std::string authority) const;

    std::string m_scheme;
    std::string m_authority;
};

} // namespace vorq::gateway
