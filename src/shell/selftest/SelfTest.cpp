#include "shell/selftest/SelfTest.h"

#include "platform/copying/TimeLimit.h"
#include "shell/selftest/TestStage.h"
#include "support/async/Wakeup.h"

#include <QPointer>

#include <algorithm>
#include <optional>
#include <utility>

namespace vorq {
namespace {

// Goes on by itself where nobody listens any more; the check lives as long.
QCoro::Task<> drive(std::shared_ptr<SelfTestCheck> check, std::stop_token stop,
                    std::shared_ptr<std::optional<SelfCheck>> result, Wakeup done, Wakeup ended) {
    *result = co_await check->run(std::move(stop));
    done.fire();
    ended.fire();
}

QCoro::Task<> driveClearing(std::shared_ptr<TestStage> stage, Wakeup done) {
    co_await stage->clear();
    done.fire();
}

SelfCheck timedOut(const SelfTestCheck& check) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(check.limit());
    return {.id = check.id(),
            .state = SelfCheckState::Failed,
            .sentence = {QT_TRANSLATE_NOOP("SelfTest", "There was no answer within %1 seconds."),
                         {QString::number(seconds.count())}}};
}

} // namespace

SelfTest::SelfTest(Clock& clock, Checks checks, std::shared_ptr<TestStage> stage)
    : m_clock(clock), m_checks(std::move(checks)), m_stage(std::move(stage)) {}

SelfTest::~SelfTest() = default;

QStringList SelfTest::ids() const {
    QStringList ids;
    for (const auto& check : m_checks)
        ids += check->id();
    return ids;
}

bool SelfTest::hasPassed() const {
    return !m_isRunning && m_results.size() == m_checks.size() &&
           std::ranges::find(m_results, SelfCheckState::Failed, &SelfCheck::state) ==
               m_results.end();
}

void SelfTest::start() {
    if (m_isRunning) return;
    m_isRunning = true;
    m_results.clear();
    emit started();
    m_task.restart([this](std::stop_token stop) { return run(this, std::move(stop)); });
}

void SelfTest::cancel() {
    if (m_isRunning) m_task.cancel();
}

QCoro::Task<SelfCheck> SelfTest::limited(Clock& clock, std::shared_ptr<SelfTestCheck> check,
                                         std::stop_token stop) {
    const TimeLimit limit(clock, check->limit(), std::move(stop));
    const auto result = std::make_shared<std::optional<SelfCheck>>();
    const Wakeup done;
    const Wakeup ended;
    const std::stop_callback onLimit(limit.token(), [done] { done.fire(); });
    (void)drive(check, limit.token(), result, done, ended);
    co_await done;
    SelfCheck outcome = timedOut(*check);
    if (std::optional<SelfCheck>& made = *result) {
        outcome = std::move(*made);
        co_return outcome;
    }
    // What it has lent is given back before anything else is moved, and before the program may end.
    const TimeLimit ending(clock, endingLimit, {});
    const std::stop_callback onEnding(ending.token(), [ended] { ended.fire(); });
    co_await ended;
    co_return outcome;
}

QCoro::Task<> SelfTest::run(SelfTest* self, std::stop_token stop) {
    const QPointer<SelfTest> there(self);
    Clock& clock = self->m_clock;
    const auto stage = self->m_stage;
    const Checks checks = self->m_checks;
    for (const auto& check : checks) {
        if (!there || stop.stop_requested()) break;
        const SelfCheck result = co_await limited(clock, check, stop);
        if (!there || stop.stop_requested()) break;
        self->m_results.push_back(result);
        emit self->checked(result);
    }
    // Also when this object is gone: what was moved is the user's.
    const TimeLimit limit(clock, clearingLimit, {});
    const Wakeup done;
    const std::stop_callback onLimit(limit.token(), [done] { done.fire(); });
    (void)driveClearing(stage, done);
    co_await done;
    if (!there) co_return;
    self->m_isRunning = false;
    emit self->finished();
}

} // namespace vorq
