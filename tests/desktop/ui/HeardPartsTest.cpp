// What screen readers are told of the controls by events, while keys use them.

#include "doubles/desktop/DesktopSession.h"
#include "doubles/desktop/EventEars.h"

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

using testing::ElementsAre;

class HeardPartsTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { s_session = std::make_unique<DesktopSession>(); }
    static void TearDownTestSuite() { s_session.reset(); }

    ~HeardPartsTest() override {
        m_ears.reset();
        m_window->kill();
        s_session->waitForNoWindow("part_window");
    }

    // A button that counts its presses has the keyboard; below it is the part.
    void show(const QString& part) {
        m_window = &s_session->start(
            VORQ_PART_WINDOW, "",
            {"TextButton { focus: true; text: 'Press'; onClicked: ++root.presses }\n" + part});
        s_session->activate(s_session->waitForWindow("part_window"));
        m_tree = std::make_unique<AccessibleTree>(m_window->process());
        // Only of elements that it has met a reader hears.
        DesktopSession::waitUntil("the button", [this] {
            for (const AccessibleNode& node : m_tree->read())
                if (node.name == "Press" && node.isShowing) return true;
            return false;
        });
        m_ears = std::make_unique<EventEars>(*m_tree);
    }
    void press() {
        s_session->key({"Return"});
        m_ears->forget();
    }

    static inline std::unique_ptr<DesktopSession> s_session;
    DesktopProgram* m_window = nullptr;
    std::unique_ptr<AccessibleTree> m_tree;
    std::unique_ptr<EventEars> m_ears;
};

TEST_F(HeardPartsTest, AControlThatGoesOffAndOn) {
    show("Item { y: 80; enabled: root.presses !== 1; TextButton { text: 'Send' } }");
    press();
    EXPECT_THAT(m_ears->switched(), ElementsAre("Send off"));
    press();
    EXPECT_THAT(m_ears->switched(), ElementsAre("Send off", "Send on"));
}

TEST_F(HeardPartsTest, EachSentenceOfAToast) {
    show("Toast { id: toast; y: 300 }\n"
         "onPressesChanged: toast.show(presses < 3 ? 'Moved to Study' : 'Moved to Work')");
    press();
    EXPECT_THAT(m_ears->announced(), ElementsAre("Moved to Study"));
    press();
    EXPECT_THAT(m_ears->announced(), ElementsAre("Moved to Study", "Moved to Study"));
    press();
    EXPECT_THAT(m_ears->announced(),
                ElementsAre("Moved to Study", "Moved to Study", "Moved to Work"));
}

TEST_F(HeardPartsTest, EachErrorOfAField) {
    show("FormField { y: 80; width: 300; label: 'Password'; hint: 'At least 8 characters.'\n"
         "error: ['', 'Too short', '', 'Too long'][root.presses] }");
    press();
    EXPECT_THAT(m_ears->announced(), ElementsAre("Too short"));
    press();
    EXPECT_THAT(m_ears->announced(), ElementsAre("Too short")) << "a hint is not said";
    press();
    EXPECT_THAT(m_ears->announced(), ElementsAre("Too short", "Too long"));
}

} // namespace
} // namespace vorq::desktop
