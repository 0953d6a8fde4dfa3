#pragma once

#include "platform/Clock.h"
#include "shell/selftest/SelfCheck.h"

#include <QCoroTask>

#include <stop_token>
#include <utility>

namespace vorq {

/// One thing that the self-test looks at. Main thread only; it never blocks.
class SelfTestCheck {
  public:
    SelfTestCheck() = default;
    SelfTestCheck(const SelfTestCheck&) = delete;
    SelfTestCheck& operator=(const SelfTestCheck&) = delete;
    virtual ~SelfTestCheck() = default;

    /// Stays the same from release to release.
    [[nodiscard]] virtual QString id() const = 0;

    /// How long it may take. What takes longer counts as failed.
    [[nodiscard]] virtual Clock::Duration limit() const { return std::chrono::seconds(10); }

    /// Ends soon once the token is stopped, with all given back that it has lent; whoever does not
    /// is no longer listened to. The check outlives the task.
    virtual QCoro::Task<SelfCheck> run(std::stop_token stop) = 0;

  protected:
    [[nodiscard]] SelfCheck ok(SelfTestText sentence) const {
        return {.id = id(), .state = SelfCheckState::Ok, .sentence = std::move(sentence)};
    }
    [[nodiscard]] SelfCheck warning(SelfTestText sentence, SelfTestText advice = {}) const {
        return {.id = id(),
                .state = SelfCheckState::Warning,
                .sentence = std::move(sentence),
                .advice = std::move(advice)};
    }
    [[nodiscard]] SelfCheck failed(SelfTestText sentence, SelfTestText advice = {}) const {
        return {.id = id(),
                .state = SelfCheckState::Failed,
                .sentence = std::move(sentence),
                .advice = std::move(advice)};
    }
    [[nodiscard]] SelfCheck skipped(SelfTestText reason, SelfTestText advice = {}) const {
        return {.id = id(),
                .state = SelfCheckState::Skipped,
                .sentence = std::move(reason),
                .advice = std::move(advice)};
    }
};

} // namespace vorq
