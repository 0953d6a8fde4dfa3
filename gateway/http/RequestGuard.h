#pragma once

#include "http/Api.h"

#include <string>

namespace vorq::gateway {

/// Keeps other websites out. A page in the user's browser can reach a server on this computer; it
/// is refused by its Origin, by the Host name it had to use, and by the content type it may not
/// set.
class RequestGuard {
  public:
    /// `listenHost` is the address the server was told to listen on.
    explicit RequestGuard(std::string listenHost);

    /// Throws ApiError 403 for a foreign Host or Origin.
    void checkSender(const HttpRequest& request) const;
    /// Throws ApiError 415 unless the body, if there is one, is declared to be JSON.
    static void checkContentType(const HttpRequest& request);

  private:
    [[nodiscard]] bool isOwnName(const std::string& authority) const;
    std::string listenHost_;
};

} // namespace vorq::gateway
