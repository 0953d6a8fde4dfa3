#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace vorq::gateway {

/// One end of a TCP connection: an address in numbers, as "127.0.0.1" or "::1", and its port.
struct SocketEnd {
    std::string address;
    std::uint16_t port = 0;
};

/// Whether an address in numbers is one of this computer's own, which nobody else can reach.
[[nodiscard]] bool isLoopbackAddress(const std::string& address);

/// Whose program holds the other end of a connection within this computer; nothing if that is not
/// to be found out, as behind a container. Other users of the computer reach our port as well.
[[nodiscard]] std::optional<uid_t> peerUser(const SocketEnd& peer, const SocketEnd& own);

/// Whose program listens on a port of 127.0.0.1, found out without connecting.
[[nodiscard]] std::optional<uid_t> listeningUser(std::uint16_t port);

/// The same from the text of /proc/net/tcp or tcp6.
[[nodiscard]] std::optional<uid_t> peerUserIn(std::string_view table, const SocketEnd& peer,
                                              const SocketEnd& own);
[[nodiscard]] std::optional<uid_t> listeningUserIn(std::string_view table, std::uint16_t port);

} // namespace vorq::gateway
