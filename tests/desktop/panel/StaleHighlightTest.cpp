// Text that is highlighted no more, or in another window, although its program still hands it out.

#include "doubles/desktop/PanelProgram.h"

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

QByteArray page(const QByteArray& words) {
    return "<!DOCTYPE html><html><head><meta "
           "charset=\"utf-8\"><title>Page</title></head><body><p>" +
           words + "</p></body></html>";
}

class StaleHighlight : public testing::Test {
  protected:
    void SetUp() override { vorq.start(); }

    // Where the page has no text. Not where the last click was, which would make a double click.
    void clickBesideTheText(const Application& browser) {
        const QPoint corner = session.geometry(browser.window).bottomRight();
        session.click(corner - QPoint(80, 80 + 30 * (++m_clicks % 5)));
    }

    void highlightAll(const Application& browser) {
        const auto selectAll = [&] {
            clickBesideTheText(browser);
            session.key({"ctrl+a"});
        };
        highlight(session, selectAll, material.toUtf8());
    }

    // Presses the hot key, waits until the capture is over, puts the panel away, and tells whether
    // anything was captured.
    bool capturesIn(const Application& browser) {
        const QByteArray end = "Vorq capture: ";
        const qsizetype before = vorq.program().output().count(end);
        vorq.pressHotKey();
        vorq.waitForPanel();
        DesktopSession::waitUntil("the end of the capture",
                                  [&] { return vorq.program().output().count(end) > before; });
        const QByteArray output = vorq.program().output();
        const bool isEmpty = output.sliced(output.lastIndexOf(end)).contains("chars=0\n");
        if (!isEmpty) waitForAnalysed(++m_captured);
        vorq.dismissTo(browser.window);
        return !isEmpty;
    }

    void waitForAnalysed(qsizetype texts) {
        DesktopSession::waitUntil("the highlight at the backend",
                                  [&] { return vorq.analysed().size() == texts; });
        EXPECT_EQ(vorq.analysed().back(), material);
    }

    PanelProgram vorq;
    DesktopSession& session = vorq.session;

  private:
    int m_clicks = 0;
    qsizetype m_captured = 0;
};

TEST_F(StaleHighlight, OfAnotherWindowOfTheProgramIsNotCaptured) {
    const Application first = openChromium(session, page(material.toUtf8()), false);
    highlightAll(first);
    const Application second = openChromiumWindow(session, page("nothing of interest"));
    ASSERT_EQ(first.process, second.process);
    ASSERT_NE(first.window, second.window);
    ASSERT_EQ(session.selection("primary").trimmed(), material.toUtf8());
    EXPECT_FALSE(capturesIn(second));
    session.activate(first.window);
    EXPECT_TRUE(capturesIn(first));
}

TEST_F(StaleHighlight, OfABrowserIsNotCapturedAfterAClick) {
    const Application browser = openFalkon(session, page(material.toUtf8()));
    highlightAll(browser);
    EXPECT_TRUE(capturesIn(browser));

    clickBesideTheText(browser);
    ASSERT_EQ(session.selection("primary").trimmed(), material.toUtf8());
    EXPECT_FALSE(capturesIn(browser)) << "nothing is highlighted any more";

    highlightAll(browser);
    EXPECT_TRUE(capturesIn(browser));
}

} // namespace
} // namespace vorq::desktop
