#include "panel/HotKeyContext.h"

#include "areas/Permissions.h"
#include "capture/selection/SelectionCapture.h"
#include "panel/PanelConversation.h"
#include "panel/SummonedPanel.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QLoggingCategory>

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

static Q_LOGGING_CATEGORY(panelLog, "vorq.panel", QtInfoMsg)

    namespace {

    // Whether there is more than the greeting.
    bool isConversing(const PanelConversation& conversation) {
        return !conversation.messages().messages().empty() && !conversation.isPanelGreetingOnly();
    }

} // namespace

HotKeyContext::HotKeyContext(const Services& services) : m_services(services) {
    connect(&services.conversation, &PanelConversation::dropped, this,
            [this] { m_held.discard(); });
}

void HotKeyContext::press(SummonedPanel& panel, Source source) {
    // Two captures at once would take each other's clipboard for the user's.
    const Press press{.panel = &panel, .source = source, .hasWaited = m_task.isRunning()};
    if (press.hasWaited)
        m_next = press;
    else
        start(press);
}

void HotKeyContext::start(Press press) {
    m_task.restart([self = QPointer(this), press = std::move(press)](std::stop_token stop) {
        return run(self, press, std::move(stop));
    });
}

QCoro::Task<> HotKeyContext::run(QPointer<HotKeyContext> self, Press press, std::stop_token stop) {
    co_await handle(self, std::move(press), stop);
    if (!self || stop.stop_requested()) co_return;
    const std::optional<Press> next = std::exchange(self->m_next, std::nullopt);
    if (next) self->start(*next);
}

QCoro::Task<> HotKeyContext::handle(QPointer<HotKeyContext> self, Press press,
                                    std::stop_token stop) {
    const QPointer<SummonedPanel> panel = press.panel;
    if (!self || !panel || stop.stop_requested()) co_return;
    const bool wasUp = panel->isUp();
    // Before anything else: what is typed from now on is for the panel, and would overwrite what is
    // selected.
    if (!wasUp || !panel->hasDialog()) panel->bringUp();
    PanelConversation& conversation = self->m_services.conversation;
    if (!wasUp) conversation.ensurePanelGreeting();
    const bool wasConversing = isConversing(conversation);
    SelectionCapture& capture = self->m_services.capture;
    const CapturedText captured = co_await capture.captureSelectedTextForHotKey(press.source, stop);
    if (!self || !panel || stop.stop_requested()) co_return;
    if (wasUp && captured.isEmpty() && capture.isTrusted()) {
        if (!panel->hasDialog()) panel->takeDown();
        co_return;
    }
    if (self->repeatsLatest(press, captured)) co_return;
    // Who has begun to talk meanwhile need not hear that nothing is highlighted.
    if (captured.isEmpty() && capture.isTrusted() && !wasConversing && isConversing(conversation)) {
        self->m_held.discard();
        conversation.setHighlightedText({});
        co_return;
    }
    // The user has hidden the panel meanwhile. What is held back does not wait unseen.
    if (captured.isHeldBack && !panel->isUp()) co_return;
    const std::optional<CapturedText> prefilled = captured;
    co_await self->submitHotKeyContext(press.source, prefilled, stop);
}

// Who presses again out of impatience does not ask twice.
bool HotKeyContext::repeatsLatest(const Press& press, const CapturedText& captured) const {
    const PanelConversation& conversation = m_services.conversation;
    return !captured.isEmpty() && !captured.isHeldBack &&
           (press.hasWaited || conversation.isPanelTurnInFlight()) &&
           trimmed(captured.text) == conversation.highlightedText();
}

QCoro::Task<> HotKeyContext::submitHotKeyContext(Source sourcePID,
                                                 std::optional<CapturedText> prefilledText,
                                                 std::stop_token stop) {
    const QPointer<HotKeyContext> self(this);
    m_services.permissions.refreshPermissions();
    const bool isTrusted = m_services.capture.isTrusted();
    Find found{.captured = prefilledText.value_or(CapturedText()), .captor = sourcePID};
    if (!prefilledText) {
        found = co_await find(sourcePID, isTrusted, stop);
        if (!self || stop.stop_requested()) co_return;
    }
    found.captured.text = trimmed(found.captured.text).toString();
    log(isTrusted, sourcePID, found.captured);
    dealWith(found, isTrusted);
}

QCoro::Task<HotKeyContext::Find> HotKeyContext::find(Source source, bool isTrusted,
                                                     std::stop_token stop) {
    const QPointer<HotKeyContext> self(this);
    SelectionCapture& capture = m_services.capture;
    Find found{.captured = {}, .captor = source};
    if (isTrusted) found.captured = co_await capture.captureSelectedTextForHotKey(source, stop);
    if (!self || stop.stop_requested()) co_return found;
    if (!trimmed(found.captured.text).isEmpty()) co_return found;
    const Source frontmost = capture.frontmostForeignProcess();
    if (!frontmost || frontmost == source) co_return found;
    found.captured = co_await capture.captureSelectedTextForHotKey(frontmost, stop);
    found.captor = frontmost;
    co_return found;
}

void HotKeyContext::dealWith(const Find& found, bool isTrusted) {
    const QString application =
        found.captor ? m_services.capture.applicationName(*found.captor) : QString();
    m_held.discard();
    if (found.captured.isEmpty()) return greet(application, found.captured.miss, isTrusted);
    if (!found.captured.isHeldBack) return takeUp(found.captured.text, application);
    m_services.conversation.setHighlightedText({});
    m_held.hold(found.captured.text, application);
}

void HotKeyContext::takeUp(const QString& text, const QString& application) {
    m_services.conversation.setHighlightedText(text, application);
    m_services.permissions.setPermissionMessage({});
    emit textCaptured(application);
    m_services.conversation.typeHighlightAndAnalyze(text);
}

void HotKeyContext::greet(const QString& application, CaptureMiss miss, bool isTrusted) {
    PanelConversation& conversation = m_services.conversation;
    conversation.setHighlightedText({});
    if (!isTrusted) m_services.permissions.adviseToGrantAgain();
    // Who opens an empty panel may well want to write.
    else if (miss != CaptureMiss::NothingHighlighted || isConversing(conversation))
        emit nothingCaptured(application, miss);
    conversation.ensurePanelGreeting();
}

void HotKeyContext::sendHeld() {
    const QString application = m_held.application();
    const QString text = m_held.release();
    if (!text.isEmpty()) takeUp(text, application);
}

// The length of what is held back tells of it, too.
void HotKeyContext::log(bool isTrusted, Source source, const CapturedText& captured) {
    const QString name = source ? m_services.capture.applicationName(*source) : QString();
    const QString line = u"trusted=%1 perm=%2 pid=%3 app=%4 chars=%5"_s.arg(
        isTrusted ? u"true"_s : u"false"_s,
        rawString(m_services.permissions.textCapturePermission()),
        source ? QString::number(*source) : u"nil"_s, name.isEmpty() ? u"-"_s : name,
        captured.isHeldBack ? u"held"_s : QString::number(graphemeCount(captured.text)));
    qCInfo(panelLog, "Vorq capture: %s", qUtf8Printable(line));
    m_services.capture.log(line);
}

} // namespace vorq
