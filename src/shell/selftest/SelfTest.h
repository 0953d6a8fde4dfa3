#pragma once

#include "shell/selftest/SelfTestCheck.h"
#include "support/async/TaskSlot.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace vorq {

class Clock;
class TestStage;

/// Runs the checks of Vorq one after the other, each within its limit. Whatever hangs, and however
/// it ends, the test comes to its end and leaves nothing behind. Main thread only.
class SelfTest final : public QObject {
    Q_OBJECT

  public:
    using Checks = std::vector<std::shared_ptr<SelfTestCheck>>;

    /// For putting back what the checks have moved.
    static constexpr std::chrono::milliseconds clearingLimit{3000};
    /// For a check that was stopped to give back what it has lent, such as the clipboard.
    static constexpr std::chrono::milliseconds endingLimit{5000};

    /// The clock must outlive the test and what it has under way. The stage is cleared at the end.
    SelfTest(Clock& clock, Checks checks, std::shared_ptr<TestStage> stage);
    ~SelfTest() override;

    /// Does nothing while it runs.
    void start();

    /// Ends it soon; what was not looked at by then is not told of.
    void cancel();

    [[nodiscard]] bool isRunning() const { return m_isRunning; }
    /// Of the run under way, or else of the last one.
    [[nodiscard]] const std::vector<SelfCheck>& results() const { return m_results; }
    [[nodiscard]] std::size_t count() const { return m_checks.size(); }
    /// Of all checks, in their order.
    [[nodiscard]] QStringList ids() const;
    /// Whether all checks were made, and none failed.
    [[nodiscard]] bool hasPassed() const;

  signals:
    void started();
    void checked(const vorq::SelfCheck& result);
    /// After the last check, or soon after it was cancelled.
    void finished();

  private:
    static QCoro::Task<> run(SelfTest* self, std::stop_token stop);
    static QCoro::Task<SelfCheck> limited(Clock& clock, std::shared_ptr<SelfTestCheck> check,
                                          std::stop_token stop);

    Clock& m_clock;
    Checks m_checks;
    std::shared_ptr<TestStage> m_stage;
    std::vector<SelfCheck> m_results;
    bool m_isRunning = false;
    TaskSlot m_task;
};

} // namespace vorq
