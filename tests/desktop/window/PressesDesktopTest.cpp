#include "doubles/desktop/PanelDesktopFixture.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;

// Keys are told of while somebody wants them, whoever has the keyboard, and presses need not be.
class PressesDesktop : public PanelDesktopFixture {
  protected:
    PressesDesktop() {
        QObject::connect(&m_presses, &PressMonitor::keyPressed, &m_counter, [this] { ++m_keys; });
        QObject::connect(&m_presses, &PressMonitor::scrolled, &m_counter, [this] { ++m_steps; });
    }

    void type(const QString& letters, const QByteArray& all) {
        m_session.type(letters);
        m_session.key({"Return"});
        waitUntil("the text", [&] { return typedInto("source") == all; });
        letSettle();
    }

    QObject m_counter;
    int m_keys = 0;
    int m_steps = 0;
};

TEST_F(PressesDesktop, TellsOfKeysWhileSomebodyWantsThem) {
    startTerminal("source");
    type("one", "one\n");
    EXPECT_EQ(m_keys, 0);
    m_presses.startKeys();
    m_presses.startKeys();
    type("two", "one\ntwo\n");
    EXPECT_EQ(m_keys, 4);
    m_presses.stopKeys();
    type("six", "one\ntwo\nsix\n");
    EXPECT_EQ(m_keys, 8) << "the other still wants them";
    m_presses.stopKeys();
    type("ten", "one\ntwo\nsix\nten\n");
    EXPECT_EQ(m_keys, 8);
}

TEST_F(PressesDesktop, KeysAndPressesAreWantedApart) {
    const Window source = startTerminal("source");
    const QRect frame = m_session.geometry(source);
    m_presses.start();
    m_presses.startKeys();
    m_presses.stop();
    m_session.scroll(frame.center(), 1);
    type("one", "one\n");
    EXPECT_EQ(m_keys, 4);
    EXPECT_EQ(m_steps, 0);
    m_presses.start();
    m_presses.stopKeys();
    m_session.scroll(frame.center(), 1);
    waitUntil("the step", [this] { return m_steps == 1; });
    type("two", "one\ntwo\n");
    EXPECT_EQ(m_keys, 4);
    m_presses.stop();
}

} // namespace
} // namespace vorq
