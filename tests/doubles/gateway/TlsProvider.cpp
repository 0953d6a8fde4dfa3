#include "doubles/gateway/TlsProvider.h"

#include <httplib.h>

#include <cstdlib>
#include <stdexcept>

namespace vorq::gateway::testing {

namespace {

void run(const std::string& command) {
    if (std::system((command + " 2>/dev/null").c_str()) != 0) {
        throw std::runtime_error("the package openssl is missing, or failed: " + command);
    }
}

} // namespace

TlsProvider::TlsProvider(const TestCertificate& certificate) {
    const std::string key = (m_folder.path() / "key.pem").string();
    const std::string request = (m_folder.path() / "request.pem").string();
    const std::string names = (m_folder.path() / "names").string();
    writeFile(names, "subjectAltName=DNS:" + certificate.name + "\n");
    run("openssl req -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -subj /CN=" +
        certificate.name + " -keyout " + key + " -out " + request);
    run("openssl x509 -req -in " + request + " -signkey " + key + " -extfile " + names + " -days " +
        std::to_string(certificate.days) + " -out " + certificateFile().string());
    m_server = std::make_unique<httplib::SSLServer>(certificateFile().c_str(), key.c_str());
    m_server->Post(".*", [](const httplib::Request&, httplib::Response& response) {
        response.set_content(R"({"choices":[{"message":{"content":"Over TLS."}}]})",
                             "application/json");
    });
    const auto note = [](SSL*, const unsigned char**, unsigned char*, const unsigned char* offered,
                         unsigned int size, void* self) {
        auto& provider = *static_cast<TlsProvider*>(self);
        const std::scoped_lock lock(provider.m_mutex);
        provider.m_offeredProtocols.assign(offered, offered + size);
        return SSL_TLSEXT_ERR_NOACK;
    };
    SSL_CTX_set_alpn_select_cb(m_server->ssl_context(), note, this);
    m_port = m_server->bind_to_any_port("127.0.0.1");
    if (m_port <= 0) throw std::runtime_error("the TLS provider could not listen");
    m_thread = std::thread([this] { m_server->listen_after_bind(); });
    while (!m_server->is_running())
        std::this_thread::yield();
}

TlsProvider::~TlsProvider() {
    m_server->stop();
    m_thread.join();
}

std::string TlsProvider::address() const {
    return "https://localhost:" + std::to_string(m_port);
}

std::string TlsProvider::offeredProtocols() const {
    const std::scoped_lock lock(m_mutex);
    return m_offeredProtocols;
}

std::filesystem::path TlsProvider::certificateFile() const {
    return m_folder.path() / "certificate.pem";
}

} // namespace vorq::gateway::testing
