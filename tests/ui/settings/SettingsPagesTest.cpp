#include "doubles/ui/SettingsStage.h"
#include "platform/testing/ScriptedPermissionProbe.h"
#include "platform/trust/PrivacySettings.h"

#include <QAccessible>
#include <QBuffer>
#include <QDropEvent>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace vorq {
namespace {

using Pane = SettingsNavigation::SettingsPane;

class SettingsPagesTest : public testing::Test {
  protected:
    void signOut() {
        stage.base.state->account().signOut();
        stage.settle();
    }
    void tabTo(const QString& name) {
        for (int step = 0; step < 40 && stage.focused() != name; ++step)
            stage.key(Qt::Key_Tab);
        ASSERT_EQ(stage.focused(), name);
    }
    void answerSaved(const QByteArray& more) {
        stage.base.transport.last().respond(
            200, R"({"signedIn":true,"email":"mira@example.org","token":"token")" + more + '}');
        stage.settle();
    }
    // What screen readers read out, because it has just come up.
    [[nodiscard]] static QStringList notified(const QQuickItem& from) {
        QStringList said;
        for (QQuickItem* item : from.childItems()) {
            if (!item->isVisible()) continue;
            const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(item);
            if (heard != nullptr && heard->role() == QAccessible::Notification)
                said += heard->text(QAccessible::Name);
            said += notified(*item);
        }
        return said;
    }
    // As the program does it.
    void connectEnabling() {
        QObject::connect(stage.settings->permissions(), &PermissionRows::textCaptureWanted,
                         &stage.base.state->permissions(),
                         &Permissions::requestTextCapturePermission);
    }
    // A page on the strip.
    [[nodiscard]] QQuickItem* station(const QString& name) { return stationIn(stage.root(), name); }
    [[nodiscard]] static QQuickItem* stationIn(const QQuickItem& from, const QString& name) {
        for (QQuickItem* item : from.childItems()) {
            if (item->property("isSettings").isValid() && item->property("text") == name)
                return item;
            if (QQuickItem* found = stationIn(*item, name)) return found;
        }
        return nullptr;
    }
    [[nodiscard]] bool isInView(const QString& name) {
        const QQuickItem* item = station(name);
        const QRectF place = item->mapRectToScene(item->boundingRect());
        return place.left() >= 0 && place.right() <= stage.window->width();
    }
    [[nodiscard]] static QPoint middleOf(const QQuickItem& item) {
        return item.mapToScene({item.width() / 2, item.height() / 2}).toPoint();
    }
    void drag(const QQuickItem& item, int by) {
        const QPoint from = middleOf(item);
        QTest::mousePress(stage.window.get(), Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step)
            QTest::mouseMove(stage.window.get(), from + QPoint(by * step / 10, 0), 10);
        QTest::mouseRelease(stage.window.get(), Qt::LeftButton, {}, from + QPoint(by, 0));
        stage.settle(400);
    }
    [[nodiscard]] QColor ground() { return stage.window->grabWindow().pixelColor(8, 400); }

    SettingsStage stage;
};

TEST_F(SettingsPagesTest, EachPageIsReachedAndLeftByTheKeyboardAlone) {
    stage.show();
    const QList<std::pair<QString, Pane>> rows = {
        {"Mira Koskinen", Pane::Profile},    {"Privacy settings", Pane::Privacy},
        {"Customize", Pane::CustomizePanel}, {"Match System Appearance", Pane::Appearance},
        {"Panel look", Pane::PanelLook},
    };
    for (const auto& [name, pane] : rows) {
        tabTo(name);
        stage.key(Qt::Key_Return);
        EXPECT_EQ(stage.pane(), pane) << qPrintable(name);
        stage.key(Qt::Key_Escape);
        EXPECT_EQ(stage.pane(), Pane::List) << qPrintable(name);
        EXPECT_EQ(stage.focused(), name) << "the row that led there has the keyboard again";
    }
}

TEST_F(SettingsPagesTest, TheArrowsLeadFromRowToRow) {
    stage.show();
    EXPECT_EQ(stage.focused(), "Mira Koskinen");
    stage.key(Qt::Key_Down);
    EXPECT_EQ(stage.focused(), "Sign out");
    stage.key(Qt::Key_Down);
    EXPECT_EQ(stage.focused(), "Privacy settings");
    stage.key(Qt::Key_Up);
    EXPECT_EQ(stage.focused(), "Sign out");
}

TEST_F(SettingsPagesTest, TheKeyboardIsWhereOneTypesFirst) {
    stage.show();
    stage.open(Pane::Profile);
    EXPECT_EQ(stage.focused(), "First name");
    stage.open(Pane::List);
    stage.open(Pane::Privacy);
    EXPECT_EQ(stage.focused(), "Email");
}

TEST_F(SettingsPagesTest, TheListSaysWhatThereIs) {
    stage.show({1120, 1000});
    for (const QString words :
         {"Account", "Mira Koskinen", "mira@example.org", "Sign out", "Privacy settings",
          "Email address and password.", "Customize", "Background and chat block colors.", "Dark",
          "Light", "Tinted", "Clear", "Appearance", "Permissions", "Accessibility", "Not set",
          "Lets Vorq read highlighted text. Current status: not set.", "Enable"})
        EXPECT_TRUE(stage.saying(words)) << qPrintable(words);
}

TEST_F(SettingsPagesTest, TheQuickChoicesCountAtOnce) {
    stage.show();
    stage.click("Light");
    EXPECT_EQ(stage.base.defaults.string("vorq.panelAppearance"), "white");
    stage.click("Tinted");
    EXPECT_EQ(stage.base.defaults.string("vorq.panelGlassStyle"), "tinted");
    tabTo("Light");
    stage.key(Qt::Key_Left);
    EXPECT_EQ(stage.base.defaults.string("vorq.panelAppearance"), "current");
}

TEST_F(SettingsPagesTest, TheWindowFollowsTheApplicationAndNotThePanel) {
    stage.setDark(true);
    stage.show();
    const QColor dark = ground();
    stage.base.state->appearance().setPanelAppearance(PanelAppearance::White);
    stage.base.state->appearance().setPanelBackgroundHex("#FF0000");
    stage.settle();
    EXPECT_EQ(ground(), dark);
    stage.base.state->appearance().setAppAppearance(AppAppearancePreference::Light);
    stage.settle();
    EXPECT_GT(ground().lightness(), 200);
}

TEST_F(SettingsPagesTest, ThePreviewFollowsThePanelAndNotTheWindow) {
    stage.setDark(true);
    stage.show();
    stage.open(Pane::CustomizePanel);
    QQuickItem* preview = stage.saying("What does the passage argue?");
    ASSERT_TRUE(preview);
    const auto block = [&] {
        const QPoint at = preview->mapToScene({-6, preview->height() + 4}).toPoint();
        return stage.window->grabWindow().pixelColor(at);
    };
    stage.base.state->appearance().setPanelUserBlockHex("#1F6F63");
    stage.settle();
    EXPECT_NEAR(block().green(), 0x6F, 14);
    EXPECT_NEAR(block().red(), 0x1F, 14);
    EXPECT_LT(ground().lightness(), 60);
}

TEST_F(SettingsPagesTest, SavingTheProfileIsConfirmed) {
    stage.show();
    stage.open(Pane::Profile);
    stage.key(Qt::Key_A, Qt::ControlModifier);
    stage.type("Miranda");
    stage.key(Qt::Key_Return);
    EXPECT_TRUE(stage.saying("Saving…"));
    EXPECT_TRUE(stage.saying("Cancel"));
    EXPECT_EQ(stage.base.transport.last().json().value("firstName"), "Miranda");
    answerSaved(R"(,"firstName":"Miranda","lastName":"Koskinen")");
    EXPECT_TRUE(stage.saying("Profile saved."));
    EXPECT_TRUE(stage.saying("Save"));
    stage.key(Qt::Key_Escape);
    EXPECT_EQ(stage.pane(), Pane::List);
    EXPECT_TRUE(stage.saying("Miranda Koskinen"));
}

TEST_F(SettingsPagesTest, ASavingThatFailsIsReadOut) {
    stage.show();
    stage.open(Pane::Profile);
    stage.type("x");
    stage.key(Qt::Key_Return);
    EXPECT_EQ(notified(*stage.window->contentItem()), QStringList("Saving…"));
    stage.base.transport.last().respond(400, R"({"error":"The name is too long."})");
    stage.settle();
    EXPECT_TRUE(stage.saying("The name is too long."));
    EXPECT_EQ(notified(*stage.window->contentItem()), QStringList("The name is too long."));
}

TEST_F(SettingsPagesTest, WhatWentWrongStandsBesideTheFieldThatThenHasTheKeyboard) {
    stage.show();
    stage.open(Pane::Privacy);
    tabTo("New password");
    stage.type("short");
    tabTo("Confirm new password");
    stage.type("shorter");
    stage.key(Qt::Key_Return);
    EXPECT_TRUE(stage.saying("New password and confirmation do not match."));
    EXPECT_EQ(stage.focused(), "Confirm new password");
    tabTo("Save");
    stage.settings->privacy()->setConfirmPassword("short");
    stage.key(Qt::Key_Return);
    EXPECT_TRUE(stage.saying("Current password is required."));
    EXPECT_EQ(stage.focused(), "Current password");
}

TEST_F(SettingsPagesTest, PasswordFieldsSayThatTheyAre) {
    stage.show();
    stage.open(Pane::Privacy);
    tabTo("New password");
    stage.type("secret");
    const QAccessibleInterface* heard =
        QAccessible::queryAccessibleInterface(&stage.field("New password"));
    EXPECT_TRUE(heard->state().passwordEdit);
}

TEST_F(SettingsPagesTest, LeavingWhatIsNotSavedAsks) {
    stage.show();
    stage.open(Pane::Profile);
    stage.type("x");
    stage.key(Qt::Key_Escape);
    stage.settle(400);
    EXPECT_TRUE(stage.saying("Discard your changes?"));
    EXPECT_EQ(stage.focused(), "Keep editing") << "nothing is lost by a hasty Return";
    stage.key(Qt::Key_Return);
    stage.settle(50);
    EXPECT_EQ(stage.pane(), Pane::Profile);
    EXPECT_EQ(stage.focused(), "First name");
    stage.key(Qt::Key_Escape);
    stage.settle(400);
    stage.click("Discard");
    EXPECT_EQ(stage.pane(), Pane::List);
    EXPECT_FALSE(stage.settings->profile()->isUnsaved());
}

TEST_F(SettingsPagesTest, ResettingTheColorsCanBeUndone) {
    stage.show();
    stage.base.state->appearance().setPanelUserBlockHex("#1F6F63");
    stage.open(Pane::CustomizePanel);
    stage.click("Reset custom colors");
    EXPECT_EQ(stage.base.state->appearance().panelUserBlockHex(), "");
    stage.settle(400);
    stage.click("Undo");
    EXPECT_EQ(stage.base.state->appearance().panelUserBlockHex(), "#1F6F63");
}

// The profile, beside programs that pictures are dragged out of.
class PictureDropTest : public SettingsPagesTest {
  protected:
    PictureDropTest() {
        stage.show();
        stage.open(Pane::Profile);
    }
    [[nodiscard]] QPoint plus() { return middleOf(*stage.saying("Choose a profile picture")); }
    // As the platform does it: the mouse comes in, and then it lets go.
    bool enter(const QMimeData& data, QPoint at, Qt::DropActions actions = Qt::CopyAction) {
        QDragEnterEvent event(at, actions, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(stage.window.get(), &event);
        return event.isAccepted();
    }
    bool drop(const QMimeData& data) {
        if (!enter(data, plus())) return false;
        QDropEvent event(plus(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(stage.window.get(), &event);
        return event.isAccepted() && waitUntilRead();
    }
    [[nodiscard]] bool waitUntilRead() {
        ProfileEdit& profile = *stage.settings->profile();
        const bool isRead = QTest::qWaitFor([&] { return !profile.isReadingPicture(); });
        stage.settle();
        return isRead;
    }
    [[nodiscard]] static QByteArray encoded(const char* format) {
        QImage image(24, 16, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, format);
        return bytes;
    }
    void put(QMimeData& data, const QByteArray& content) {
        QFile file(folder.filePath("me.png"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        data.setUrls({QUrl::fromLocalFile(file.fileName())});
    }

    QTemporaryDir folder;
};

TEST_F(PictureDropTest, WhatIsHeldOverThePictureIsShownToBeWelcome) {
    QMimeData data;
    put(data, encoded("PNG"));
    EXPECT_TRUE(enter(data, plus()));
    stage.settle();
    EXPECT_TRUE(stage.saying("Drop the picture to use it."));
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(stage.window.get(), &leave);
    stage.settle();
    EXPECT_TRUE(stage.saying("Tap the + to add a photo."));
    EXPECT_FALSE(stage.settings->profile()->isUnsaved());
}

TEST_F(PictureDropTest, AFileThatIsDroppedIsThePicture) {
    stage.tools->avatar = encoded("JPEG");
    QMimeData data;
    put(data, encoded("PNG"));
    ASSERT_TRUE(drop(data));
    EXPECT_TRUE(stage.settings->profile()->picture()->isThere());
    EXPECT_TRUE(stage.settings->profile()->isUnsaved());
    EXPECT_TRUE(stage.saying("Tap the + to add a photo."));
}

TEST_F(PictureDropTest, WhatIsNoneIsToldAndReadOutOnce) {
    QMimeData data;
    put(data, "no picture at all");
    ASSERT_TRUE(drop(data));
    const QString error = stage.settings->profile()->pictureError();
    EXPECT_TRUE(error.startsWith("This file is no picture, or it is damaged."));
    EXPECT_TRUE(stage.saying(error));
    EXPECT_EQ(notified(*stage.window->contentItem()), QStringList(error));
    EXPECT_FALSE(stage.settings->profile()->isUnsaved());
}

TEST_F(PictureDropTest, APictureOfAPageIsTakenAndItsAddressIsNot) {
    stage.tools->avatar = encoded("JPEG");
    QMimeData data;
    data.setUrls({QUrl("https://example.org/me.png")});
    data.setData("image/png", encoded("PNG"));
    ASSERT_TRUE(drop(data));
    EXPECT_TRUE(stage.settings->profile()->picture()->isThere());
}

// A source deletes what it has been told to be moved, and is told so at each step of the mouse.
TEST_F(PictureDropTest, WhatComesOverThePictureFromElsewhereIsCopied) {
    QMimeData data;
    put(data, encoded("PNG"));
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent besideIt({10, 10}, actions, &data, Qt::LeftButton, Qt::ShiftModifier);
    ASSERT_EQ(besideIt.proposedAction(), Qt::MoveAction);
    QCoreApplication::sendEvent(stage.window.get(), &besideIt);
    QDragMoveEvent overIt(plus(), actions, &data, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(stage.window.get(), &overIt);
    EXPECT_TRUE(overIt.isAccepted());
    EXPECT_EQ(overIt.dropAction(), Qt::CopyAction);
}

TEST_F(PictureDropTest, WhatCanBeNoPictureIsNotTaken) {
    QMimeData text;
    text.setText("words");
    EXPECT_FALSE(enter(text, plus()));
    QMimeData data;
    put(data, encoded("PNG"));
    EXPECT_FALSE(enter(data, plus(), Qt::MoveAction)) << "its source would delete it";
    EXPECT_FALSE(enter(data, {10, 10})) << "beside it";
}

TEST_F(SettingsPagesTest, SignedOutThereIsAWayInAndWhatNeedsNoAccount) {
    stage.show();
    stage.click("Sign out");
    EXPECT_TRUE(stage.saying("Sign in to Vorq"));
    EXPECT_TRUE(stage.saying("You are signed out."));
    EXPECT_FALSE(stage.saying("Privacy settings"));
    EXPECT_EQ(stage.focused(), "Sign in");
    tabTo("Customize");
    stage.key(Qt::Key_Return);
    EXPECT_EQ(stage.pane(), Pane::CustomizePanel);
    stage.key(Qt::Key_Escape);
    EXPECT_EQ(stage.focused(), "Customize");
}

TEST_F(SettingsPagesTest, TheStripIsThereOnceTheHubIsOpen) {
    stage.show();
    EXPECT_FALSE(stage.saying("Open hub navigation"));
    ASSERT_TRUE(stage.base.state->previews().set(Preview::Hub, true));
    stage.settle();
    EXPECT_TRUE(stage.saying("Trackers"));
    stage.click("Tasks");
    EXPECT_TRUE(stage.saying("Not here yet"));
    tabTo("Tasks");
    stage.key(Qt::Key_Right);
    EXPECT_EQ(stage.focused(), "Trackers");
    stage.key(Qt::Key_Return);
    EXPECT_EQ(stage.base.state->hub().hubSegmentRaw(), "trackers");
    stage.click("Close hub navigation");
    EXPECT_FALSE(stage.saying("Tasks"));
    stage.click("Open hub navigation");
    stage.click("Settings");
    EXPECT_TRUE(stage.saying("Privacy settings"));
}

TEST_F(SettingsPagesTest, EnablingAsksWhoeverCan) {
    stage.show({1120, 1000});
    QSignalSpy wanted(stage.settings->permissions(), &PermissionRows::textCaptureWanted);
    stage.click("Enable");
    EXPECT_EQ(wanted.count(), 1);
}

// Lets nothing be allowed, unless it is told to.
class RefusingSettings final : public PrivacySettings {
  public:
    QStringList opened;
    std::function<void()> onOpen;

    void openPrivacyPane(const QString& anchor) override {
        opened += anchor;
        if (onOpen) onOpen();
    }
    QCoro::Task<QStringList> programsToRestart(std::stop_token) override {
        co_return QStringList();
    }
};

TEST_F(SettingsPagesTest, WhereEnablingDoesNotHelpItIsSaidWhatToLookFor) {
    ScriptedPermissionProbe probe;
    RefusingSettings system;
    Permissions& permissions = stage.base.state->permissions();
    permissions.setProbe(&probe);
    permissions.setPrivacySettings(&system);
    connectEnabling();
    stage.show({1120, 1100});
    stage.click("Enable");
    EXPECT_EQ(system.opened, QStringList("Privacy_Accessibility"));
    const QString message = permissions.permissionMessage();
    EXPECT_TRUE(message.contains("/bin/vorq"));
    EXPECT_TRUE(stage.saying(message));
    EXPECT_EQ(notified(*stage.window->contentItem()), QStringList(message));
    probe.text = PermissionState::Granted;
    stage.settings->permissions()->refresh();
    stage.settle();
    EXPECT_FALSE(stage.saying(message));
}

TEST_F(SettingsPagesTest, WhereEnablingHelpsNothingMoreIsSaid) {
    ScriptedPermissionProbe probe;
    RefusingSettings system;
    system.onOpen = [&] { probe.text = PermissionState::Granted; };
    stage.base.state->permissions().setProbe(&probe);
    stage.base.state->permissions().setPrivacySettings(&system);
    connectEnabling();
    stage.show({1120, 1100});
    stage.click("Enable");
    EXPECT_TRUE(stage.saying("Granted"));
    EXPECT_EQ(notified(*stage.window->contentItem()), QStringList());
}

TEST_F(SettingsPagesTest, TheKeyboardIsNotLeftOnWhatIsGone) {
    ScriptedPermissionProbe probe;
    stage.base.state->permissions().setProbe(&probe);
    stage.show();
    tabTo("Enable");
    probe.text = PermissionState::Granted;
    stage.settings->permissions()->refresh();
    stage.settle();
    EXPECT_TRUE(stage.saying("Granted"));
    EXPECT_FALSE(stage.saying("Enable"));
    EXPECT_TRUE(stage.window->activeFocusItem()->isVisible()) << qPrintable(stage.focused());
    EXPECT_TRUE(stage.window->activeFocusItem()->property("visualFocus").toBool());
}

TEST_F(SettingsPagesTest, AllOfTheStripIsReachedInANarrowWindow) {
    stage.show({420, 600});
    ASSERT_TRUE(stage.base.state->previews().set(Preview::Hub, true));
    stage.settle();
    EXPECT_TRUE(isInView("Settings")) << "where one is";
    stage.settings->navigation()->showHub("notes");
    stage.settle();
    EXPECT_TRUE(isInView("Notes"));
    EXPECT_FALSE(isInView("Settings"));
    drag(*station("Chats"), -400);
    ASSERT_TRUE(isInView("Settings"));
    QTest::mouseClick(stage.window.get(), Qt::LeftButton, {}, middleOf(*station("Settings")));
    stage.settle();
    EXPECT_EQ(stage.settings->navigation()->selectedTab(), SettingsNavigation::SetupTab::Settings);
    for (int step = 0; step < 40 && stage.window->activeFocusItem() != station("Settings"); ++step)
        stage.key(Qt::Key_Tab);
    for (const char* const name : {"Ask", "Trackers", "Tasks", "Chats", "Notes"}) {
        stage.key(Qt::Key_Left);
        EXPECT_EQ(stage.focused(), name);
        EXPECT_TRUE(isInView(name)) << name;
    }
}

TEST_F(SettingsPagesTest, AFieldThatIsFilledElsewhereShowsIt) {
    stage.show();
    stage.open(Pane::Profile);
    stage.base.state->account().applyProfile("Anna", "Koskinen", "mira", "");
    stage.settle();
    EXPECT_EQ(stage.field("First name").property("text"), "Anna");
}

} // namespace
} // namespace vorq
