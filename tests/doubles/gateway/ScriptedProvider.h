#pragma once

#include <nlohmann/json.hpp>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace vorq::gateway::testing {

/// How long a provider rests after each 64 KB of a request. One that rests keeps the sender back.
using ReadingPause = std::chrono::milliseconds;

/// The provider's end of one connection.
class ProviderPeer {
  public:
    explicit ProviderPeer(int socket) : m_socket(socket) {}
    /// Reads one whole request and gives its bytes.
    std::string readRequest(ReadingPause pause);
    /// False once the other side is gone.
    bool send(const std::string& bytes);
    /// Headers of an event stream without a length, and then one event for each text.
    void streamHead();
    void delta(const std::string& text);
    void answer(int status, const std::string& body, const std::string& type = "application/json");
    /// Until the other side closes or ten seconds have passed; true if it closed.
    bool awaitClose();
    /// Drops the connection without a proper end.
    void reset();

  private:
    int m_socket;
};

/// A provider on a real socket that does what its script says to each connection in turn.
class ScriptedProvider {
  public:
    using Script = std::function<void(ProviderPeer&)>;
    /// The request is read before the script runs.
    explicit ScriptedProvider(Script script, ReadingPause pause = {});
    ~ScriptedProvider();
    ScriptedProvider(const ScriptedProvider&) = delete;
    ScriptedProvider& operator=(const ScriptedProvider&) = delete;

    [[nodiscard]] std::string address() const;
    /// The whole text of the last request, and its JSON body.
    [[nodiscard]] std::string lastRequest() const;
    [[nodiscard]] nlohmann::json lastBody() const;

  private:
    void serve();

    Script m_script;
    ReadingPause m_pause;
    int m_listener = -1;
    int m_port = 0;
    mutable std::mutex m_mutex;
    /// Of the connection in hand; -1 between two.
    int m_connection = -1;
    std::string m_lastRequest;
    std::atomic<bool> m_stopping = false;
    std::thread m_thread;
};

/// A port of this computer on which nothing listens.
[[nodiscard]] int closedPort();

} // namespace vorq::gateway::testing
