#pragma once

#include "doubles/desktop/AccessibleTree.h"
#include "doubles/desktop/Applications.h"
#include "doubles/desktop/RecordingRelay.h"

#include <functional>
#include <memory>
#include <optional>

namespace vorq::desktop {

/// The built program and its backend on a desktop, the user signed in, and what they see of it.
class PanelProgram {
  public:
    explicit PanelProgram(const SessionOptions& options = {});
    PanelProgram(const PanelProgram&) = delete;
    PanelProgram& operator=(const PanelProgram&) = delete;
    ~PanelProgram();

    DesktopSession session;

    /// Starts the program anew and waits for its hot keys. Without an address it talks to the
    /// backend.
    void start(const QString& backend = {}, const QProcessEnvironment& additional = {});
    void stop();
    /// Its address.
    [[nodiscard]] QString backend() const { return m_relay->url(); }
    [[nodiscard]] DesktopProgram& program() { return *m_program; }

    /// Puts the applications that must not be captured from into the settings file.
    void exclude(const QStringList& identifiers) const;

    /// What a person does.
    void pressHotKey() const { session.key({"super+shift+a"}); }
    /// The same by the command, as a shortcut of the desktop gives it.
    void summon() const;
    void waitForPanel() const;
    void waitForNoPanel() const;
    /// Hides the panel by Escape and waits until the window is in front.
    void dismissTo(DesktopSession::Window window) const;

    /// The window of the panel while it is on the screen; 0 otherwise.
    [[nodiscard]] DesktopSession::Window panel() const;

    /// The window whose title begins so while it is on the screen; 0 otherwise.
    [[nodiscard]] DesktopSession::Window windowTitled(const QString& beginning) const;

    /// The texts that were sent to be analysed.
    [[nodiscard]] QStringList analysed() const;
    [[nodiscard]] std::vector<QJsonObject> prompts() const;

    /// Whether the text stands anywhere in what went to the backend.
    [[nodiscard]] bool wasSent(const QByteArray& text) const { return m_relay->wasSent(text); }

    /// What a screen reader finds in the panel.
    [[nodiscard]] std::vector<AccessibleNode> controls() const;
    [[nodiscard]] bool press(const QString& name) const;
    /// Where the first element of the name that shows is, in pixels of the screen.
    [[nodiscard]] QRect placeOf(const QString& name) const;
    /// Clicks into the middle of the control with the mouse.
    void click(const QString& name) const;
    /// The control that has the keyboard.
    [[nodiscard]] std::optional<AccessibleNode> focused() const;
    /// Presses Tab until the control of the name has the keyboard, and gives all that had it.
    /// Throws if none of the next forty is.
    std::vector<AccessibleNode> tabTo(const QString& name) const;
    [[nodiscard]] QString textOf(const AccessibleNode& node) const;
    /// What tells where the controls are.
    [[nodiscard]] const AccessibleTree& tree() const;
    /// The entries of the conversation, "You: …" and "Vorq: …".
    [[nodiscard]] QStringList conversation() const;
    /// Waits until the greeting is all that the conversation holds.
    void waitForGreeting() const;
    /// Waits for so many entries the last of which is a complete reply, and gives them.
    [[nodiscard]] QStringList waitForReply(qsizetype entries) const;

  private:
    using IsTitle = std::function<bool(const QString&)>;
    [[nodiscard]] DesktopSession::Window windowWhose(const IsTitle& isTitle) const;

    std::unique_ptr<RecordingRelay> m_relay;
    DesktopProgram* m_program = nullptr;
    mutable std::unique_ptr<AccessibleTree> m_tree;
};

/// Starts the backend in the session and gives its port.
quint16 startGateway(DesktopSession& session);

/// Signs the user of the session in to it by a link, so that each start of the program is.
void signIn(DesktopSession& session, const QString& backend);

/// A text from which the backend can make a reply. One paragraph.
extern const QString material;

/// Waits until the highlight is what is expected, doing the action again and again.
void highlight(const DesktopSession& session, const std::function<void()>& action,
               const QByteArray& expected);

} // namespace vorq::desktop
