// What a person sees of a start by hand, and what it does to the application in front.

#include "doubles/desktop/TrayProgram.h"

#include <QFile>

namespace vorq::desktop {
namespace {

class StartByHandTest : public TrayProgramTest {
  protected:
    StartByHandTest() {
        m_typed = m_session.write("typed.txt", "");
        m_session.start("xterm", "xterm",
                        {"-geometry", "60x10+700+200", "-e", "sh", "-c", "cat > " + m_typed});
        m_terminal = m_session.waitForWindow("xterm");
        m_session.activate(m_terminal);
    }

    [[nodiscard]] QByteArray typed() const {
        QFile file(m_typed);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString m_typed;
    DesktopSession::Window m_terminal = 0;
};

TEST_F(StartByHandTest, ThePanelComesUpAlsoWithoutATray) {
    start({});
    const DesktopSession::Window panel = m_session.waitForWindow("vorq");
    DesktopSession::waitUntil("the keyboard", [&] { return m_session.activeWindow() == panel; });
}

TEST_F(StartByHandTest, WhatIsTypedMeanwhileStaysWhereItIsTyped) {
    m_session.start("tint2", "tint2");
    start({});
    const QString text = "what is typed while the program starts belongs to the terminal";
    run("xdotool", "xdotool", {"type", "--delay", "40", "--", text}, m_session.environment());
    m_session.key({"Return"});
    DesktopSession::waitUntil("the line", [&] { return typed().contains('\n'); });
    EXPECT_EQ(typed().trimmed(), text.toUtf8());
    EXPECT_NE(m_session.waitForWindow("vorq"), 0U);
    EXPECT_EQ(m_session.activeWindow(), m_terminal);
}

TEST_F(StartByHandTest, AtLoginNothingComesUp) {
    DesktopProgram& vorq = start({"--background", "--launched-at-login"});
    waitFor(vorq, "clear-chat hotkey.");
    m_session.type("typed");
    m_session.key({"Return"});
    DesktopSession::waitUntil("the line", [&] { return typed() == "typed\n"; });
    EXPECT_EQ(m_session.windows().size(), 1U);
}

} // namespace
} // namespace vorq::desktop
