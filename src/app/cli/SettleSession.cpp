#include "app/cli/SettleSession.h"

#include "backend/account/SessionTokens.h"
#include "support/async/OnPool.h"

#include <QCoreApplication>
#include <QEventLoop>

namespace vorq {

void settleSession(SessionTokens& tokens, Clock& clock, Clock::Duration limit) {
    QEventLoop loop;
    TaskSlot settling;
    settling.restart([&tokens, &loop](std::stop_token stop) -> QCoro::Task<> {
        co_await tokens.refreshSettled(stop);
        if (!stop.stop_requested()) loop.quit();
    });
    const Clock::TimerId timer = clock.after(limit, [&loop] { loop.quit(); });
    loop.exec();
    clock.cancel(timer);
}

void unwindTasks() {
    constexpr int rounds = 8;
    for (int round = 0; round < rounds; ++round) {
        // What comes later than this would own what it owns to the end of the process.
        finishPool();
        QCoreApplication::sendPostedEvents();
    }
}

} // namespace vorq
