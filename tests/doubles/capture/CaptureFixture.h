#pragma once

#include "capture/placement/HighlightSearch.h"
#include "capture/placement/SnapshotCapture.h"
#include "capture/selection/CaptureLog.h"
#include "capture/selection/CopyShortcut.h"
#include "capture/selection/NoteCapture.h"
#include "capture/selection/PanelCapture.h"
#include "capture/source/CaptureGate.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedAccessibility.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedPrimarySelection.h"
#include "platform/testing/ScriptedScreens.h"
#include "platform/testing/ScriptedWorkspace.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gmock/gmock.h>

#include <map>
#include <memory>

namespace vorq {

class ScriptedCopyShortcut final : public CopyShortcut {
  public:
    QString text;
    bool canCopy = true;
    int copies = 0;
    /// Runs when a copy is asked for.
    std::function<void()> onCopy;

    [[nodiscard]] bool canCopyFrom(std::optional<ProcessId>) const override { return canCopy; }
    QCoro::Task<QString> captureFromCopyShortcutFast(std::optional<ProcessId>,
                                                     std::stop_token) override {
        ++copies;
        if (onCopy) onCopy();
        // What is returned is moved from.
        const QString given = text;
        co_return given;
    }
};

class ScriptedHighlightSearch final : public HighlightSearch {
  public:
    std::optional<VisualHighlight> seen;
    int screenshots = 0;

    QCoro::Task<std::optional<VisualHighlight>>
    highlightPlacementFromScreenshot(std::optional<ProcessId>, QPointF, std::stop_token) override {
        ++screenshots;
        const auto given = seen;
        co_return given;
    }
};

/// All that captures. Its parts end in the order in which they need one another.
struct Captures {
    CaptureGate gate;
    SelectionReader reader;
    PanelCapture panel;
    NoteCapture notes;
    SnapshotCapture snapshots;

    struct Ports {
        Clock& clock;
        Accessibility& accessibility;
        PrimarySelection& primary;
        Workspace& workspace;
        CopyShortcut& copyShortcut;
        HighlightSearch& search;
        const Screens& screens;
        const PanelShowings& showings;
        CaptureLog& log;
        Defaults& settings;
    };
    explicit Captures(const Ports& ports)
        : gate(ports.accessibility, ports.workspace, ports.settings),
          reader({ports.clock, ports.accessibility, ports.primary, gate}),
          panel({reader, gate, ports.copyShortcut, ports.showings, ports.log}),
          notes({reader, gate, ports.copyShortcut}),
          snapshots({reader, gate, ports.copyShortcut, ports.search, ports.screens, ports.log}) {}
};

/// A task under way, and what it gave.
template<typename Result>
class Running {
  public:
    explicit Running(QCoro::Task<Result> task) { drive(std::move(task), m_result); }

    [[nodiscard]] bool hasEnded() const { return m_result->has_value(); }

    /// Runs the event loop until there is a result; the clock stands still meanwhile.
    [[nodiscard]] Result result() const {
        for (const QDeadlineTimer guard(20'000); !hasEnded() && !guard.hasExpired();)
            turnOnce();
        if (!hasEnded()) throw std::runtime_error("the task does not end");
        return **m_result;
    }

    /// The same, where what is begun on the way is due as soon as it is begun: all time is spent.
    [[nodiscard]] Result resultOnceDue(ManualClock& clock) const {
        for (const QDeadlineTimer guard(20'000); !hasEnded() && !guard.hasExpired();) {
            turnOnce();
            clock.advance(Clock::Duration::zero());
        }
        return result();
    }

    static void turnOnce() {
        QCoreApplication::processEvents();
        QThread::msleep(1);
    }

  private:
    static QCoro::Task<> drive(QCoro::Task<Result> task,
                               std::shared_ptr<std::optional<Result>> result) {
        *result = co_await task;
    }

    std::shared_ptr<std::optional<Result>> m_result = std::make_shared<std::optional<Result>>();
};

/// Whether or not it is held back.
inline QCoro::Task<QString> textOf(QCoro::Task<CapturedText> capturing) {
    const CapturedText captured = co_await capturing;
    const QString text = captured.text;
    co_return text;
}

class CaptureTest : public testing::Test {
  protected:
    static constexpr std::int32_t source = 42;

    CaptureTest() {
        screens.all.front().frame = {0, 0, 1000, 800};
        screens.pointerAt = {300, 200};
        identify(QStringLiteral("org.xfce.mousepad"));
        workspace.bringToFront(source);
    }

    void identify(const QString& identifier) {
        workspace.launch(
            {.process = source, .identifier = identifier, .name = QStringLiteral("Source")});
    }

    ScriptedElement& focus() {
        accessibility.focusedName = QStringLiteral("field");
        return accessibility.element(QStringLiteral("field"));
    }

    void select(const QString& text) {
        focus().text = text;
        focus().range = TextRange{.location = 0, .length = text.size()};
    }

    void highlight(const QString& text, std::uint64_t timestamp = 1) {
        primary.owner = source;
        primary.highlight = {.text = text, .ownership = {.window = 7, .timestamp = timestamp}};
    }

    [[nodiscard]] Running<QString> startHotKey() {
        return Running<QString>(
            textOf(captures->panel.captureSelectedTextForHotKey(source, stop.get_token())));
    }
    [[nodiscard]] QString hotKey() { return startHotKey().result(); }
    [[nodiscard]] QString noteSave() {
        return Running<QString>(
                   textOf(captures->notes.captureSelectedTextForNoteSave(source, stop.get_token())))
            .result();
    }
    [[nodiscard]] SelectionSnapshot selection(bool useScreenGeometry = false) {
        return Running<SelectionSnapshot>(captures->snapshots.captureSelection(source, std::nullopt,
                                                                               useScreenGeometry,
                                                                               stop.get_token()))
            .result();
    }

    static void waitUntil(const std::function<bool()>& isTrue) {
        for (const QDeadlineTimer guard(20'000); !isTrue();) {
            ASSERT_FALSE(guard.hasExpired());
            Running<QString>::turnOnce();
        }
    }
    void waitUntilHanging() { waitUntilHanging(accessibility.hanging); }
    void waitUntilPrimaryHangs() { waitUntilHanging(primary.hanging); }

    [[nodiscard]] static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] QByteArray placeLog() const { return contentOf(folder.filePath("place.log")); }

    QTemporaryDir folder;
    ManualClock clock;
    ScriptedAccessibility accessibility;
    ScriptedPrimarySelection primary;
    ScriptedWorkspace workspace;
    ScriptedCopyShortcut copyShortcut;
    ScriptedHighlightSearch search;
    ScriptedScreens screens;
    PanelShowings showings;
    ScriptedDefaults settings;
    CaptureLog log{clock, folder.filePath("library/capture-debug.log"),
                   folder.filePath("place.log")};
    std::stop_source stop;
    std::unique_ptr<Captures> captures = std::make_unique<Captures>(
        Captures::Ports{clock, accessibility, primary, workspace, copyShortcut, search, screens,
                        showings, log, settings});

  private:
    static void waitUntilHanging(const std::atomic<int>& hanging) {
        waitUntil([&hanging] { return hanging > 0; });
    }
};

} // namespace vorq
