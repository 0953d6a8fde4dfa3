// Selections in a box on a slide, each paragraph of which is an element of its own.

#include "doubles/desktop/CaptureDesktop.h"
#include "doubles/desktop/ForeignToolkits.h"

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

const QString text = u"First paragraph here\nSecond paragraph\nThird one"_s;

TEST(SlideCapture, ReadsAllParagraphsOfABox) {
    DesktopSession session;
    const auto accessibility = connected();
    const Application application = openImpress(session, text.toUtf8());
    const auto read = [&] { return focusedText(*accessibility, application.process); };
    // Keys that come while it still loads are lost.
    DesktopSession::waitUntil(
        "the selected box",
        [&] {
            session.key({"Escape", "Escape", "Tab", "F2", "ctrl+a"});
            for (int look = 0; look < 20; ++look)
                if (!read().isEmpty()) return true;
            return false;
        },
        std::chrono::seconds(60));
    waitForFocusedText(*accessibility, application.process, text);

    session.key({"ctrl+Home", "shift+Down"});
    session.key({"shift+Right", "shift+Right", "shift+Right"});
    waitForFocusedText(*accessibility, application.process, "First paragraph here\nSec");
    session.key({"ctrl+Home", "shift+Right", "shift+Right"});
    waitForFocusedText(*accessibility, application.process, "Fi");
}

} // namespace
} // namespace vorq::desktop
