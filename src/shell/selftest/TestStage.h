#pragma once

#include "platform/ProcessId.h"
#include "platform/WindowId.h"
#include "platform/copying/Pasteboard.h"
#include "platform/trust/TestWindow.h"

#include <QCoroTask>

#include <cstdint>
#include <optional>
#include <stop_token>

namespace vorq {

class Clock;
class Workspace;

/// The test window, on the screen and in front, and what had to make way for it: the keyboard and
/// what was highlighted. clear() gives all of it back. Main thread only.
class TestStage {
  public:
    /// All must outlive the stage and what it has under way.
    struct Services {
        Clock& clock;
        Workspace& workspace;
        TestWindow& window;
        /// What is highlighted anywhere.
        Pasteboard& highlight;
        /// Whether what this process hands out stays when the test is over.
        bool staysAfterwards = true;
    };

    enum class Setting : std::uint8_t {
        Ready,
        NoWindow,   ///< it did not open
        NotInFront, ///< another window kept the keyboard
    };

    explicit TestStage(const Services& services) : m_services(services) {}
    TestStage(const TestStage&) = delete;
    TestStage& operator=(const TestStage&) = delete;
    ~TestStage() { m_services.window.close(); }

    /// Opens the window with the sentence highlighted, and brings it to the front.
    QCoro::Task<Setting> set(std::stop_token stop);

    /// The process of the window; nothing unless it is set.
    [[nodiscard]] std::optional<ProcessId> process() const { return m_process; }
    /// Nothing where windows are not numbered.
    [[nodiscard]] std::optional<WindowId> windowId() const;
    [[nodiscard]] bool isInFront() const;
    [[nodiscard]] TestWindow& window() { return m_services.window; }

    /// Whether the sentence is handed out as highlighted. It is not where what was highlighted
    /// before could not be given back.
    [[nodiscard]] bool isHandedOut() const { return m_isHandedOut; }

    /// Closes the window and gives everything back. Fine at any time.
    QCoro::Task<> clear();

    /// What the window holds.
    [[nodiscard]] static QString sentence();

  private:
    QCoro::Task<bool> keepHighlight();
    QCoro::Task<bool> bringToFront(std::stop_token stop);
    QCoro::Task<> giveHighlightBack();
    void giveKeyboardBack();

    Services m_services;
    std::optional<ProcessId> m_process;
    std::optional<WindowId> m_formerWindow;
    PasteboardContents m_formerHighlight;
    bool m_isHandedOut = false;
};

} // namespace vorq
