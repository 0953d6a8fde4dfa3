#include "shell/application/DesktopReveal.h"

#include "doubles/shell/ShellFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

RunningApplication named(const QString& identifier, const QString& name = u"Something"_s) {
    return {.process = 5, .identifier = identifier, .name = name};
}

TEST(LikelyBrowser, IsKnownByItsIdentifier) {
    for (const char* identifier :
         {"com.apple.Safari", "com.google.Chrome", "com.google.chrome.canary",
          "company.thebrowser.Browser", "com.brave.Browser.beta", "com.microsoft.edgemac.Dev",
          "org.mozilla.firefox", "com.operasoftware.Opera", "com.vivaldi.Vivaldi",
          "com.apple.SafariTechnologyPreview"})
        EXPECT_TRUE(isLikelyBrowser(named(identifier))) << identifier;
    for (const char* identifier : {"firefox-esr", "chromium", "org.gnome.Epiphany", "Falkon",
                                   "org.qutebrowser.qutebrowser.desktop", "librewolf_librewolf"})
        EXPECT_TRUE(isLikelyBrowser(named(identifier))) << identifier;
}

TEST(LikelyBrowser, OrByItsName) {
    for (const char* name : {"Safari", "Google Chrome", "Firefox Nightly", "Microsoft Edge",
                             "Brave Web Browser", "Arc", "Opera GX", "Vivaldi"})
        EXPECT_TRUE(isLikelyBrowser(named(u"unknown"_s, name))) << name;
}

TEST(LikelyBrowser, OthersAreNone) {
    for (const char* identifier : {"com.google.chromes", "com.apple.safariother", "com.google",
                                   "org.gnome.gedit", "xterm", ""})
        EXPECT_FALSE(isLikelyBrowser(named(identifier))) << identifier;
}

class DesktopRevealTest : public ShellFixture {
  protected:
    DesktopRevealTest() { launch(); }

    // A sign-in has succeeded.
    void succeed() {
        state().signIn().activateFromMacHandoff(u"abc"_s);
        m_clock.settle();
        exchange().respond(200, R"({"signedIn":true,"email":"a@b.c","token":"t"})");
        m_clock.settle();
        m_calls.clear();
        advance(200ms);
    }
};

TEST_F(DesktopRevealTest, TheBrowserThatWasOpenedIsHiddenWhereverItStands) {
    m_signIn.browser = m_workspace.application(browser);
    m_workspace.bringToFront(editor);
    succeed();
    EXPECT_THAT(m_workspace.hidden(), ElementsAre(browser));
    EXPECT_EQ(m_signIn.browser, std::nullopt);
    EXPECT_THAT(m_calls, Contains("menu")) << "it takes the keyboard from nobody";
}

TEST_F(DesktopRevealTest, OneThatIsNotKnownIsHiddenIfItIsInFront) {
    m_workspace.bringToFront(browser);
    succeed();
    EXPECT_THAT(m_workspace.hidden(), ElementsAre(browser));
    EXPECT_THAT(m_calls, Contains("menu"));
}

TEST_F(DesktopRevealTest, AnotherApplicationInFrontStays) {
    m_workspace.bringToFront(editor);
    succeed();
    EXPECT_THAT(m_workspace.hidden(), IsEmpty());
    EXPECT_THAT(m_calls, ElementsAre("flash check")) << "the user is at work in it";
}

TEST_F(DesktopRevealTest, VorqIsNeverHidden) {
    m_workspace.launch({self, u"com.vorq.desk"_s, u"Vorq by Firefox"_s});
    m_workspace.bringToFront(self);
    succeed();
    m_signIn.browser = m_workspace.application(self);
    succeed();
    EXPECT_THAT(m_workspace.hidden(), IsEmpty());
}

TEST_F(DesktopRevealTest, WhereNothingCanBeHiddenItSaysSo) {
    m_workspace.forbidHiding(u"Not here."_s);
    m_workspace.bringToFront(browser);
    succeed();
    EXPECT_THAT(m_log.all(), Contains("Vorq leaves the browser: Not here."));
    EXPECT_THAT(m_calls, ElementsAre("flash check"));
}

TEST_F(DesktopRevealTest, WhatASignInHidShowsTheMenuOnce) {
    m_workspace.bringToFront(browser);
    succeed();
    succeed();
    EXPECT_THAT(m_calls, ElementsAre("flash check"));
}

} // namespace
} // namespace vorq
