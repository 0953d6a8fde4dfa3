#include "doubles/wayland/WaylandClient.h"

#include <QThread>

#include <stdexcept>

namespace vorq::desktop {
namespace {

constexpr unsigned long pace = 8; // milliseconds

} // namespace

WaylandClient::WaylandClient(const QString& socket)
    : m_display(wl_display_connect(socket.toUtf8().constData())) {
    if (m_display == nullptr)
        throw std::runtime_error("no compositor answers at " + socket.toStdString());
    m_registry = wl_display_get_registry(m_display);
    static const wl_registry_listener listener{
        .global =
            [](void* data, wl_registry*, std::uint32_t number, const char* name, std::uint32_t) {
                static_cast<WaylandClient*>(data)->m_offered[name] = number;
            },
        .global_remove = [](void*, wl_registry*, std::uint32_t) {}};
    wl_registry_add_listener(m_registry, &listener, this);
    wl_display_roundtrip(m_display);
}

WaylandClient::~WaylandClient() {
    for (wl_proxy* object : m_kept)
        wl_proxy_destroy(object);
    wl_registry_destroy(m_registry);
    wl_display_disconnect(m_display);
}

wl_proxy* WaylandClient::bind(const wl_interface& interface, std::uint32_t version) {
    const auto found = m_offered.find(interface.name);
    if (found == m_offered.end()) return nullptr;
    return keep(
        static_cast<wl_proxy*>(wl_registry_bind(m_registry, found->second, &interface, version)));
}

wl_proxy* WaylandClient::keep(wl_proxy* object) {
    if (object != nullptr) m_kept.push_back(object);
    return object;
}

void WaylandClient::settle() {
    wl_display_roundtrip(m_display);
    QThread::msleep(pace);
}

} // namespace vorq::desktop
