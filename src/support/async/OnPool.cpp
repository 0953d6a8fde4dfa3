#include "support/async/OnPool.h"

#include <QCoreApplication>

#include <utility>

namespace vorq {
namespace {

// They wait rather than compute: a few that hang must not hold up the others.
constexpr int mostThreads = 16;

// While the application object still is whole.
void finishPool() {
    blocking::pool().waitForDone();
}

} // namespace

QThreadPool& blocking::pool() {
    static QThreadPool& threads = []() -> QThreadPool& {
        static QThreadPool made;
        made.setObjectName(QStringLiteral("vorq-blocking"));
        made.setMaxThreadCount(mostThreads);
        qAddPostRoutine(finishPool);
        return made;
    }();
    return threads;
}

void leaveToPool(std::function<void()> work) {
    blocking::pool().start(std::move(work));
}

} // namespace vorq
