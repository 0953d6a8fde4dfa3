// What is highlighted in the user's program stays highlighted there, whatever is selected in the
// panel.

#include "doubles/desktop/PanelProgram.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

class PanelHighlightTest : public testing::Test {
  protected:
    PanelHighlightTest() {
        vorq.start();
        m_source = openMousepad(session, material.toUtf8());
        highlight(session, [&] { session.key({"ctrl+Home", "ctrl+a"}); }, material.toUtf8());
        vorq.pressHotKey();
        vorq.waitForPanel();
        EXPECT_EQ(vorq.waitForReply(3)[1], "You: Attached: Text capture");
    }

    // The conversation scrolls for a while after a reply.
    [[nodiscard]] QRect placeAtRest(const QString& name) const {
        QRect place;
        int times = 0;
        DesktopSession::waitUntil("a place of " + name, [&] {
            const QRect now = vorq.placeOf(name);
            times = !now.isEmpty() && now == place ? times + 1 : 0;
            place = now;
            return times > 5;
        });
        return place;
    }

    // What is selected in the panel goes to the clipboard, and the highlight is not touched.
    void expectSelected(const QString& gesture, const QString& text) {
        session.own("clipboard", "former");
        session.key({"ctrl+c"});
        QByteArray copied;
        const auto isCopied = [&] {
            copied = session.selection("clipboard");
            return copied != "former";
        };
        DesktopSession::waitUntil("what is selected after " + gesture, isCopied);
        EXPECT_EQ(copied.toStdString(), text.toStdString()) << gesture.toStdString();
        EXPECT_EQ(session.selection("primary").toStdString(), material.toStdString())
            << gesture.toStdString();
    }

    void pressHotKeyAgain() {
        const auto before = vorq.analysed().size();
        vorq.pressHotKey();
        DesktopSession::waitUntil("the highlight to be sent again",
                                  [&] { return vorq.analysed().size() > before; });
        EXPECT_EQ(vorq.analysed().back(), material);
    }

    PanelProgram vorq;
    DesktopSession& session = vorq.session;
    Application m_source;
};

TEST_F(PanelHighlightTest, SurvivesWhatIsSelectedInTheDraft) {
    const QString draft = u"first second third"_s;
    session.type(draft);
    session.key({"ctrl+a"});
    expectSelected("Ctrl+A", draft);
    session.key({"End", "shift+Left", "shift+Left"});
    expectSelected("Shift+Left", "rd");
    session.key({"End", "shift+Home"});
    expectSelected("Shift+Home", draft);
    session.key({"End", "ctrl+shift+Left"});
    expectSelected("Ctrl+Shift+Left", "third");
    session.key({"shift+Up"});
    expectSelected("Shift+Up", draft);
    session.key({"End", "ctrl+Home", "ctrl+shift+End"});
    expectSelected("Ctrl+Shift+End", draft);

    const QRect field = placeAtRest("Ask Vorq for help…");
    const QPoint begin = field.topLeft() + QPoint(1, field.height() / 2);
    const QPoint end = field.topRight() + QPoint(-10, field.height() / 2);
    session.drag(begin, end);
    expectSelected("a drag", draft);
    session.drag(end, begin);
    expectSelected("a drag backwards", draft);
    session.click(begin + QPoint(10, 0), 2);
    expectSelected("a double click", "first");
    session.click(begin + QPoint(60, 0), 3);
    expectSelected("a triple click", draft);

    pressHotKeyAgain();
}

TEST_F(PanelHighlightTest, SurvivesWhatIsSelectedInTheConversation) {
    // Longer than a line, so that it is as wide as a message can be.
    const QString said = u"Farmers along the Nile needed no manure, but why was that so?"_s;
    session.type(said);
    session.key({"Return"});
    const QStringList entries = vorq.waitForReply(5);
    const QRect bubble = placeAtRest("You: " + said);
    const QPoint words = bubble.topRight() + QPoint(-280, 20);
    session.click(words, 2);
    expectSelected("a double click on a message", "Farmers");
    session.drag(words, words + QPoint(80, 0));
    session.click(words, 3);
    expectSelected("a triple click on a message", said);
    session.click(words);
    session.key({"ctrl+a"});
    expectSelected("Ctrl+A in a message", said);

    const QRect reply = placeAtRest(entries.back());
    const QPoint first = reply.topLeft() + QPoint(30, 24);
    session.click(first, 2);
    session.drag(first, first + QPoint(120, 0));
    session.key({"ctrl+c"});
    EXPECT_EQ(session.selection("primary").toStdString(), material.toStdString())
        << "a drag over a reply";

    pressHotKeyAgain();
}

TEST_F(PanelHighlightTest, SurvivesWhatIsSelectedInTheTextThatWasSent) {
    ASSERT_TRUE(vorq.press("Show the text that was sent"));
    const QPoint words = placeAtRest(material).topLeft() + QPoint(22, 8);
    session.click(words, 2);
    expectSelected("a double click on what was sent", "river");
    session.click(words, 3);
    expectSelected("a triple click on what was sent", material);
    pressHotKeyAgain();
}

} // namespace
} // namespace vorq::desktop
