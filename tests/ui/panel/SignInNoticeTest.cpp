#include "doubles/backend/ScriptedBrowserSignIn.h"
#include "doubles/ui/PanelStage.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

/// The panel before anybody has signed in.
class SignInNoticeTest : public testing::Test {
  protected:
    void show() {
        stage.state->account().signOut();
        stage.show();
        settle();
    }
    void settle() {
        stage.clock.advance(std::chrono::seconds(1));
        stage.settle(50);
    }
    [[nodiscard]] QStringList shown() {
        QStringList texts;
        QQuickItem* notice = stage.find("SignInNotice");
        if (!notice || !notice->isVisible()) return texts;
        for (QQuickItem* item : notice->findChildren<QQuickItem*>())
            if (item->isVisible() && !item->property("text").toString().isEmpty())
                texts += item->property("text").toString();
        return texts;
    }
    [[nodiscard]] QQuickItem* button(const QString& text = "Sign in on this computer") {
        for (QQuickItem* item : stage.findAll("TextButton"))
            if (item->isVisible() && item->property("text").toString() == text) return item;
        return nullptr;
    }
    void click(const QString& text = "Sign in on this computer") {
        QQuickItem* item = button(text);
        ASSERT_TRUE(item) << text.toStdString();
        stage.drawFrame();
        QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
        settle();
    }
    void giveCode() {
        stage.localSignIn.answer(QUrl("vorq://auth/callback?handoff=once"));
        settle();
    }

    void signedIn() {
        stage.transport.last().respond(200, R"({"signedIn":true,"email":"a@b.c","token":"t"})");
        settle();
    }

    void waitForBrowser() {
        stage.state->signIn().setBrowserSignIn(&browser);
        show();
        click("Sign in");
        ASSERT_EQ(browser.modes, QStringList("sign-in"));
    }
    void endAttempt(const SignInError& error) {
        browser.error = error;
        browser.attempts.back().fire();
        settle();
    }

    ScriptedBrowserSignIn browser;
    PanelStage stage;
};

TEST_F(SignInNoticeTest, APressSignsInInTheBrowser) {
    waitForBrowser();
    EXPECT_THAT(shown(), testing::IsSupersetOf({"Waiting for browser…", "Cancel"}));
    EXPECT_EQ(button(), nullptr) << "one way at a time";
    click("Waiting for browser…");
    EXPECT_EQ(browser.modes.size(), 1) << "a second press does nothing";
    browser.session = Session();
    browser.session->signedIn = true;
    browser.session->token = "t";
    browser.attempts.back().fire();
    settle();
    EXPECT_TRUE(stage.state->account().signedIn());
    EXPECT_THAT(shown(), testing::IsEmpty());
}

TEST_F(SignInNoticeTest, WhoNoLongerWaitsForTheBrowserSaysSo) {
    waitForBrowser();
    click("Cancel");
    EXPECT_FALSE(stage.state->signIn().isSigningIn());
    EXPECT_THAT(shown(), testing::IsSupersetOf({"Sign in", "Sign in on this computer"}));
    EXPECT_EQ(button("Cancel"), nullptr);
    EXPECT_EQ(button("Waiting for browser…"), nullptr);
    click("Sign in");
    EXPECT_EQ(browser.modes.size(), 2);
}

TEST_F(SignInNoticeTest, WhatTheBrowserCameToIsTold) {
    waitForBrowser();
    endAttempt(SignInError::timedOut("Vorq"));
    EXPECT_THAT(shown(), testing::Contains("Vorq sign-in timed out. Try again."));
    click("Sign in");
    EXPECT_THAT(shown(), testing::Not(testing::Contains("Vorq sign-in timed out. Try again.")));
}

TEST_F(SignInNoticeTest, AButtonThatGoesLeavesTheKeyboardInThePanel) {
    waitForBrowser();
    QQuickItem* const cancel = button("Cancel");
    for (int press = 0; press < 12 && !cancel->hasActiveFocus(); ++press)
        QTest::keyClick(stage.window.get(), Qt::Key_Tab);
    ASSERT_TRUE(cancel->hasActiveFocus());
    endAttempt(SignInError::cancelled());
    EXPECT_TRUE(button("Sign in")->hasActiveFocus());
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    settle();
    EXPECT_EQ(browser.modes.size(), 2);
}

TEST_F(SignInNoticeTest, ItLeadsToTheSettings) {
    show();
    QSignalSpy wanted(stage.panel.get(), &PanelViewModel::settingsWanted);
    click("Settings");
    EXPECT_EQ(wanted.count(), 1);
}

TEST_F(SignInNoticeTest, ItStandsThereBeforeAnythingIsTyped) {
    show();
    EXPECT_THAT(shown(), testing::Contains("You are not signed in."));
    EXPECT_THAT(shown(), testing::Contains("Sign in on this computer"));
}

TEST_F(SignInNoticeTest, WhoIsSignedInSeesNothingOfIt) {
    stage.show();
    settle();
    EXPECT_THAT(shown(), testing::IsEmpty());
    EXPECT_EQ(button(), nullptr);
}

TEST_F(SignInNoticeTest, APressSignsInOnThisComputer) {
    show();
    click();
    EXPECT_EQ(stage.localSignIn.asked, 1);
    EXPECT_THAT(shown(), testing::Contains("Signing in…"));
    giveCode();
    EXPECT_EQ(stage.transport.last().path(), "/auth/mac-handoff/exchange");
    EXPECT_EQ(stage.transport.last().json().value("code").toString(), "once");
    signedIn();
    EXPECT_TRUE(stage.state->account().signedIn());
    EXPECT_THAT(shown(), testing::IsEmpty());
}

TEST_F(SignInNoticeTest, KeysReachItAndADraftIsKept) {
    show();
    QTest::keyClick(stage.window.get(), Qt::Key_X);
    for (int press = 0; press < 10 && !button()->hasActiveFocus(); ++press)
        QTest::keyClick(stage.window.get(), Qt::Key_Tab);
    QQuickItem* const pressed = button();
    ASSERT_TRUE(pressed->hasActiveFocus());
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(pressed);
    ASSERT_TRUE(element);
    EXPECT_EQ(element->text(QAccessible::Name), "Sign in on this computer");
    QTest::keyClick(stage.window.get(), Qt::Key_Return);
    settle();
    EXPECT_EQ(stage.localSignIn.asked, 1);
    EXPECT_TRUE(pressed->hasActiveFocus()) << "while it is under way";
    giveCode();
    signedIn();
    QTest::keyClick(stage.window.get(), Qt::Key_Y);
    EXPECT_TRUE(stage.state->account().signedIn());
    EXPECT_EQ(stage.panel->prompt(), "xy") << "the draft has the keyboard";
}

TEST_F(SignInNoticeTest, AnAttemptThatFailsSaysWhyAndCanBeRepeated) {
    show();
    click();
    stage.localSignIn.answer(std::unexpected(QString("vorq-gateway did not answer.")));
    settle();
    EXPECT_THAT(shown(), testing::Contains("vorq-gateway did not answer."));
    click();
    EXPECT_EQ(stage.localSignIn.asked, 2);
    giveCode();
    stage.transport.last().fail("refused");
    settle();
    EXPECT_THAT(shown(), testing::Contains(testing::Truly([](const QString& text) {
                    return text.startsWith("Could not reach Vorq at ") &&
                           text.contains("vorq-gateway serve");
                })));
    EXPECT_FALSE(stage.state->account().signedIn());
    EXPECT_TRUE(button());
}

TEST_F(SignInNoticeTest, ASessionThatEndsBringsItUp) {
    stage.show();
    settle();
    stage.state->account().markSessionExpired();
    settle();
    EXPECT_THAT(shown(), testing::Contains("You are not signed in."));
}

} // namespace
} // namespace vorq
