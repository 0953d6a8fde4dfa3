#pragma once

#include "platform/DesktopPlatform.h"
#include "shell/look/PanelLook.h"
#include "shell/permissions/Walkthrough.h"
#include "shell/permissions/WalkthroughWindow.h"
#include "ui/bindings/UiContext.h"

#include <QObject>
#include <QQmlEngine>

#include <memory>

namespace vorq {

class VorqAppState;

/// What the walkthrough is made from. All of it must outlive it.
struct WalkthroughContext {
    DesktopPlatform& platform;
    VorqAppState& state;
    SelfTestRun::Provide selfTest;
};

/// The walkthrough on the user's desktop: its window is there while the permissions say that it
/// shows. Needs a QApplication. Main thread only.
class DesktopWalkthrough final : public QObject {
    Q_OBJECT

  public:
    explicit DesktopWalkthrough(const WalkthroughContext& context);
    ~DesktopWalkthrough() override;

    /// Shows it, with the keyboard, since the user asks for it. Anything else that shows it leaves
    /// the keyboard where it is.
    void ask();
    /// The same for who has agreed already.
    void turnAccessibilityOn();
    void askForSelfTest();
    /// The same, and runs it.
    void runSelfTest();

    void offerInFirstRun() { m_view.offerInFirstRun(); }

  private:
    struct Shown {
        Shown(const WalkthroughWindow::Platform& platform, UiContext& context);
        ~Shown();

        QQmlEngine engine;
        WalkthroughWindow window;
    };

    void follow();
    void make();
    void dismiss();
    void takeLook();
    void takeRoom();

    WalkthroughContext m_context;
    Walkthrough m_view;
    PanelLook m_look;
    UiContext m_ui;
    WalkthroughWindow::Keyboard m_keyboard = WalkthroughWindow::Keyboard::Leaves;
    bool m_startsWithTest = false;
    std::unique_ptr<Shown> m_shown;
};

} // namespace vorq
