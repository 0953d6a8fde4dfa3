#pragma once

#include "capture/watch/FrontmostWatchService.h"
#include "doubles/capture/CaptureFixture.h"
#include "platform/testing/ScriptedFrameStream.h"

namespace vorq {

/// A watch over scripted ports: process 42 is an editor in front, 43 a browser, 1 Vorq.
class WatchTest : public CaptureTest {
  protected:
    static constexpr ProcessId self = 1;
    static constexpr ProcessId browser = 43;

    WatchTest() {
        workspace.launch({.process = self, .identifier = "com.vorq.desk", .name = "Vorq"});
        workspace.launch({.process = browser, .identifier = "firefox-esr", .name = "Browser"});
        workspace.entitle(source, "letter.txt");
        focus();
        watch->setOnSample([this](const WatchSample& sample) { samples.push_back(sample); });
    }
    ~WatchTest() override { watch.reset(); }

    /// Runs until nothing is being read and the watch waits for its next turn.
    void settle() {
        waitUntil([this] {
            clock.advance(Clock::Duration::zero());
            return clock.untilNextTimer() > FrontmostWatchService::leastPollGap;
        });
    }
    void start() {
        watch->start();
        settle();
    }
    /// One more turn.
    void poll() {
        clock.advance(FrontmostWatchService::pollInterval);
        settle();
    }
    void bring(ProcessId process) {
        clock.advance(FrontmostWatchService::leastPollGap);
        settle();
        workspace.bringToFront(process);
        settle();
    }
    void exclude(const QStringList& identifiers) {
        settings.apply({{ExcludedApplications::key, identifiers}});
    }
    [[nodiscard]] std::vector<QString> selections() const {
        std::vector<QString> texts;
        texts.reserve(samples.size());
        for (const WatchSample& sample : samples)
            texts.push_back(sample.selection);
        return texts;
    }

    ScriptedFrameStream stream;
    std::vector<WatchSample> samples;
    std::unique_ptr<FrontmostWatchService> watch =
        std::make_unique<FrontmostWatchService>(FrontmostWatchService::Services{
            clock, workspace, stream, captures->reader, captures->gate, self});
};

} // namespace vorq
