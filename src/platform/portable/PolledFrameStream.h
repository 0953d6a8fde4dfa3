#pragma once

#include "platform/Clock.h"
#include "platform/pixels/FrameStream.h"
#include "support/async/BlockingThread.h"
#include "support/async/TaskSlot.h"

#include <chrono>
#include <memory>

namespace vorq {

/// Takes a picture of the window every now and then, on a thread of its own. The pause counts from
/// the end of a picture, so a window system that is slow is not asked more than it answers.
class PolledFrameStream final : public FrameStream {
    Q_OBJECT

  public:
    static constexpr std::chrono::milliseconds pause{2000};

    /// Nobody else may use the capture. The clock must outlive the stream.
    PolledFrameStream(Clock& clock, std::unique_ptr<ScreenCapture> capture);
    ~PolledFrameStream() override;

    [[nodiscard]] PortSupport supported() const override { return m_capture->supported(); }
    void start(const StreamedWindow& window) override;
    void stop() override;

  private:
    static QCoro::Task<> run(PolledFrameStream* self, StreamedWindow window, std::stop_token stop);

    Clock& m_clock;
    std::shared_ptr<ScreenCapture> m_capture;
    TaskSlot m_task;
    BlockingThread m_thread{BlockingThread::AtEnd::Stop};
};

} // namespace vorq
