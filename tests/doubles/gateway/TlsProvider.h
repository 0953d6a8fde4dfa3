#pragma once

#include "doubles/gateway/TemporaryFolder.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace httplib {
class SSLServer;
}

namespace vorq::gateway::testing {

/// What a certificate says: for how many days it holds, which may be over, and for which name.
struct TestCertificate {
    int days = 2;
    std::string name = "localhost";
};

/// A provider behind TLS, with a certificate of its own that no authority signed, on a port of
/// this computer. It answers each request with "Over TLS.".
class TlsProvider {
  public:
    explicit TlsProvider(const TestCertificate& certificate = {});
    ~TlsProvider();
    TlsProvider(const TlsProvider&) = delete;
    TlsProvider& operator=(const TlsProvider&) = delete;

    /// Begins with https://localhost:
    [[nodiscard]] std::string address() const;
    [[nodiscard]] int port() const { return m_port; }
    [[nodiscard]] std::filesystem::path certificateFile() const;
    /// The protocols that the last client offered for the connection, each behind its length.
    [[nodiscard]] std::string offeredProtocols() const;

  private:
    TemporaryFolder m_folder;
    mutable std::mutex m_mutex;
    std::string m_offeredProtocols;
    std::unique_ptr<httplib::SSLServer> m_server;
    int m_port = 0;
    std::thread m_thread;
};

} // namespace vorq::gateway::testing
