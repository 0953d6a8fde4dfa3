#include "support/async/OnPool.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// They wait rather than compute: a few that hang must not hold up the others.
constexpr int mostThreads = 16;

constexpr std::chrono::seconds endLimit{5};

} // namespace

QThreadPool& blocking::pool() {
    static QThreadPool& threads = []() -> QThreadPool& {
        auto* made = new QThreadPool;
        made->setObjectName(u"vorq-blocking"_s);
        made->setMaxThreadCount(mostThreads);
        // While the application object still is whole.
        qAddPostRoutine(finishPool);
        return *made;
    }();
    return threads;
}

void leaveToPool(std::function<void()> work) {
    blocking::pool().start(std::move(work));
}

void finishPool() {
    static const QDeadlineTimer end(endLimit);
    blocking::pool().waitForDone(static_cast<int>(end.remainingTime()));
}

} // namespace vorq
