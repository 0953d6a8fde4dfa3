#include "support/async/OnPool.h"

#include <QCoreApplication>

namespace vorq::blocking {
namespace {

// They wait rather than compute: a few that hang must not hold up the others.
constexpr int mostThreads = 16;

// While the application object still is whole.
void finishPool() {
    pool().waitForDone();
}

} // namespace

QThreadPool& pool() {
    static QThreadPool& threads = [] -> QThreadPool& {
        static QThreadPool made;
        made.setObjectName(QStringLiteral("vorq-blocking"));
        made.setMaxThreadCount(mostThreads);
        qAddPostRoutine(finishPool);
        return made;
    }();
    return threads;
}

} // namespace vorq::blocking
