#pragma once

#include "capture/copy/PasteOver.h"
#include "doubles/capture/CaptureFixture.h"
#include "doubles/panel/ConversationFixture.h"
#include "platform/testing/ScriptedHotKeys.h"
#include "platform/testing/ScriptedKeyPoster.h"
#include "platform/testing/ScriptedPasteboard.h"
#include "platform/trust/PrivacySettings.h"
#include "platform/trust/SessionFacts.h"
#include "platform/trust/TestWindow.h"
#include "shell/hotkeys/HotKeyHandler.h"
#include "shell/selftest/SelfTestServices.h"

#include <QTemporaryDir>

#include <functional>
#include <optional>

namespace vorq {

class ScriptedSessionFacts final : public SessionFacts {
  public:
    QString kind = QStringLiteral("X11");
    PortSupport portalSupport;
    bool isHanging = false;

    [[nodiscard]] QString name() const override { return kind; }
    QCoro::Task<PortSupport> portal(std::stop_token stop) override {
        const Wakeup stopped;
        const std::stop_callback onStop(std::move(stop), [stopped] { stopped.fire(); });
        if (isHanging) co_await stopped;
        const PortSupport given = portalSupport;
        co_return given;
    }
};

class ScriptedPrivacySettings final : public PrivacySettings {
  public:
    PortSupport support;
    QStringList programs;
    QStringList opened;
    std::function<void()> onOpen;

    [[nodiscard]] PortSupport supported() const override { return support; }
    void openPrivacyPane(const QString& anchor) override {
        opened += anchor;
        if (onOpen) onOpen();
    }
    QCoro::Task<QStringList> programsToRestart(std::stop_token) override {
        const QStringList given = programs;
        co_return given;
    }
};

/// A window whose text is changed by hand.
class ScriptedTestWindow final : public TestWindow {
  public:
    PortSupport support;
    bool isHanging = false;
    bool fails = false;
    bool isOpen = false;
    std::optional<HandsOut> handedOut;
    QString content;
    std::function<void()> onOpen;
    std::function<void(TextRange)> onHighlight;
    std::function<QString()> onText;

    [[nodiscard]] PortSupport supported() const override { return support; }
    QCoro::Task<Opened> open(QString text, HandsOut handsOut, std::stop_token stop) override {
        const Wakeup stopped;
        const std::stop_callback onStop(std::move(stop), [stopped] { stopped.fire(); });
        Opened opened = std::unexpected(QStringLiteral("no window"));
        if (isHanging) co_await stopped;
        if (isHanging || fails) co_return opened;
        content = text;
        handedOut = handsOut;
        isOpen = true;
        if (onOpen) onOpen();
        opened = process;
        co_return opened;
    }
    void highlight(TextRange range) override {
        if (onHighlight) onHighlight(range);
    }
    QCoro::Task<std::optional<QString>> text(std::stop_token) override {
        const std::optional<QString> held = onText ? onText() : content;
        co_return held;
    }
    void close() override { isOpen = false; }

    static constexpr ProcessId process = 42;
};

/// The self-test over scripted ports on which everything works. Process 7 is an editor in front.
class SelfTestFixture : public ConversationFixture {
  protected:
    static constexpr ProcessId editor = 7;

    SelfTestFixture();

    /// Runs the whole test. Virtual time goes on meanwhile, by so much a turn.
    void runTest(std::chrono::milliseconds pace = std::chrono::milliseconds(5));
    void turn(std::chrono::milliseconds pace);

    [[nodiscard]] const SelfCheck& resultOf(const QString& id) const;
    [[nodiscard]] QString stateOf(const QString& id) const {
        return selfCheckStates.nameOf(resultOf(id).state);
    }
    [[nodiscard]] QString sentenceOf(const QString& id) const {
        return resultOf(id).sentence.plain();
    }
    [[nodiscard]] QStringList failures() const;

    [[nodiscard]] SelfTestServices services();
    /// A new test of the services as they are now.
    void makeAnew();

    QTemporaryDir m_folder;
    ScriptedSessionFacts m_session;
    ScriptedPrivacySettings m_privacy;
    ScriptedTestWindow m_window;
    ScriptedAccessibility m_accessibility;
    ScriptedPrimarySelection m_primary;
    ScriptedWorkspace m_workspace;
    ScriptedHotKeys m_keysOfDesktop;
    ScriptedKeyPoster m_poster;
    ScriptedCopyShortcut m_copyShortcut;
    ScriptedPasteboard m_clipboard;
    ScriptedPasteboard m_highlight;
    PortSupport m_tray;
    QStringList m_limits;
    bool m_staysAfterwards = true;
    bool m_areHotKeysOfAnother = false;
    TurnQueue m_turns;
    CaptureLog m_captureLog{m_clock, m_folder.filePath("capture.log"),
                            m_folder.filePath("place.log")};
    PasteOver m_pasteOver{{.clock = m_clock,
                           .accessibility = m_accessibility,
                           .pasteboard = m_clipboard,
                           .keys = m_poster,
                           .workspace = m_workspace,
                           .copyShortcut = m_copyShortcut,
                           .log = m_captureLog,
                           .turns = m_turns}};
    HotKeyHandler m_hotKeys{m_keysOfDesktop, m_workspace, m_clock};
    /// The status that the backend tells of itself, and what it answers to a prompt.
    QByteArray m_backendStatus = R"({"service":"vorq-gateway","replies":"provider"})";
    int m_promptStatus = 200;
    bool m_isBackendSilent = false;
    bool m_isBackendDown = false;
    std::unique_ptr<SelfTest> m_test;

  private:
    void answer(const ScriptedExchange& exchange) const;
    void scriptWindow();
};

} // namespace vorq
