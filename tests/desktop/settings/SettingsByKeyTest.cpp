// Each page of the settings of the built program, worked by the keyboard alone and read over the
// accessibility bus.

#include "doubles/desktop/SettingsProgramFixture.h"

#include <QFileInfo>
#include <QImage>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using testing::ElementsAreArray;

struct PageByKey {
    std::string row; // that leads there
    std::string heading;
    std::vector<std::string> stops; // of Tab, from where the keyboard is first
};

class SettingsByKeyTest : public SettingsProgramTest {
  protected:
    SettingsByKeyTest() { open(); }

    [[nodiscard]] bool has(const QString& role, const QString& name) const {
        return std::ranges::any_of(vorq.controls(), [&](const AccessibleNode& node) {
            return node.isShowing && node.role == role && node.name == name;
        });
    }
    [[nodiscard]] AccessibleNode keyboard() const {
        std::optional<AccessibleNode> now;
        DesktopSession::waitUntil("the keyboard",
                                  [&] { return (now = vorq.focused()).has_value(); });
        return *now;
    }
    // What Tab leads through until it comes round.
    [[nodiscard]] std::vector<std::string> stops() const {
        std::vector<std::string> met;
        const QString first = keyboard().path;
        AccessibleNode at = keyboard();
        do {
            EXPECT_TRUE(at.isShowing && at.isEnabled) << at.name.toStdString();
            met.push_back((at.role + ": " + at.name).toStdString());
            session.key({"Tab"});
            const QString former = at.path;
            DesktopSession::waitUntil("Tab to lead on from " + at.name, [&] {
                const auto now = vorq.focused();
                if (now) at = *now;
                return at.path != former;
            });
        } while (at.path != first && met.size() < 40);
        return met;
    }
    void openPage(const QString& row, const QString& heading) const {
        if (keyboard().name != row) vorq.tabTo(row);
        session.key({"Return"});
        DesktopSession::waitUntil(heading, [&] { return has("heading", heading); });
    }
    // As a screen reader hears of them.
    [[nodiscard]] QStringList chosen() const {
        QStringList names;
        for (const AccessibleNode& node : vorq.controls())
            if (node.isShowing && node.role == "radio button" && node.isChecked) names += node.name;
        return names;
    }
    void waitForStored(const QString& key, const QString& value) const {
        DesktopSession::waitUntil(key + " to be stored",
                                  [&] { return stored().value(key).toString() == value; });
    }
};

TEST_F(SettingsByKeyTest, TabLeadsThroughEachPageAndEscapeBack) {
    const std::vector<std::string> rows = stops();
    ASSERT_FALSE(rows.empty());
    EXPECT_THAT(rows.front(), testing::StartsWith("push button: ")) << "the profile";
    EXPECT_THAT(std::vector(rows.begin() + 1, rows.end()),
                ElementsAreArray({"push button: Sign out", "push button: Privacy settings",
                                  "push button: Customize", "radio button: Dark",
                                  "radio button: Clear", "push button: Match System Appearance",
                                  "push button: Panel look", "push button: Self-Test"}));
    const std::vector<PageByKey> pages = {
        {"Privacy settings",
         "Privacy settings",
         {"text: Email", "text: Current password", "push button: Show the password",
          "text: New password", "push button: Show the password", "text: Confirm new password",
          "push button: Show the password", "push button: Save", "push button: Settings"}},
        {"Customize",
         "Customize",
         {"radio button: Dark", "radio button: Clear", "push button: Choose Background",
          "text: Background hex", "push button: Choose Your Blocks", "text: Your Blocks hex",
          "push button: Choose Assistant Blocks", "text: Assistant Blocks hex",
          "push button: Reset custom colors", "push button: Settings"}},
        {"Match System Appearance",
         "Appearance",
         {"radio button: Match System Appearance", "push button: Settings"}},
        {"Panel look",
         "Panel look",
         {"radio button: Dark", "radio button: Clear", "push button: Settings"}},
    };
    for (const PageByKey& page : pages) {
        const QString row = QString::fromStdString(page.row);
        openPage(row, QString::fromStdString(page.heading));
        EXPECT_THAT(stops(), ElementsAreArray(page.stops)) << page.row;
        session.key({"Escape"});
        waitForKeyboardIn(row);
    }
}

TEST_F(SettingsByKeyTest, LooksAreChosenByTheArrowKeys) {
    EXPECT_EQ(chosen(), (QStringList{"Dark", "Clear"}));
    openPage("Match System Appearance", "Appearance");
    vorq.tabTo("Match System Appearance");
    session.key({"Right", "Right"});
    waitForStored("vorqAppAppearance", "dark");
    waitForKeyboardIn("Dark");
    EXPECT_EQ(chosen(), (QStringList{"Dark"}));
    session.key({"Escape"});
    waitForKeyboardIn("Dark"); // as the row is called now
    openPage("Panel look", "Panel look");
    vorq.tabTo("Dark");
    session.key({"Right"});
    waitForStored("vorq.panelAppearance", "white");
    vorq.tabTo("Clear");
    session.key({"Left"});
    waitForStored("vorq.panelGlassStyle", "tinted");
}

TEST_F(SettingsByKeyTest, ColoursAreTypedAndReset) {
    openPage("Customize", "Customize");
    vorq.tabTo("Your Blocks hex");
    enter("#1F6F63");
    session.key({"Return"});
    waitForStored("vorq.panelUserBlockHex", "#1F6F63");
    vorq.tabTo("Reset custom colors");
    session.key({"space"});
    waitForStored("vorq.panelUserBlockHex", "");
    waitFor("The colors of the theme are back.");
    vorq.tabTo("Undo");
    session.key({"Return"});
    waitForStored("vorq.panelUserBlockHex", "#1F6F63");
}

TEST_F(SettingsByKeyTest, APictureIsChosenAndSaved) {
    const QString portrait = session.home() + "/portrait.png";
    QImage image(900, 600, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    ASSERT_TRUE(image.save(portrait));
    session.key({"Return"});
    waitForKeyboardIn("First name");
    vorq.tabTo("Choose a profile picture");
    const Window window = settings();
    session.key({"Return"});
    DesktopSession::waitUntil("the dialog", [&] {
        const Window active = session.activeWindow();
        return active != window && session.processOf(active) == vorq.program().process();
    });
    session.type(portrait);
    session.key({"Return"});
    DesktopSession::waitUntil("the settings", [&] { return session.activeWindow() == window; });
    vorq.tabTo("Save");
    session.key({"space"});
    waitFor("Profile saved.");
    EXPECT_EQ(QImage(session.home() + "/.local/share/Vorq/profile-avatar.jpg").size(),
              QSize(512, 341));
}

TEST_F(SettingsByKeyTest, OneSignsOut) {
    vorq.tabTo("Sign out");
    session.key({"Return"});
    waitFor("Sign in to Vorq");
    DesktopSession::waitUntil("the keyboard on a way in", [&] {
        const auto now = vorq.focused();
        return now && now->isShowing && now->name.startsWith("Sign in");
    });
    EXPECT_THAT(stops(),
                ElementsAreArray({"push button: Sign in", "push button: Sign in on this computer",
                                  "push button: Customize", "radio button: Dark",
                                  "radio button: Clear", "push button: Match System Appearance",
                                  "push button: Panel look", "push button: Self-Test"}));
}

} // namespace
} // namespace vorq::desktop
