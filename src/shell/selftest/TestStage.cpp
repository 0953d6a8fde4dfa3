#include "shell/selftest/TestStage.h"

#include "platform/Workspace.h"
#include "platform/copying/TimeLimit.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr auto highlightLimit = 1s;
constexpr auto frontLimit = 3s;
constexpr auto frontRound = 40ms;
// Window managers take a wish for the front amiss that comes again and again.
constexpr int roundsToAWish = 8;

} // namespace

// Of plain words, which no rule for secrets holds back.
QString TestStage::sentence() {
    return u"Vorq reads this sentence to find out what works."_s;
}

std::optional<WindowId> TestStage::windowId() const {
    return m_process ? m_services.workspace.windowOf(*m_process) : std::nullopt;
}

bool TestStage::isInFront() const {
    return m_process && m_services.workspace.frontmostProcess() == m_process;
}

QCoro::Task<TestStage::Setting> TestStage::set(std::stop_token stop) {
    m_formerWindow = m_services.workspace.activeWindow();
    m_isHandedOut = co_await keepHighlight();
    const auto handsOut = m_isHandedOut ? TestWindow::HandsOut::Yes : TestWindow::HandsOut::No;
    const QString text = sentence();
    const TestWindow::Opened opened = co_await m_services.window.open(text, handsOut, stop);
    if (!opened) co_return Setting::NoWindow;
    m_process = *opened;
    const bool isInFront = co_await bringToFront(std::move(stop));
    co_return isInFront ? Setting::Ready : Setting::NotInFront;
}

// What nobody highlighted need not be given back. What is highlighted can be, if this process is
// there to hand it out.
QCoro::Task<bool> TestStage::keepHighlight() {
    m_formerHighlight.clear();
    Pasteboard& highlight = m_services.highlight;
    if (!highlight.supported()) co_return false;
    const TimeLimit limit(m_services.clock, highlightLimit, {});
    const Pasteboard::Contents contents = co_await highlight.contents(limit.token());
    if (!contents) co_return false;
    m_formerHighlight = *contents;
    co_return m_formerHighlight.empty() || m_services.staysAfterwards;
}

QCoro::Task<bool> TestStage::bringToFront(std::stop_token stop) {
    const Clock::Duration end = m_services.clock.now() + frontLimit;
    for (int round = 0; !isInFront(); ++round) {
        if (stop.stop_requested() || m_services.clock.now() >= end) co_return false;
        const auto window = windowId();
        if (window && round % roundsToAWish == 0) m_services.workspace.activate(*window);
        co_await sleepFor(m_services.clock, frontRound, stop);
    }
    co_return true;
}

QCoro::Task<> TestStage::giveHighlightBack() {
    const bool isOurs = std::exchange(m_isHandedOut, false) && m_process &&
                        m_services.highlight.lastChange().writer == m_process;
    const std::uint64_t count = m_services.highlight.lastChange().count;
    PasteboardContents former = std::exchange(m_formerHighlight, {});
    if (isOurs && !former.empty())
        (void)co_await m_services.highlight.write(std::move(former), count);
}

// Unless the user has gone on to another window by themselves.
void TestStage::giveKeyboardBack() {
    const auto former = std::exchange(m_formerWindow, std::nullopt);
    if (former && isInFront()) m_services.workspace.activate(*former);
}

QCoro::Task<> TestStage::clear() {
    co_await giveHighlightBack();
    giveKeyboardBack();
    m_process.reset();
    m_services.window.close();
}

} // namespace vorq
