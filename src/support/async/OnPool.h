#pragma once

#include "support/async/BlockingWork.h"

#include <functional>

namespace vorq {

namespace blocking {
/// The threads of all work whose order does not matter. They are never taken down: work that hangs
/// may go on to the very end of the process.
QThreadPool& pool();
} // namespace blocking

/// Runs work that blocks (a slow disk, another process) on a thread of its own and gives its
/// result, or throws what it threw, from the event loop. Many run at once, in no order; where order
/// matters take a `BlockingThread`. Called on the main thread only.
///
/// The work is called with the stop token, or with nothing if it cannot be stopped. Stopping is
/// cooperative: work that is stopped runs all the same, even if it had not begun, and ends early by
/// itself; its result comes as ever, and the caller looks at its token after the wait.
///
/// The work goes on when whoever waits for it is gone, and the application waits for it when it
/// ends, though only some seconds. So it owns what it uses, by value or by shared pointer, and
/// refers to no object of the caller. What it owns is destroyed on the main thread.
template<blocking::AnyWork Work>
QCoro::Task<blocking::ResultOf<Work>> onPool(Work work, std::stop_token stop) {
    return blocking::runOn(blocking::pool(), std::move(work), std::move(stop));
}

/// The same for work that nobody waits for. Any thread; what it owns is destroyed on any.
void leaveToPool(std::function<void()> work);

/// Waits for all such work, at the end of the program. Work that hangs, as on a network mount that
/// is gone, is left alone after some seconds, which count from the first call.
void finishPool();

} // namespace vorq
