// What must not go out, and how it is asked for: the built program beside real browsers, whose
// highlight holds a password in clear.

#include "desktop/PanelProgram.h"

#include <gmock/gmock.h>

#include <csignal>

namespace vorq::desktop {
namespace {

using testing::IsEmpty;

const QByteArray password = "Tr0ub4dor&3x";

QByteArray passwordPage() {
    return "<!DOCTYPE html><html><head><meta charset=\"utf-8\"><title>Page</title></head><body>"
           "<form><input type=\"password\" autofocus value=\"" +
           QByteArray(password).replace("&", "&amp;") + "\"></form></body></html>";
}

class PasswordSafety : public testing::Test {
  protected:
    ~PasswordSafety() override {
        if (browser.process > 0) ::kill(browser.process, SIGKILL);
    }

    void openPassword(bool isAccessible) {
        vorq.start();
        browser = openChromium(session, passwordPage(), isAccessible);
        highlight(session, [&] { session.key({"ctrl+a"}); }, password);
    }

    // Presses the hot key and waits until the capture is over.
    void press() {
        const qsizetype captures = vorq.program().output().count("Vorq capture: ");
        vorq.pressHotKey();
        vorq.waitForPanel();
        DesktopSession::waitUntil("the end of the capture", [&] {
            return vorq.program().output().count("Vorq capture: ") > captures;
        });
    }

    void expectNothingWentOut() {
        EXPECT_THAT(vorq.analysed(), IsEmpty());
        EXPECT_FALSE(vorq.wasSent(password));
    }

    PanelProgram vorq;
    DesktopSession& session = vorq.session;
    Application browser;
};

// The list is changed while the program runs, by the user's editor.
TEST_F(PasswordSafety, AnExcludedApplicationIsNotCaptured) {
    const QByteArray words = "words of the page";
    vorq.start();
    browser = openChromium(
        session, "<!DOCTYPE html><title>Page</title><input autofocus value='" + words + "'>", true);
    highlight(session, [&] { session.key({"ctrl+a"}); }, words);
    vorq.exclude({"Chromium"});
    press();
    vorq.waitForGreeting();
    EXPECT_FALSE(vorq.wasSent(words));

    vorq.exclude({});
    vorq.dismissTo(browser.window);
    press();
    EXPECT_THAT(vorq.waitForReply(3), testing::SizeIs(3));
    EXPECT_THAT(vorq.analysed(), testing::ElementsAre(QString::fromUtf8(words)));
}

TEST_F(PasswordSafety, APasswordThatABrowserTellsOfIsNotCaptured) {
    openPassword(true);
    press();
    vorq.waitForGreeting();
    expectNothingWentOut();
}

} // namespace
} // namespace vorq::desktop
