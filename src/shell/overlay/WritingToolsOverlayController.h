#pragma once

#include "capture/placement/SelectionSnapshot.h"
#include "platform/Clock.h"
#include "platform/PressMonitor.h"
#include "platform/WindowId.h"
#include "shell/overlay/CalloutPlacement.h"
#include "shell/overlay/OverlayWindow.h"
#include "support/async/TaskSlot.h"
#include "writing/WritingToolsLiveTracker.h"
#include "writing/WritingToolsModel.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace vorq {

class Screens;
class WritingCard;
class Workspace;

/// Opens the card of the writing tools beside what is highlighted in another application, keeps it
/// there while that moves, and closes it: on Escape, a click elsewhere, another application in
/// front, or when the selection is gone. The keyboard stays with the application until the writer
/// presses into the card's field or presses the key again, and goes back there. Main thread only.
class WritingToolsOverlayController final : public QObject, private OverlayWindowInput {
    Q_OBJECT

  public:
    /// A click so soon after the card has come up was not meant for what lies beside it.
    static constexpr Clock::Duration openingClick = std::chrono::milliseconds(150);
    /// How long the card stays for an "Undo" after it has replaced something.
    static constexpr Clock::Duration stayAfterReplacing = std::chrono::seconds(12);
    /// How long a window has to take the keyboard that was pressed on as the card had it.
    static constexpr Clock::Duration keyboardWait = std::chrono::milliseconds(200);

    using Capture = std::function<QCoro::Task<SelectionSnapshot>(std::optional<ProcessId> source,
                                                                 std::stop_token stop)>;

    /// All must outlive the controller.
    struct Platform {
        Clock& clock;
        Screens& screens;
        Workspace& workspace;
        PressMonitor& presses;
        /// Of this program.
        ProcessId process = 0;
    };
    struct Parts {
        OverlayWindow& window;
        WritingCard& card;
        SelectionLooker& looker;
        WritingToolsModel::Services session;
        Capture capture;
        std::function<bool()> isTrusted;
    };

    WritingToolsOverlayController(const Platform& platform, const Parts& parts);
    ~WritingToolsOverlayController() override;

    /// The key, or the command: opens the card over what is highlighted in the application, or
    /// gives the keyboard to one that is open.
    void handleKey(std::optional<ProcessId> source);

    /// Opens the card over a selection, in the place of one that is open.
    void present(const WritingSelection& selection);
    /// The card with a sentence at a place instead of a session.
    void presentNotice(const QString& sentence, const CalloutTarget& at);
    void close();

    [[nodiscard]] bool isOpen() const { return m_presentedAt.has_value(); }
    /// Null while none is on.
    [[nodiscard]] WritingToolsModel* model() const { return m_model.get(); }
    /// Where the arrow touches, in screen coordinates.
    [[nodiscard]] QPointF tipPoint() const { return m_tipPoint; }
    /// While a replacement is under way, which has other windows come to the front.
    [[nodiscard]] bool suppressOutsideClose() const { return m_suppressOutsideClose; }

  signals:
    void openChanged();
    /// The selection is to go to the panel. The card is closed.
    void sendToVorq(const QString& text, std::optional<ProcessId> source);

  private:
    void escapePressed() override { close(); }
    void sizeChanged() override { place(); }
    void closed() override { close(); }

    static QCoro::Task<> open(QPointer<WritingToolsOverlayController> self,
                              std::optional<ProcessId> source, std::stop_token stop);
    void openOver(const SelectionSnapshot& snapshot);
    void connectParts();
    void connectSession();
    void startTracking();
    void come();
    void place();
    void move(const TrackedPlacement& placement);
    void takeKeyboard();
    void giveBackKeyboard();
    void closeByPress();
    void leaveReplacing();
    void finishLeaving(WritingToolsModel* model, const CalloutTarget& target);
    [[nodiscard]] bool isOtherInFront() const;
    [[nodiscard]] bool hasKeyboard() const;
    void handlePress(const ScreenPress& press);
    void handleFrontmost(ProcessId process, WindowId window);
    void handleSelectionGone();
    void closeIfSourceEnded();
    void beginReplacing();
    void endReplacing();
    void leaveSoon();
    void forgetTimer(std::optional<Clock::TimerId>& timer);

    Platform m_platform;
    Parts m_parts;
    WritingToolsLiveTracker m_liveTracker;
    std::unique_ptr<WritingToolsModel> m_model;
    // Of cards that were closed while they replaced something, which goes on.
    std::vector<std::unique_ptr<WritingToolsModel>> m_leaving;
    CalloutTarget m_target;
    QPointF m_tipPoint;
    std::optional<bool> m_pointedUp; // on which side it stands
    std::optional<WindowId> m_sourceWindow;
    std::optional<Clock::Duration> m_presentedAt;
    bool m_suppressOutsideClose = false;
    bool m_hadKeyboard = false; // when a replacement began
    bool m_hasReplaced = false;
    std::optional<Clock::TimerId> m_leaveTimer;
    std::optional<Clock::TimerId> m_closeTimer;
    std::optional<Clock::TimerId> m_keyboardTimer;
    TaskSlot m_openTask;
};

} // namespace vorq
