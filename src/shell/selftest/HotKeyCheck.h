#pragma once

#include "shell/hotkeys/HotKeyHandler.h"
#include "shell/selftest/SelfTestCheck.h"

#include <memory>
#include <set>

namespace vorq {

class KeyPoster;
class TestStage;

/// Presses the hot keys, which do nothing meanwhile but tell that they came.
class HotKeyCheck final : public SelfTestCheck {
  public:
    struct Services {
        Clock& clock;
        HotKeyHandler& hotKeys;
        KeyPoster& keys;
        std::shared_ptr<TestStage> stage;
        bool areOfAnother = false; ///< another Vorq has them
    };

    /// All must outlive the check.
    explicit HotKeyCheck(Services services) : m_services(std::move(services)) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("hot-keys"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    using Actions = std::set<HotKeyAction>;

    QCoro::Task<Actions> pressAll(std::stop_token stop);
    [[nodiscard]] SelfCheck judge(const Actions& arrived) const;

    Services m_services;
};

} // namespace vorq
