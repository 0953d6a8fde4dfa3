#pragma once

#include <QString>

#include <wayland-client.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vorq::desktop {

/// A connection to a compositor and what it offers, for protocols that are spelt out by hand.
/// Throws if there is no compositor.
class WaylandClient {
  public:
    explicit WaylandClient(const QString& socket);
    WaylandClient(const WaylandClient&) = delete;
    WaylandClient& operator=(const WaylandClient&) = delete;
    ~WaylandClient();

    /// Null if it is not offered. What is bound lives as long as this.
    [[nodiscard]] wl_proxy* bind(const wl_interface& interface, std::uint32_t version);

    /// Has a request's new object live as long as this.
    wl_proxy* keep(wl_proxy* object);

    /// Sends a request without a result.
    template<typename... Arguments>
    static void send(wl_proxy* to, std::uint32_t request, Arguments... arguments) {
        wl_proxy_marshal_flags(to, request, nullptr, wl_proxy_get_version(to), 0, arguments...);
    }

    /// Waits until the compositor has dealt with all requests, and a moment longer.
    void settle();

  private:
    wl_display* m_display;
    wl_registry* m_registry = nullptr;
    std::map<std::string, std::uint32_t> m_offered;
    std::vector<wl_proxy*> m_kept;
};

} // namespace vorq::desktop
