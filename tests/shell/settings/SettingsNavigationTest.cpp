#include "doubles/shell/SettingsFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using Tab = SettingsNavigation::SetupTab;

class SettingsNavigationTest : public SettingsFixture {
  protected:
    void openHub() { ASSERT_TRUE(state->previews().set(Preview::Hub, true)); }
};

TEST_F(SettingsNavigationTest, ThePagesOpenFromTheListAndLeadBack) {
    for (const Pane pane :
         {Pane::Profile, Pane::Privacy, Pane::Appearance, Pane::PanelLook, Pane::CustomizePanel}) {
        navigation().open(pane);
        EXPECT_EQ(navigation().settingsPane(), pane);
        navigation().back();
        EXPECT_EQ(navigation().settingsPane(), Pane::List);
    }
}

TEST_F(SettingsNavigationTest, WithoutAnAccountThereIsNoPageOfIt) {
    state->account().signOut();
    EXPECT_FALSE(navigation().isSignedIn());
    navigation().open(Pane::Profile);
    navigation().open(Pane::Privacy);
    EXPECT_EQ(navigation().settingsPane(), Pane::List);
    navigation().open(Pane::CustomizePanel);
    EXPECT_EQ(navigation().settingsPane(), Pane::CustomizePanel);
}

TEST_F(SettingsNavigationTest, ThePageOfAnAccountGoesWithIt) {
    navigation().open(Pane::Privacy);
    expire();
    EXPECT_EQ(navigation().settingsPane(), Pane::List);
}

TEST_F(SettingsNavigationTest, APageThatNeedsNoAccountStaysWithoutIt) {
    navigation().open(Pane::Appearance);
    state->account().signOut();
    EXPECT_EQ(navigation().settingsPane(), Pane::Appearance);
}

TEST_F(SettingsNavigationTest, WhatIsNotSavedIsNotLeftWithoutAQuestion) {
    navigation().open(Pane::Profile);
    profile().setFirstName("Augusta");
    navigation().back();
    EXPECT_EQ(navigation().settingsPane(), Pane::Profile);
    EXPECT_TRUE(navigation().asksToDiscard());
    navigation().keep();
    EXPECT_FALSE(navigation().asksToDiscard());
    EXPECT_EQ(navigation().settingsPane(), Pane::Profile);
    EXPECT_EQ(profile().firstName(), "Augusta");
    navigation().back();
    navigation().discard();
    EXPECT_EQ(navigation().settingsPane(), Pane::List);
    EXPECT_EQ(profile().firstName(), "Ada");
}

TEST_F(SettingsNavigationTest, TheWindowClosesOnceNothingIsLost) {
    QSignalSpy closes(&navigation(), &SettingsNavigation::closeAllowed);
    navigation().open(Pane::Privacy);
    privacy().setNewPassword("a long one");
    navigation().requestClose();
    EXPECT_EQ(closes.count(), 0);
    navigation().discard();
    EXPECT_EQ(closes.count(), 1);
    EXPECT_EQ(navigation().settingsPane(), Pane::List) << "it opens anew at the list";
    EXPECT_EQ(privacy().newPassword(), "");
    navigation().requestClose();
    EXPECT_EQ(closes.count(), 2);
}

TEST_F(SettingsNavigationTest, VorqQuitsOnceNothingIsLost) {
    QSignalSpy quits(&navigation(), &SettingsNavigation::quitAllowed);
    navigation().requestQuit();
    EXPECT_EQ(quits.count(), 1) << "nothing is open";
    navigation().open(Pane::Profile);
    profile().setFirstName("Augusta");
    navigation().requestQuit();
    EXPECT_EQ(quits.count(), 1);
    EXPECT_TRUE(navigation().asksToDiscard());
    navigation().keep();
    EXPECT_EQ(quits.count(), 1);
    navigation().requestQuit();
    navigation().discard();
    EXPECT_EQ(quits.count(), 2);
}

TEST_F(SettingsNavigationTest, AQuestionGoesWithTheAccountThatItWasAbout) {
    navigation().open(Pane::Profile);
    profile().setFirstName("Augusta");
    navigation().back();
    expire();
    EXPECT_FALSE(navigation().asksToDiscard());
    navigation().discard();
    EXPECT_EQ(profile().firstName(), "Augusta") << "an answer that comes late does nothing";
}

TEST_F(SettingsNavigationTest, AQuestionGoesWithTheUserThatItWasAbout) {
    navigation().open(Pane::Privacy);
    privacy().setCurrentPassword("secret");
    navigation().back();
    signInAs("grace@example.org");
    EXPECT_FALSE(navigation().asksToDiscard());
}

TEST_F(SettingsNavigationTest, TheStripIsThereWhileTheHubIsOpen) {
    EXPECT_FALSE(navigation().hasHub());
    navigation().showHub("tasks");
    EXPECT_EQ(navigation().selectedTab(), Tab::Settings);
    openHub();
    EXPECT_TRUE(navigation().hasHub());
    EXPECT_EQ(navigation().hubSegment(), "ai");
    navigation().showHub("tasks");
    EXPECT_EQ(navigation().selectedTab(), Tab::Library);
    EXPECT_EQ(navigation().hubSegment(), "tasks");
    EXPECT_EQ(state->hub().hubSegmentRaw(), "tasks");
    navigation().showSettings();
    EXPECT_EQ(navigation().selectedTab(), Tab::Settings);
}

TEST_F(SettingsNavigationTest, AHubThatIsClosedLeadsToTheSettings) {
    openHub();
    navigation().showHub("notes");
    ASSERT_TRUE(state->previews().set(Preview::Hub, false));
    EXPECT_EQ(navigation().selectedTab(), Tab::Settings);
    openHub();
    navigation().showHub("notes");
    state->account().signOut();
    EXPECT_EQ(navigation().selectedTab(), Tab::Settings);
}

TEST_F(SettingsNavigationTest, TheLibraryIsNotReadForAHubThatIsClosed) {
    EXPECT_EQ(navigation().hubSegment(), "");
    EXPECT_FALSE(state->isLibraryLoaded());
}

} // namespace
} // namespace vorq
