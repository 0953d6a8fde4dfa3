#include "shell/status/StatusMenu.h"
#include "doubles/backend/ScriptedBrowserSignIn.h"
#include "doubles/panel/ConversationFixture.h"
#include "doubles/shell/MenuPress.h"
#include "platform/testing/ScriptedPermissionProbe.h"

#include <QActionGroup>
#include <QApplication>
#include <QColorDialog>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class StatusMenuTest : public ConversationFixture {
  protected:
    StatusMenuTest() {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        m_menu.bindAppState(state());
        QObject::connect(&m_menu, &StatusMenu::chosen,
                         [this](StatusCommand command) { m_chosen.push_back(command); });
    }

    // The texts of a menu, "-" for a separator.
    static QStringList texts(const QMenu& menu) {
        QStringList texts;
        for (const QAction* action : menu.actions())
            if (action->isVisible()) texts += action->isSeparator() ? u"-"_s : action->text();
        return texts;
    }

    [[nodiscard]] static QAction* find(const QMenu& menu, const QString& text) {
        for (QAction* action : menu.actions()) {
            if (action->text() == text) return action;
            if (action->menu() == nullptr) continue;
            if (QAction* inner = find(*action->menu(), text)) return inner;
        }
        return nullptr;
    }

    [[nodiscard]] QAction* action(const QString& text) const { return find(m_menu, text); }

    void press(const QString& text) {
        m_menu.popup({0, 0});
        EXPECT_TRUE(pressEntry(m_menu, text)) << text.toStdString();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !m_menu.isVisible(); }));
    }

    [[nodiscard]] static QColorDialog* colorDialog() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<QColorDialog*>(widget); found && found->isVisible())
                return found;
        return nullptr;
    }

    StatusMenu m_menu;
    std::vector<StatusCommand> m_chosen;
};

TEST_F(StatusMenuTest, WhatTheWatchDoesStandsAboveTheCommandsWhileItIsOpen) {
    const QStringList before = texts(m_menu);
    m_menu.setWatchStatus("Watching Pens & Co");
    const QStringList shown = texts(m_menu);
    const qsizetype at = shown.indexOf("Watching Pens && Co");
    ASSERT_GE(at, 0);
    EXPECT_EQ(shown[at + 1], "-");
    EXPECT_FALSE(find(m_menu, "Watching Pens && Co")->isEnabled());
    m_menu.setWatchStatus("");
    EXPECT_EQ(texts(m_menu), before);
}

TEST_F(StatusMenuTest, WhatTheSessionLacksIsToldOnlyWhereItLacksSomething) {
    const QStringList before = texts(m_menu);
    m_menu.setSessionLimits({"No keys & no windows.", "No clipboard."});
    const QAction* entry = find(m_menu, "Not in This Session");
    ASSERT_NE(entry, nullptr);
    ASSERT_NE(entry->menu(), nullptr);
    EXPECT_TRUE(entry->isVisible());
    EXPECT_THAT(texts(*entry->menu()), ElementsAre("No keys && no windows.", "No clipboard."));
    m_menu.setSessionLimits({"No clipboard."});
    EXPECT_THAT(texts(*entry->menu()), ElementsAre("No clipboard."));
    m_menu.setSessionLimits({});
    EXPECT_EQ(texts(m_menu), before);
}

TEST_F(StatusMenuTest, SaysWhoIsSignedIn) {
    const QString name = state().account().profile().displayName();
    EXPECT_THAT(texts(m_menu), ElementsAre("Signed in as " + name, "-", "History", "Model", "-",
                                           "Toggle Vorq", "Save Chat to Notes", "Clear Chat", "-",
                                           "Customize Vorq", "Accessibility\tDisabled", "Sign out",
                                           "Delete Vorq", "-", "Quit Vorq"));
    EXPECT_TRUE(action("Clear Chat")->isEnabled());
    state().account().markSessionExpired();
    EXPECT_EQ(texts(m_menu).front(), "Not signed in");
    EXPECT_FALSE(action("Clear Chat")->isEnabled());
    EXPECT_FALSE(action("Sign out")->isVisible());
}

TEST_F(StatusMenuTest, OffersToSignInWhileNobodyIs) {
    EXPECT_THAT(texts(m_menu), Not(Contains("Sign in")));
    state().account().markSessionExpired(u"Ended && gone."_s);
    EXPECT_THAT(texts(m_menu).mid(1, 5),
                ElementsAre("-", "Sign in", "Ended &&&& gone.", "History", "Model"));
    EXPECT_FALSE(action("Ended &&&& gone.")->isEnabled());
    press("Sign in");
    EXPECT_THAT(m_chosen, ElementsAre(StatusCommand::SignIn));
}

TEST_F(StatusMenuTest, SaysThatTheBrowserIsWaitedFor) {
    state().account().signOut();
    EXPECT_EQ(texts(m_menu)[3], "History") << "nothing went wrong";
    ScriptedBrowserSignIn browser;
    state().signIn().setBrowserSignIn(&browser);
    state().signIn().signInInBrowser(u"sign-in"_s);
    EXPECT_EQ(texts(m_menu)[2], "Waiting for browser…");
    EXPECT_FALSE(action("Waiting for browser…")->isEnabled());
    m_clock.settle();
    browser.error = SignInError::timedOut("Vorq");
    browser.attempts.back().fire();
    m_clock.settle();
    EXPECT_EQ(texts(m_menu)[2], "Sign in");
    EXPECT_TRUE(action("Sign in")->isEnabled());
    EXPECT_EQ(texts(m_menu)[3], "Vorq sign-in timed out. Try again.");
    state().signIn().setBrowserSignIn(nullptr);
}

TEST_F(StatusMenuTest, AccessibilityIsThatOfTheStateAndCanBeChosenWhileItIsOff) {
    ScriptedPermissionProbe probe;
    state().permissions().setProbe(&probe);
    press("Accessibility\tDisabled");
    EXPECT_THAT(m_chosen, ElementsAre(StatusCommand::OpenAccessibility));
    probe.text = PermissionState::Granted;
    state().permissions().refreshPermissions();
    ASSERT_NE(action("Accessibility\tEnabled"), nullptr);
    EXPECT_FALSE(action("Accessibility\tEnabled")->isEnabled());
    probe.text = PermissionState::Pending;
    state().permissions().refreshPermissions();
    EXPECT_TRUE(action("Accessibility\tDisabled")->isEnabled());
}

TEST_F(StatusMenuTest, ShowsNoticesOnlyWhileThereAreSome) {
    m_menu.setHotKeyNotices({"first", "second"});
    EXPECT_THAT(texts(m_menu).mid(1, 3), ElementsAre("first", "second", "-"));
    EXPECT_FALSE(action("first")->isEnabled());
    m_menu.setHotKeyNotices({"second"});
    EXPECT_THAT(texts(m_menu), Not(Contains("first")));
    m_menu.setHotKeyNotices({});
    EXPECT_EQ(texts(m_menu)[1], "-");
}

TEST_F(StatusMenuTest, ShowsTheKeysThatWorkBesideWhatTheyDo) {
    m_menu.setOffersNotes(true);
    m_menu.setHotKeys({HotKeyAction::Panel, HotKeyAction::SaveNote, HotKeyAction::PushNote});
    EXPECT_THAT(texts(m_menu).mid(5, 5),
                ElementsAre("Toggle Vorq\tSuper+Shift+A", "Save Chat to Notes",
                            "Save Highlight as Note\tSuper+Shift+S",
                            "Push Note Draft\tSuper+Shift+P", "Clear Chat"));
    m_menu.setHotKeys({HotKeyAction::ClearChat});
    EXPECT_EQ(texts(m_menu)[5], "Toggle Vorq");
    EXPECT_EQ(texts(m_menu)[9], "Clear Chat\tSuper+Shift+T");
}

TEST_F(StatusMenuTest, TheLocalBackendIsThereIfItIsOffered) {
    const QString text = "Start Local Backend at Login";
    EXPECT_FALSE(action(text)->isVisible());
    m_menu.setBackendAtLogin({.isOffered = true, .isOn = true});
    EXPECT_TRUE(action(text)->isVisible() && action(text)->isChecked());
    press(text);
    EXPECT_THAT(m_chosen, ElementsAre(StatusCommand::DisableBackendAtLogin));
    press(text);
    EXPECT_EQ(m_chosen.back(), StatusCommand::EnableBackendAtLogin);
    m_menu.setBackendAtLogin({.isOffered = true, .isOn = false, .isBusy = true});
    EXPECT_FALSE(action(text)->isEnabled());
}

TEST_F(StatusMenuTest, AChatCanBeSavedOnceThereIsOne) {
    EXPECT_FALSE(action("Save Chat to Notes")->isEnabled());
    submit("a question");
    emit m_menu.aboutToShow();
    EXPECT_TRUE(action("Save Chat to Notes")->isEnabled());
}

TEST_F(StatusMenuTest, ThemeAndGlassAreThoseOfTheState) {
    EXPECT_TRUE(action("Dark")->isChecked());
    EXPECT_TRUE(action("Clear")->isChecked());
    press("Light");
    press("Tinted");
    EXPECT_EQ(state().appearance().panelAppearance(), PanelAppearance::White);
    EXPECT_EQ(state().appearance().panelGlassStyle(), PanelGlassStyle::Tinted);
    state().appearance().setPanelAppearance(PanelAppearance::Current);
    EXPECT_TRUE(action("Dark")->isChecked());
    EXPECT_FALSE(action("Light")->isChecked());
}

TEST_F(StatusMenuTest, AColourIsSeenWhileItIsChosenAndKept) {
    EXPECT_FALSE(action("Reset Custom Colors")->isEnabled());
    QSignalSpy began(&m_menu, &StatusMenu::colorEditBegan);
    QSignalSpy ended(&m_menu, &StatusMenu::colorEditEnded);
    press("Background…");
    EXPECT_EQ(began.count(), 1);
    ASSERT_NE(colorDialog(), nullptr);
    EXPECT_EQ(colorDialog()->currentColor(), QColor(0x20, 0x22, 0x28));
    EXPECT_EQ(state().appearance().panelBackgroundHex(), "");
    colorDialog()->setCurrentColor(QColor(0x11, 0x22, 0x33));
    EXPECT_EQ(state().appearance().panelBackgroundHex(), "#112233");
    EXPECT_FALSE(m_defaults.contains("vorq.panelBackgroundHex")) << "stored before it was chosen";
    EXPECT_EQ(ended.count(), 0);
    colorDialog()->accept();
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(state().appearance().panelBackgroundHex(), "#112233");
    EXPECT_EQ(m_defaults.string("vorq.panelBackgroundHex"), "#112233");
    press("Reset Custom Colors");
    EXPECT_EQ(state().appearance().panelBackgroundHex(), "");
    EXPECT_FALSE(action("Reset Custom Colors")->isEnabled());
}

TEST_F(StatusMenuTest, WithoutAChoiceTheFormerColourComesBack) {
    state().appearance().setPanelUserBlockHex("#445566");
    press("Your Blocks…");
    ASSERT_NE(colorDialog(), nullptr);
    EXPECT_EQ(colorDialog()->currentColor(), QColor(0x44, 0x55, 0x66));
    colorDialog()->setCurrentColor(QColor(0x11, 0x22, 0x33));
    press("Your Blocks…");
    colorDialog()->reject();
    EXPECT_EQ(state().appearance().panelUserBlockHex(), "#445566");
    EXPECT_EQ(state().appearance().panelBackgroundHex(), "");
}

TEST_F(StatusMenuTest, WithoutAChoiceAResetMeanwhileStands) {
    state().appearance().setPanelUserBlockHex("#445566");
    press("Your Blocks…");
    ASSERT_NE(colorDialog(), nullptr);
    colorDialog()->setCurrentColor(QColor(0x11, 0x22, 0x33));
    press("Reset Custom Colors");
    colorDialog()->reject();
    EXPECT_EQ(state().appearance().panelUserBlockHex(), "");
    EXPECT_EQ(m_defaults.string("vorq.panelUserBlockHex"), "");
}

TEST_F(StatusMenuTest, TellsWhatIsChosen) {
    submit("a question");
    m_menu.setOffersNotes(true);
    const std::vector<std::pair<QString, StatusCommand>> entries{
        {"Toggle Vorq", StatusCommand::ToggleVorq},
        {"Save Chat to Notes", StatusCommand::SaveChat},
        {"Save Highlight as Note", StatusCommand::SaveHighlight},
        {"Push Note Draft", StatusCommand::PushNoteDraft},
        {"Clear Chat", StatusCommand::ClearChat},
        {"Sign out", StatusCommand::SignOut},
        {"Delete Vorq", StatusCommand::DeleteVorq},
        {"Quit Vorq", StatusCommand::Quit}};
    for (const auto& [text, command] : entries) {
        m_chosen.clear();
        press(text);
        EXPECT_THAT(m_chosen, ElementsAre(command)) << text.toStdString();
    }
}

TEST(StatusMenuAlone, WithoutAStateNothingCanBeChosenOfIt) {
    StatusMenu menu;
    EXPECT_EQ(menu.accessibleName(), "Vorq");
    for (QAction* action : menu.actions())
        if (action->text() == "Clear Chat") EXPECT_FALSE(action->isEnabled());
}

} // namespace
} // namespace vorq
