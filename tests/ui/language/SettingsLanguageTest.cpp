// The settings in a language whose texts are longer: all that they show and say is translated, and
// there is room for it, in wide and narrow windows, for larger text too. What the user or a server
// would write has no letters here.

#include "doubles/ui/SettingsStage.h"
#include "platform/testing/ScriptedPermissionProbe.h"
#include "ui/language/ShownTexts.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Pane = SettingsNavigation::SettingsPane;

struct SettingsState {
    const char* name;
    std::function<void(SettingsStage&)> act;
};

void PrintTo(const SettingsState& state, std::ostream* out) {
    *out << state.name;
}

void openHub(SettingsStage& stage) {
    (void)stage.base.state->previews().set(Preview::Hub, true);
    stage.settle();
}

void refusePicture(SettingsStage& stage) {
    stage.open(Pane::Profile);
    stage.settings->profile()->useDropped({});
}

void saveProfile(SettingsStage& stage) {
    stage.open(Pane::Profile);
    stage.settings->profile()->setFirstName(u"7"_s);
    stage.settings->profile()->save();
    stage.settle();
}

void answerProfile(SettingsStage& stage, int status, const QByteArray& body) {
    saveProfile(stage);
    stage.base.transport.last().respond(status, body);
}

void enterPrivacy(SettingsStage& stage, const QString& current, const QString& wanted,
                  const QString& again) {
    stage.open(Pane::Privacy);
    PrivacyEdit& privacy = *stage.settings->privacy();
    privacy.setCurrentPassword(current);
    privacy.setNewPassword(wanted);
    privacy.setConfirmPassword(again);
    privacy.save();
    stage.settle();
}

void customize(SettingsStage& stage) {
    stage.base.state->appearance().setPanelUserBlockHex(u"#1F6F63"_s);
    stage.open(Pane::CustomizePanel);
}

const std::vector<SettingsState>& settingsStates() {
    static const std::vector<SettingsState> states{
        {"list", [](SettingsStage&) {}},
        {"list_below_the_strip", openHub},
        {"signed_out", [](SettingsStage& s) { s.base.state->account().signOut(); }},
        {"profile", [](SettingsStage& s) { s.open(Pane::Profile); }},
        {"profile_dropping",
         [](SettingsStage& s) {
             s.open(Pane::Profile);
             s.find("ProfilePicture").setProperty("isWelcoming", true);
         }},
        {"profile_no_picture", refusePicture},
        {"profile_saving", saveProfile},
        {"profile_refused", [](SettingsStage& s) { answerProfile(s, 400, R"({"error":"8 9."})"); }},
        {"profile_saved",
         [](SettingsStage& s) {
             answerProfile(s, 200,
                           R"({"signedIn":true,"email":"4@5.6","token":"8","firstName":"7"})");
         }},
        {"discard",
         [](SettingsStage& s) {
             s.open(Pane::Profile);
             s.settings->profile()->setFirstName(u"7"_s);
             s.settings->navigation()->back();
         }},
        {"privacy", [](SettingsStage& s) { s.open(Pane::Privacy); }},
        {"privacy_no_password",
         [](SettingsStage& s) { enterPrivacy(s, "", "12345678", "12345678"); }},
        {"privacy_nothing", [](SettingsStage& s) { enterPrivacy(s, "1", "", ""); }},
        {"privacy_short", [](SettingsStage& s) { enterPrivacy(s, "1", "2", "2"); }},
        {"privacy_no_match", [](SettingsStage& s) { enterPrivacy(s, "1", "2", "3"); }},
        {"privacy_saving", [](SettingsStage& s) { enterPrivacy(s, "1", "12345678", "12345678"); }},
        {"appearance", [](SettingsStage& s) { s.open(Pane::Appearance); }},
        {"panel_look", [](SettingsStage& s) { s.open(Pane::PanelLook); }},
        {"customize", customize},
        {"colors_reset",
         [](SettingsStage& s) {
             customize(s);
             s.settings->appearance()->resetColors();
         }},
        {"hub_page",
         [](SettingsStage& s) {
             openHub(s);
             s.settings->navigation()->showHub(u"tasks"_s);
         }},
        {"hub_folded",
         [](SettingsStage& s) {
             openHub(s);
             s.settings->navigation()->setHubTapeExpanded(false);
         }},
    };
    return states;
}

class SettingsLanguageTest : public testing::TestWithParam<SettingsState> {
  protected:
    SettingsLanguageTest() {
        QAccessible::setActive(true);
        stage.base.state->account().applyProfile(u"1"_s, u"2"_s, u"3"_s, u"4@5.6"_s);
    }
    ~SettingsLanguageTest() override { QAccessible::setActive(false); }

    void show(QSize size = {1120, 860}, double textScale = 1) {
        for (PanelLook* look : {stage.look.get(), stage.settings->panelLook()})
            look->setTextScale(textScale);
        stage.show(size);
        GetParam().act(stage);
        stage.settle(500);
    }
    void expectRoomAt(QSize size, double textScale) {
        show(size, textScale);
        EXPECT_EQ(cutTexts(*stage.window), "");
        EXPECT_EQ(overlappingTexts(*stage.window), "");
    }

    TestLanguage language;
    SettingsStage stage;
};

TEST_P(SettingsLanguageTest, AllThatIsShownAndSaidIsTranslated) {
    show();
    const QStringList texts = shownTexts(*stage.window);
    EXPECT_EQ(TestLanguage::foreign(texts), "");
    EXPECT_TRUE(texts.join(' ').contains(u'«'));
}

TEST_P(SettingsLanguageTest, NoTextIsCutOff) {
    expectRoomAt({1120, 860}, 1);
}

TEST_P(SettingsLanguageTest, NoLargerTextIsCutOff) {
    expectRoomAt({1120, 860}, 1.5);
}

TEST_P(SettingsLanguageTest, NoTextIsCutOffInANarrowWindow) {
    expectRoomAt({420, 640}, 1);
}

TEST_P(SettingsLanguageTest, NoLargerTextIsCutOffInANarrowWindow) {
    expectRoomAt({560, 640}, 1.5);
}

INSTANTIATE_TEST_SUITE_P(, SettingsLanguageTest, testing::ValuesIn(settingsStates()),
                         [](const auto& tested) { return std::string(tested.param.name); });

// What the system lets Vorq do, in each case.
class PermissionsLanguageTest : public testing::TestWithParam<PermissionState> {
  protected:
    PermissionsLanguageTest() {
        QAccessible::setActive(true);
        stage.base.state->account().applyProfile(u"1"_s, u"2"_s, u"3"_s, u"4@5.6"_s);
        probe.path = u"/1/2"_s;
        probe.text = GetParam();
        probe.screenAccess = GetParam();
        probe.microphoneAccess = GetParam();
        stage.base.state->permissions().setProbe(&probe);
        stage.base.state->permissions().requestTextCapturePermission();
    }
    ~PermissionsLanguageTest() override { QAccessible::setActive(false); }

    TestLanguage language;
    ScriptedPermissionProbe probe;
    SettingsStage stage;
};

TEST_P(PermissionsLanguageTest, TheyAreTranslatedAndHaveRoom) {
    stage.show({420, 1600});
    EXPECT_EQ(TestLanguage::foreign(shownTexts(*stage.window)), "");
    EXPECT_EQ(cutTexts(*stage.window), "");
    EXPECT_EQ(overlappingTexts(*stage.window), "");
}

INSTANTIATE_TEST_SUITE_P(, PermissionsLanguageTest,
                         testing::Values(PermissionState::Granted, PermissionState::Denied,
                                         PermissionState::Pending),
                         [](const auto& tested) { return rawString(tested.param).toStdString(); });

} // namespace
} // namespace vorq
