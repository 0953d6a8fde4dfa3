#include "platform/portable/PolledFrameStream.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Sight = std::expected<WindowFrame, QString>;

double areaOf(const CapturableWindow& window) {
    return window.frame.width() * window.frame.height();
}

const CapturableWindow* windowAmong(const std::vector<CapturableWindow>& windows,
                                    const StreamedWindow& wanted) {
    const CapturableWindow* largest = nullptr;
    for (const CapturableWindow& each : windows) {
        if (each.process != wanted.process) continue;
        if (each.window == wanted.window) return &each;
        if (largest == nullptr || areaOf(each) > areaOf(*largest)) largest = &each;
    }
    return largest;
}

Sight sight(ScreenCapture& capture, const StreamedWindow& wanted, const std::stop_token& stop) {
    const auto windows = capture.windowsOnScreen(stop);
    if (!windows) return std::unexpected(windows.error());
    const CapturableWindow* window = windowAmong(*windows, wanted);
    if (window == nullptr) return std::unexpected(u"The window is not on the screen any more."_s);
    auto picture = capture.pictureOf(window->window, stop);
    if (!picture) return std::unexpected(picture.error());
    return WindowFrame{.picture = *std::move(picture), .place = window->frame};
}

} // namespace

PolledFrameStream::PolledFrameStream(Clock& clock, std::unique_ptr<ScreenCapture> capture)
    : m_clock(clock), m_capture(std::move(capture)) {}

PolledFrameStream::~PolledFrameStream() = default;

void PolledFrameStream::start(const StreamedWindow& window) {
    m_task.restart(
        [this, window](std::stop_token stop) { return run(this, window, std::move(stop)); });
}

void PolledFrameStream::stop() {
    m_task.cancel();
}

QCoro::Task<> PolledFrameStream::run(PolledFrameStream* self, StreamedWindow window,
                                     std::stop_token stop) {
    const QPointer<PolledFrameStream> alive(self);
    while (!stop.stop_requested()) {
        const Sight seen = co_await self->m_thread.run(
            [capture = self->m_capture, window](const std::stop_token& running) -> Sight {
                // One that has waited its turn until nobody wants it any more.
                if (running.stop_requested()) return std::unexpected(QString());
                return sight(*capture, window, running);
            },
            stop);
        if (!alive || stop.stop_requested()) co_return;
        if (!seen) {
            emit self->stopped(seen.error());
            co_return;
        }
        emit self->frameArrived(*seen);
        if (!alive || stop.stop_requested()) co_return;
        co_await sleepFor(self->m_clock, pause, stop);
        if (!alive) co_return;
    }
}

} // namespace vorq
