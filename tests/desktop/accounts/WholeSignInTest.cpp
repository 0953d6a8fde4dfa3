// From a press in the menu of the built program, through the pages of the built backend in a real
// browser, and back.

#include "doubles/desktop/Applications.h"
#include "doubles/desktop/MenuProgram.h"

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

class WholeSignInTest : public MenuProgramTest {
  protected:
    void startSignedOut() {
        makeChromiumDefault(m_session);
        DesktopProgram& gateway =
            m_session.start(VORQ_GATEWAY_PROGRAM, "", {"serve", "--port", "0"});
        DesktopSession::waitUntil("the backend", [&] { return gateway.output().contains('\n'); });
        const QString line = QString::fromUtf8(gateway.output().split('\n').front());
        m_backend.insert("VORQ_API_BASE_URL", line.sliced(line.indexOf("http"_L1)).trimmed());
        startInTray("{}", m_backend);
    }
    /// Waits until the browser shows a page of that title, and gives the keyboard to it.
    DesktopSession::Window waitForPage(const QString& title) {
        const Application browser = inFront(m_session, "chromium");
        DesktopSession::waitUntil(title, [&] {
            return !run("xdotool", "xdotool", {"search", "--name", "^" + title},
                        m_session.environment())
                        .isEmpty();
        });
        return browser.window;
    }
    void tab(int times) {
        for (int i = 0; i < times; ++i)
            m_session.key({"Tab"});
    }
    void waitForReturn(DesktopSession::Window browser) {
        DesktopSession::waitUntil("the browser to go", [&] { return !m_session.isShown(browser); });
        DesktopSession::waitUntil("the menu by itself", [this] {
            m_session.key({"Down"});
            return entry("Signed in as").has_value();
        });
    }

    QProcessEnvironment m_backend;
};

TEST_F(WholeSignInTest, ANewAccountMadeByKeyboardSignsTheProgramIn) {
    startSignedOut();
    openMenu("Sign in");
    choose("Sign in");
    const DesktopSession::Window browser = waitForPage("Sign in");
    tab(4); // over both fields and the button, to the link
    m_session.key({"Return"});
    static_cast<void>(waitForPage("Create an account"));
    tab(1);
    m_session.type("ada@example.org");
    tab(1);
    m_session.type("open sesame");
    m_session.key({"Return"});
    waitForReturn(browser);
    EXPECT_TRUE(entry("Signed in as ada@example.org").has_value());
    (void)keep("sign-in-whole");
}

TEST_F(WholeSignInTest, CancelOnThePageIsToldInTheMenu) {
    startSignedOut();
    openMenu("Sign in");
    choose("Sign in");
    static_cast<void>(waitForPage("Sign in"));
    tab(7); // to the last button
    m_session.key({"Return"});
    DesktopSession::waitUntil("the end of the attempt", [this] {
        openMenu();
        const bool isOver = entry("Sign-in was cancelled.").has_value();
        closeMenu();
        return isOver;
    });
}

} // namespace
} // namespace vorq::desktop
