#include "capture/watch/FrontmostWatchService.h"

#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"
#include "capture/source/CaptureLogging.h"
#include "platform/Workspace.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace vorq {
namespace {

// The focus may move while the text is read, so what has it is asked before and afterwards.
void askForSelection(const CaptureSource& from, SelectionReading& reading) {
    reading.isPassword = isPasswordFocused(from);
    if (reading.isPassword) return;
    QString text = captureSelectedTextFromFocusedElement(from);
    reading.isPassword = isPasswordFocused(from);
    if (reading.isPassword || from.stop.stop_requested()) return;
    reading.isNothingSelected = text.isEmpty();
    reading.text = std::move(text);
}

} // namespace

FrontmostWatchService::FrontmostWatchService(const Services& services) : m_services(services) {}

FrontmostWatchService::~FrontmostWatchService() {
    m_services.stream.stop();
}

void FrontmostWatchService::start() {
    if (m_isWatching) return;
    if (const PortSupport support = m_services.stream.supported(); !support) {
        setState(false, support.error());
        return;
    }
    m_isWatching = true;
    emit changed();
    observe();
    noticeActivation();
}

void FrontmostWatchService::stop() {
    const bool wasWatching = std::exchange(m_isWatching, false);
    disconnect(&m_services.workspace, nullptr, this, nullptr);
    disconnect(&m_services.stream, nullptr, this, nullptr);
    m_axTask.cancelAll();
    hideWindow();
    forgetProcess();
    if (wasWatching) emit changed();
    setState(false, {});
}

void FrontmostWatchService::observe() {
    connect(&m_services.workspace, &Workspace::frontmostChanged, this,
            &FrontmostWatchService::noticeActivation);
    connect(&m_services.workspace, &Workspace::frontmostLost, this,
            &FrontmostWatchService::noticeActivation);
    connect(&m_services.stream, &FrameStream::frameArrived, this,
            &FrontmostWatchService::takeFrame);
    connect(&m_services.stream, &FrameStream::stopped, this,
            &FrontmostWatchService::noteStreamStopped);
}

void FrontmostWatchService::ingestFrame(const WindowPicture& image) {
    if (!m_isWatching || m_isPausedForVorq) return;
    m_latestCGImage = image;
    m_latestFramePID = m_watchedPID;
    m_latestFrameAt = m_services.clock.wallTime();
}

void FrontmostWatchService::noteStreamStopped(const QString& error) {
    if (!m_isWatching) return;
    qCInfo(captureLog).noquote() << "Vorq Watch stream stopped:" << error;
    if (!m_shown) return;
    m_rest = Rest{.window = *m_shown, .until = m_services.clock.now() + streamRest};
    m_shown.reset();
}

// A picture that was under way when the window was hidden is nobody's any more.
void FrontmostWatchService::takeFrame(const WindowFrame& frame) {
    if (!m_shown) return;
    m_latestWindowFrameAX = frame.place;
    ingestFrame(frame.picture);
}

// What has the focus in another window is not known yet.
void FrontmostWatchService::noticeActivation() {
    m_isPasswordFocused.reset();
    follow();
    m_axTask.restart(
        [this](std::stop_token stop) { return sampleAgainAndAgain(this, std::move(stop)); });
}

void FrontmostWatchService::follow() {
    const std::optional<ProcessId> process = m_services.workspace.frontmostProcess();
    if (process && *process != m_services.self) return watchProcess(*process);
    hideWindow();
    m_isPasswordFocused.reset();
    if (process) return setState(true, tr("Watch: paused while Vorq is in front"));
    forgetProcess();
    setState(false, tr("Watch: no application is in front that is known"));
}

void FrontmostWatchService::watchProcess(ProcessId process) {
    if (m_watchedPID != process) {
        hideWindow();
        forgetProcess();
        m_watchedPID = process;
    }
    const CaptureGate& gate = m_services.gate;
    const QString name = gate.applicationName(process);
    if (!gate.admits(process)) {
        hideWindow();
        forgetProcess();
        return setState(false, gate.isTrusted() ? tr("Watch: %1 is excluded").arg(name)
                                                : tr("Watch: not while accessibility is disabled"));
    }
    if (m_isPasswordFocused == true) {
        hideWindow();
        forgetFrame();
        return setState(false, tr("Watch: not while a password is typed"));
    }
    if (m_isPasswordFocused == false) showWindow({.process = process, .window = windowInFront()});
    setState(false, tr("Watching %1").arg(name));
}

// What was seen of an application is not kept beyond it.
void FrontmostWatchService::forgetProcess() {
    m_watchedPID.reset();
    m_isPasswordFocused.reset();
    m_lastEmittedSelection.clear();
    m_lastWindowTitle.clear();
    forgetFrame();
    if (std::exchange(m_latest, std::nullopt)) emit changed();
}

void FrontmostWatchService::forgetFrame() {
    m_latestCGImage.reset();
    m_latestWindowFrameAX = QRectF();
    m_latestFramePID.reset();
    m_latestFrameAt.reset();
}

void FrontmostWatchService::showWindow(const StreamedWindow& window) {
    if (m_shown == window) return;
    if (m_rest && m_rest->window == window && m_services.clock.now() < m_rest->until) return;
    m_rest.reset();
    m_shown = window;
    m_services.stream.start(window);
}

void FrontmostWatchService::hideWindow() {
    if (std::exchange(m_shown, std::nullopt)) m_services.stream.stop();
}

std::optional<WindowId> FrontmostWatchService::windowInFront() const {
    const std::optional<WindowId> active = m_services.workspace.activeWindow();
    if (!active || m_services.workspace.processOf(*active) != m_watchedPID) return std::nullopt;
    return active;
}

QCoro::Task<> FrontmostWatchService::sampleAgainAndAgain(FrontmostWatchService* self,
                                                         std::stop_token stop) {
    const QPointer<FrontmostWatchService> alive(self);
    Clock& clock = self->m_services.clock;
    while (!stop.stop_requested()) {
        Clock::Duration interval = pollInterval;
        co_await sleepFor(clock, self->untilNextPoll(), stop);
        if (!alive || stop.stop_requested()) co_return;
        self->follow();
        if (self->canRead()) {
            const Reading reading = co_await read(self, stop);
            if (!alive || stop.stop_requested()) co_return;
            if (!reading.isAnswered) interval = slowPollInterval;
            self->consider(reading);
            if (!alive || stop.stop_requested()) co_return;
        }
        co_await sleepFor(clock, interval, stop);
        if (!alive) co_return;
    }
}

QCoro::Task<FrontmostWatchService::Reading> FrontmostWatchService::read(FrontmostWatchService* self,
                                                                        std::stop_token stop) {
    self->m_lastAXPollAt = self->m_services.clock.now();
    const SelectionReading told = co_await self->m_services.reader.readInBackground(
        self->m_watchedPID, askForSelection, readLimit, std::move(stop));
    Reading reading;
    reading.isPassword = told.isPassword;
    reading.isAnswered = told.isPassword || told.isNothingSelected || !told.text.isEmpty();
    reading.selection = told.text;
    co_return reading;
}

bool FrontmostWatchService::canRead() const {
    return !m_isPausedForVorq && m_watchedPID.has_value();
}

Clock::Duration FrontmostWatchService::untilNextPoll() const {
    if (!m_lastAXPollAt) return Clock::Duration::zero();
    return std::max(*m_lastAXPollAt + leastPollGap - m_services.clock.now(),
                    Clock::Duration::zero());
}

// Another application may have come to the front meanwhile, or have been excluded.
void FrontmostWatchService::consider(const Reading& reading) {
    const std::optional<ProcessId> asked = m_watchedPID;
    if (!reading.isAnswered) {
        // The focus may have moved on to a password.
        m_isPasswordFocused.reset();
        hideWindow();
        forgetFrame();
    }
    follow();
    if (!reading.isAnswered || !canRead() || m_watchedPID != asked) return;
    m_isPasswordFocused = reading.isPassword;
    follow();
    emitIfChanged(reading.selection);
}

void FrontmostWatchService::emitIfChanged(const QString& selection) {
    if (!m_watchedPID) return;
    const std::optional<WindowId> window = windowInFront();
    const QString title = window ? m_services.workspace.titleOf(*window) : QString();
    if (selection == m_lastEmittedSelection && title == m_lastWindowTitle) return;
    m_lastEmittedSelection = selection;
    m_lastWindowTitle = title;
    const Sample sample{.appName = m_services.gate.applicationName(*m_watchedPID),
                        .bundleID = m_services.gate.identifierOf(m_watchedPID),
                        .pid = *m_watchedPID,
                        .windowTitle = title,
                        .selection = selection,
                        .windowFrameAX = m_latestWindowFrameAX};
    m_latest = sample;
    // Whoever hears of it may end the watch.
    const QPointer<FrontmostWatchService> alive(this);
    emit changed();
    if (!alive || !m_isWatching || !m_onSample) return;
    const auto onSample = m_onSample;
    onSample(sample);
}

void FrontmostWatchService::setState(bool isPaused, const QString& message) {
    if (m_isPausedForVorq == isPaused && m_statusMessage == message) return;
    m_isPausedForVorq = isPaused;
    m_statusMessage = message;
    emit changed();
}

} // namespace vorq
