#include "support/async/BlockingThread.h"

namespace vorq {

BlockingThread::~BlockingThread() {
    if (m_atEnd == AtEnd::Stop) m_end.request_stop();
    m_thread.waitForDone();
}

} // namespace vorq
