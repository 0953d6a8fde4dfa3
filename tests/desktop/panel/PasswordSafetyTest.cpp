// What must not go out, and how it is asked for: the built program beside real browsers, whose
// highlight holds a password in clear.

#include "doubles/desktop/ForeignToolkits.h"
#include "doubles/desktop/PanelProgram.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

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

    // The application keeps its pages to itself, so the highlight is all that is known.
    void openAndPress() {
        openPassword(false);
        press();
        DesktopSession::waitUntil("the question", [&] { return isAsked(); });
    }

    [[nodiscard]] bool isAsked() {
        const auto controls = vorq.controls();
        return std::ranges::any_of(controls, [](const AccessibleNode& node) {
            return node.name == sendName && node.isShowing;
        });
    }

    void waitForNoQuestion() {
        DesktopSession::waitUntil("the question to go", [&] { return !isAsked(); });
    }

    // In the panel, to a screen reader, in logs and all other files of the user's, and on the way
    // to the backend.
    void expectPasswordIsNowhere() {
        for (const AccessibleNode& node : vorq.controls()) {
            EXPECT_FALSE(node.name.contains(password)) << node.role.toStdString();
            EXPECT_FALSE(vorq.textOf(node).contains(password)) << node.role.toStdString();
        }
        EXPECT_FALSE(vorq.program().output().contains(password));
        QStringList searched;
        for (const char* folder : {"/.config/Vorq", "/.local/share/Vorq"}) {
            QDirIterator files(session.home() + folder, QDir::Files | QDir::Hidden,
                               QDirIterator::Subdirectories);
            while (files.hasNext()) {
                QFile file(files.next());
                EXPECT_TRUE(file.open(QIODevice::ReadOnly));
                searched += files.fileName();
                EXPECT_FALSE(file.readAll().contains(password)) << file.fileName().toStdString();
            }
        }
        EXPECT_TRUE(searched.contains("settings.json"));
        EXPECT_TRUE(searched.contains("capture-debug.log"));
        expectNothingWentOut();
    }

    void expectNothingWentOut() {
        EXPECT_THAT(vorq.analysed(), IsEmpty());
        EXPECT_FALSE(vorq.wasSent(password));
    }

    // Of a browser that hands out what it shows of a password.
    void expectBulletsAreHeldBackOf(Application (*open)(DesktopSession&, const QByteArray&)) {
        vorq.start();
        browser = open(session, passwordPage());
        const QByteArray bullets = QString(password.size(), u'•').toUtf8();
        highlight(
            session,
            [&] {
                session.click(session.geometry(browser.window).center());
                session.key({"Tab", "ctrl+a"});
            },
            bullets);
        press();
        DesktopSession::waitUntil("the question", [&] { return isAsked(); });
        expectNothingWentOut();
        EXPECT_FALSE(vorq.wasSent(bullets));
    }

    static constexpr auto sendName = "Send what is held back"_L1;
    static constexpr auto discardName = "Discard what is held back"_L1;

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

TEST_F(PasswordSafety, AHighlightThatReadsLikeAPasswordIsHeldBackAndDiscarded) {
    openAndPress();
    expectPasswordIsNowhere();

    vorq.click(discardName);
    waitForNoQuestion();
    expectPasswordIsNowhere();

    // Nor is it in what is saved of the conversation.
    session.type("save chat");
    session.key({"Return"});
    DesktopSession::waitUntil("a turn to end", [&] {
        const QStringList entries = vorq.conversation();
        return !entries.isEmpty() && entries.back().startsWith("Vorq: ");
    });
    expectPasswordIsNowhere();
}

TEST_F(PasswordSafety, APasswordOfPlainWordsIsHeldBackSinceThePageDoesNotCopyIt) {
    const QByteArray words = "correct horse battery";
    vorq.start();
    browser = openChromium(
        session,
        "<!DOCTYPE html><title>Page</title><input type=password autofocus value='" + words + "'>",
        false);
    highlight(session, [&] { session.key({"ctrl+a"}); }, words);
    session.own("clipboard", "what was copied before");
    press();
    DesktopSession::waitUntil("the question", [&] { return isAsked(); });
    expectNothingWentOut();
    EXPECT_FALSE(vorq.wasSent(words));
    EXPECT_EQ(session.selection("clipboard"), "what was copied before");
}

TEST_F(PasswordSafety, AWordOfAPageIsTakenAtOnceAndTheClipboardIsAsBefore) {
    vorq.start();
    browser = openChromium(
        session, "<!DOCTYPE html><title>Page</title><input autofocus value='photosynthesis'>",
        false);
    highlight(session, [&] { session.key({"ctrl+a"}); }, "photosynthesis");
    session.own("clipboard", "what was copied before");
    press();
    EXPECT_THAT(vorq.waitForReply(3), testing::SizeIs(3));
    EXPECT_THAT(vorq.analysed(), testing::ElementsAre(u"photosynthesis"_s));
    EXPECT_EQ(session.selection("clipboard"), "what was copied before");
}

TEST_F(PasswordSafety, WhatIsHeldBackIsSentOnceTheUserSaysSo) {
    openAndPress();
    vorq.click(sendName);
    waitForNoQuestion();
    DesktopSession::waitUntil("the request", [&] { return vorq.analysed().size() == 1; });
    EXPECT_EQ(vorq.analysed().front(), QString::fromUtf8(password));
}

TEST_F(PasswordSafety, ByKeysAloneItIsDiscardedOrSent) {
    openAndPress();
    (void)vorq.tabTo(discardName);
    session.key({"space"});
    waitForNoQuestion();
    expectPasswordIsNowhere();

    vorq.dismissTo(browser.window);
    press();
    DesktopSession::waitUntil("the question", [&] { return isAsked(); });
    (void)vorq.tabTo(sendName);
    session.key({"Return"});
    DesktopSession::waitUntil("the request", [&] { return vorq.analysed().size() == 1; });
}

TEST_F(PasswordSafety, EscapeDropsWhatIsHeldBack) {
    openAndPress();
    vorq.dismissTo(browser.window);
    vorq.exclude({"chromium"});
    press();
    vorq.waitForGreeting();
    EXPECT_FALSE(isAsked());
    expectPasswordIsNowhere();
}

TEST_F(PasswordSafety, BulletsAreHeldBackAndGoNowhere) {
    expectBulletsAreHeldBackOf(openFalkon);
}

TEST_F(PasswordSafety, BulletsOfWebKitAreHeldBackAndGoNowhere) {
    expectBulletsAreHeldBackOf(openEpiphany);
    expectPasswordIsNowhere();
}

// It hands out nothing, and what another program has highlighted is not its.
TEST_F(PasswordSafety, OverAPasswordOfJavaNothingGoesOutThatStandsElsewhere) {
    const QByteArray old = "words that were highlighted before";
    vorq.start();
    session.own("primary", old);
    browser = openSwingPassword(session, password);
    session.key({"ctrl+a"});
    press();
    vorq.waitForGreeting();
    expectNothingWentOut();
    EXPECT_FALSE(vorq.wasSent(old));
}

} // namespace
} // namespace vorq::desktop
