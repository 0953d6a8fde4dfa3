#pragma once

#include "capture/watch/WatchSample.h"
#include "platform/Clock.h"
#include "platform/pixels/FrameStream.h"
#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>

#include <functional>
#include <optional>

namespace vorq {

class CaptureGate;
class SelectionReader;
class Workspace;

/// Watches the application in front: keeps the latest picture of its window and samples what is
/// selected there. Pauses while Vorq itself is in front. What it sees stays in memory, is written
/// nowhere, and is dropped when the watch stops. Main thread only.
///
/// Applications that the user has excluded are neither seen nor read, and no window is while a
/// field for passwords has the focus in it, or its application does not tell what has.
class FrontmostWatchService final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isWatching READ isWatching NOTIFY changed)
    Q_PROPERTY(bool isPausedForVorq READ isPausedForVorq NOTIFY changed)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY changed)

  public:
    using Sample = WatchSample;

    /// Between two reads of the selection, which cost some ten calls of the application each.
    static constexpr std::chrono::milliseconds pollInterval{1000};
    /// After a read that was not answered in time, or made room for a capture of the user's.
    static constexpr std::chrono::milliseconds slowPollInterval{5000};
    /// However often applications come to the front, reads are so far apart.
    static constexpr std::chrono::milliseconds leastPollGap{200};
    /// Until the stream of a window that has stopped by itself is tried again.
    static constexpr std::chrono::milliseconds streamRest{10'000};
    /// For one read.
    static constexpr std::chrono::milliseconds readLimit{100};

    struct Services {
        Clock& clock;
        Workspace& workspace;
        FrameStream& stream;
        SelectionReader& reader;
        const CaptureGate& gate;
        /// This process.
        ProcessId self = 0;
    };

    /// The services must outlive this object.
    explicit FrontmostWatchService(const Services& services);
    ~FrontmostWatchService() override;

    /// Where windows cannot be seen it does not start, and statusMessage says why.
    void start();
    /// Comes to its end at once and forgets what it has seen; nothing is called back any more.
    void stop();

    [[nodiscard]] bool isWatching() const { return m_isWatching; }
    [[nodiscard]] bool isPausedForVorq() const { return m_isPausedForVorq; }
    /// For the user: what it watches, or why it does not. "" before the first start and when
    /// stopped.
    [[nodiscard]] const QString& statusMessage() const { return m_statusMessage; }
    /// The last one of the application that is watched; nothing before its first.
    [[nodiscard]] const std::optional<Sample>& latest() const { return m_latest; }

    /// Called with each sample whose selection or window title is not that of the one before.
    void setOnSample(std::function<void(const Sample&)> onSample) {
        m_onSample = std::move(onSample);
    }

    [[nodiscard]] const std::optional<WindowPicture>& latestCGImage() const {
        return m_latestCGImage;
    }
    [[nodiscard]] QRectF latestWindowFrameAX() const { return m_latestWindowFrameAX; }
    [[nodiscard]] std::optional<ProcessId> latestFramePID() const { return m_latestFramePID; }
    [[nodiscard]] const std::optional<QDateTime>& latestFrameAt() const { return m_latestFrameAt; }

    /// Keeps the picture while it watches and is not paused, and drops it otherwise.
    void ingestFrame(const WindowPicture& image);

    /// Logs that while it watches.
    void noteStreamStopped(const QString& error);

  signals:
    /// One of the published values has changed.
    void changed();

  private:
    // What one read told.
    struct Reading {
        bool isAnswered = false;
        bool isPassword = false;
        QString selection;
    };
    // A window whose stream has stopped by itself rests until then.
    struct Rest {
        StreamedWindow window;
        Clock::Duration until{};
    };

    void observe();
    void noticeActivation();
    void follow();
    void watchProcess(ProcessId process);
    void forgetProcess();
    void forgetFrame();
    void showWindow(const StreamedWindow& window);
    void hideWindow();
    [[nodiscard]] std::optional<WindowId> windowInFront() const;
    void takeFrame(const WindowFrame& frame);
    void setState(bool isPaused, const QString& message);

    static QCoro::Task<> sampleAgainAndAgain(FrontmostWatchService* self, std::stop_token stop);
    static QCoro::Task<Reading> read(FrontmostWatchService* self, std::stop_token stop);
    [[nodiscard]] bool canRead() const;
    [[nodiscard]] Clock::Duration untilNextPoll() const;
    void consider(const Reading& reading);
    void emitIfChanged(const QString& selection);

    Services m_services;
    bool m_isWatching = false;
    bool m_isPausedForVorq = false;
    QString m_statusMessage;
    std::optional<Sample> m_latest;
    std::function<void(const Sample&)> m_onSample;

    std::optional<WindowPicture> m_latestCGImage;
    QRectF m_latestWindowFrameAX;
    std::optional<ProcessId> m_latestFramePID;
    std::optional<QDateTime> m_latestFrameAt;

    std::optional<ProcessId> m_watchedPID;
    // Nothing until a read has told.
    std::optional<bool> m_isPasswordFocused;
    std::optional<StreamedWindow> m_shown;
    std::optional<Rest> m_rest;
    QString m_lastEmittedSelection;
    QString m_lastWindowTitle;
    std::optional<Clock::Duration> m_lastAXPollAt;
    TaskSlot m_axTask;
};

} // namespace vorq
