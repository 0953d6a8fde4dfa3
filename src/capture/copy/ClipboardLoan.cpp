#include "capture/copy/ClipboardLoan.h"

#include "capture/source/CaptureLogging.h"
#include "platform/copying/TimeLimit.h"

#include <utility>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr auto guardRound = 50ms;
// Somebody may write between the look at who did and our own write, but not again and again.
constexpr int mostTries = 3;

} // namespace

QCoro::Task<bool> ClipboardLoan::begin(std::stop_token stop) {
    const Pasteboard::Change before = m_services.pasteboard.lastChange();
    const TimeLimit limit(m_services.clock, snapshotLimit, std::move(stop));
    Pasteboard::Contents contents = co_await m_services.pasteboard.contents(limit.token());
    if (!contents) {
        qCInfo(captureLog, "Vorq leaves the clipboard alone: %s", qUtf8Printable(contents.error()));
        co_return false;
    }
    m_contents = *std::move(contents);
    m_begin = before.count;
    m_base = before.count;
    co_return !isWritten();
}

bool ClipboardLoan::isWritten() const {
    return m_services.pasteboard.lastChange().count != m_base;
}

bool ClipboardLoan::wasWritten() const {
    return m_services.pasteboard.lastChange().count != m_begin;
}

bool ClipboardLoan::isWrittenByProcess() const {
    return isWritten() && m_services.pasteboard.lastChange().writer == m_process;
}

QCoro::Task<QString> ClipboardLoan::text() const {
    const TimeLimit limit(m_services.clock, textLimit, {});
    const QString text = co_await m_services.pasteboard.text(limit.token());
    co_return text;
}

QCoro::Task<bool> ClipboardLoan::put(PasteboardContents contents) {
    const auto written = co_await m_services.pasteboard.write(std::move(contents), m_base);
    if (!written) co_return false;
    m_base = *written;
    m_isLent = true;
    co_return true;
}

// With an application that is gone, what it wrote is gone as well.
bool ClipboardLoan::mayReplace(const Pasteboard::Change& change) const {
    if (change.count == m_base) return m_isLent;
    if (change.writer) return change.writer == m_process;
    return !m_services.workspace.application(m_process);
}

QCoro::Task<> ClipboardLoan::giveBack() {
    for (int tries = 0; tries < mostTries; ++tries) {
        const Pasteboard::Change change = m_services.pasteboard.lastChange();
        if (!mayReplace(change)) co_return;
        const auto written = co_await m_services.pasteboard.write(m_contents, change.count);
        if (!written) continue;
        m_base = *written;
        m_isLent = false;
        co_return;
    }
}

void ClipboardLoan::followUse() {
    m_isInFront = true; // it was given the chord
    QObject::connect(&m_services.workspace, &Workspace::frontmostChanged, &m_follower,
                     [this] { noteUse(); });
    QObject::connect(&m_services.workspace, &Workspace::frontmostLost, &m_follower,
                     [this] { noteUse(); });
}

// Who copies and goes on to another application at once is seen only when that has come to the
// front.
void ClipboardLoan::noteUse() {
    const bool wasInFront =
        std::exchange(m_isInFront, m_services.workspace.frontmostProcess() == m_process);
    if ((wasInFront || m_isInFront) && !m_isUsed) m_isUsed = m_services.keys.wasUsedSincePost();
}

QCoro::Task<> ClipboardLoan::giveBackLate() {
    noteUse();
    if (!m_isUsed && isWrittenByProcess()) co_await giveBack();
}

QCoro::Task<> ClipboardLoan::guard(std::shared_ptr<ClipboardLoan> loan, std::stop_token stop) {
    Clock& clock = loan->m_services.clock;
    const Clock::Duration end = clock.now() + lateLimit;
    while (clock.now() < end && !loan->isWritten()) {
        co_await sleepFor(clock, guardRound, stop);
        if (stop.stop_requested()) co_return;
        co_await loan->giveBackLate();
    }
}

} // namespace vorq
