#include "doubles/backend/SlowRefreshRelay.h"

#include <httplib.h>

namespace vorq {

SlowRefreshRelay::SlowRefreshRelay(const QByteArray& backendUrl, std::chrono::milliseconds delay)
    : m_server(std::make_unique<httplib::Server>()) {
    m_server->Post(".*", [this, backend = backendUrl.toStdString(),
                          delay](const httplib::Request& request, httplib::Response& response) {
        httplib::Client client(backend);
        client.set_read_timeout(30);
        httplib::Headers headers;
        if (request.has_header("Authorization"))
            headers.emplace("Authorization", request.get_header_value("Authorization"));
        const httplib::Result answer =
            client.Post(request.path, headers, request.body, "application/json");
        if (!answer) {
            response.status = 502;
            return;
        }
        if (request.path == "/auth/refresh" && answer->status == 200) {
            ++m_granted;
            std::this_thread::sleep_for(delay);
        }
        response.status = answer->status;
        response.set_content(answer->body, answer->get_header_value("Content-Type"));
    });
    m_port = m_server->bind_to_any_port("127.0.0.1");
    m_thread = std::thread([this] { m_server->listen_after_bind(); });
}

SlowRefreshRelay::~SlowRefreshRelay() {
    while (!m_server->is_running())
        std::this_thread::yield();
    m_server->stop();
    m_thread.join();
}

QByteArray SlowRefreshRelay::url() const {
    return "http://127.0.0.1:" + QByteArray::number(m_port);
}

} // namespace vorq
