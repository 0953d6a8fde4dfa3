#pragma once

#include "backend/account/LoopbackServer.h"

#include <memory>
#include <optional>

namespace vorq {

/// Makes listeners that hear of no socket; the test completes the one that is up.
class ScriptedLoopback {
  public:
    /// What the next start fails with, if it does.
    std::optional<SignInError> startFailure;

    [[nodiscard]] std::unique_ptr<LoopbackServer> make() {
        ++m_made;
        return std::make_unique<Server>(*this);
    }
    [[nodiscard]] int made() const { return m_made; }
    [[nodiscard]] bool isUp() const { return m_up != nullptr; }

    /// Does nothing if none is up.
    void complete(const LoopbackServer::Result& result) const {
        if (m_up == nullptr) return;
        // The server may be gone at its end.
        const auto onComplete = m_up->onComplete;
        onComplete(result);
    }

  private:
    class Server final : public LoopbackServer {
      public:
        explicit Server(ScriptedLoopback& script) : m_script(script) {}
        ~Server() override {
            if (m_script.m_up == this) m_script.m_up = nullptr;
        }
        std::expected<void, SignInError>
        start(std::function<void(const Result&)> completion) override {
            if (m_script.startFailure) return std::unexpected(*m_script.startFailure);
            onComplete = std::move(completion);
            m_script.m_up = this;
            return {};
        }

        std::function<void(const Result&)> onComplete;

      private:
        ScriptedLoopback& m_script;
    };

    Server* m_up = nullptr;
    int m_made = 0;
};

} // namespace vorq
