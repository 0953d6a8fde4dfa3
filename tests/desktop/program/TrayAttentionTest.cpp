// How the built program leads the eye to its item in the tray and to an entry of its menu, and what
// becomes of the item with the tray.

#include "doubles/desktop/MenuProgram.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

const QString chimed = "vorq.accessGuide.signInChimed";
const QString needs = "vorq.needsMenuBarAttention";
const QString didShow = "vorq.didShowMenuBarAttention";
constexpr quint32 irisColor = 0x5b78fb;
constexpr quint32 emberColor = 0xe5631a;

class TrayAttentionTest : public MenuProgramTest {
  protected:
    [[nodiscard]] QJsonObject settings() const {
        QFile file(m_session.home() + "/.config/Vorq/settings.json");
        return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                              : QJsonObject();
    }
    void waitForSetting(const QString& key, bool value) const {
        DesktopSession::waitUntil(key, [&] { return settings().value(key) == value; });
    }

    // A copy among the user's own applications.
    void install() {
        m_session.write(".local/bin/vorq", "");
        m_session.write(".local/share/applications/com.vorq.desk.desktop",
                        "[Desktop Entry]\nType=Application\nName=Vorq\nExec=vorq\n");
        m_program = m_session.home() + "/.local/bin/vorq";
        QFile::remove(m_program);
        ASSERT_TRUE(QFile::copy(program, m_program));
    }

    [[nodiscard]] int topOfMark() const { return picture().placeOf(irisColor).top(); }
    void waitForMark() const {
        DesktopSession::waitUntil("the mark in the tray", [this] { return showsColor(iris); });
    }
    void waitForMotion() const {
        const int first = topOfMark();
        DesktopSession::waitUntil("the mark to move",
                                  [&] { return std::abs(topOfMark() - first) >= 3; });
    }
    // For longer than the mark ever rests while it is to be seen.
    [[nodiscard]] bool standsStill() const {
        const int first = topOfMark();
        QElapsedTimer passed;
        passed.start();
        while (passed.elapsed() < 1500)
            if (topOfMark() != first) return false;
        return true;
    }

    // How much of the screen is orange.
    [[nodiscard]] int orange() const {
        const ScreenPicture shown = picture();
        int count = 0;
        for (int y = 0; y < 900; ++y)
            for (int x = 0; x < 1280; ++x) {
                const quint32 color = shown.rgb(x, y);
                const auto red = static_cast<int>(color >> 16 & 0xff);
                const auto green = static_cast<int>(color >> 8 & 0xff);
                const auto blue = static_cast<int>(color & 0xff);
                count += red > green + 20 && green > blue + 10 ? 1 : 0;
            }
        return count;
    }
    // By a question, which nobody answers to who is not signed in.
    void askInPanel(const DesktopProgram& vorq) {
        openMenu();
        choose("Toggle Vorq");
        DesktopSession::waitUntil("the panel with the keyboard", [&] {
            return m_session.processOf(m_session.activeWindow()) == vorq.process() &&
                   shows("Vorq: Hello 👋, Vorq here…");
        });
        m_session.type("why");
        m_session.key({"Return"});
    }
};

TEST_F(TrayAttentionTest, TheItemComesBackWithTheTrayAndItsMenuOpens) {
    startInTray();
    killTray();
    startTray();
    waitForMark();
    openMenu();
    EXPECT_TRUE(entry("History"));
    closeMenu();
    killTray();
    startTray();
    waitForMark();
    openMenu();
    EXPECT_TRUE(entry("History"));
}

TEST_F(TrayAttentionTest, AfterItsInstallationTheItemMovesUntilTheMenuWasOpen) {
    install();
    DesktopProgram& vorq = startInTray();
    waitForMotion();
    EXPECT_EQ(settings().value(needs), true);
    openMenu();
    waitForSetting(didShow, true);
    waitForSetting(needs, false);
    closeMenu();
    EXPECT_TRUE(standsStill());
    vorq.kill();
    startInTray(QJsonDocument(settings()).toJson());
    EXPECT_TRUE(standsStill()) << "it was found";
}

TEST_F(TrayAttentionTest, WhoWantsNothingToMoveSeesAnotherImageInstead) {
    install();
    run("gsettings", "libglib2.0-bin",
        {"set", "org.gnome.desktop.interface", "enable-animations", "false"},
        m_session.environment());
    startTray();
    start();
    DesktopSession::waitUntil("the other image",
                              [this] { return !picture().placeOf(emberColor).isEmpty(); });
    DesktopSession::waitUntil("no mark", [this] { return !showsColor(iris); });
}

TEST_F(TrayAttentionTest, ACopyThatIsNotInstalledStandsStill) {
    startInTray();
    EXPECT_TRUE(standsStill());
    EXPECT_FALSE(settings().contains(needs));
}

// A pulse is soon over, and a busy machine may draw none of it.
TEST_F(TrayAttentionTest, WhoMustSignInFirstSeesWhere) {
    bool wasSeen = false;
    for (int time = 0; time < 5 && !wasSeen; ++time) {
        DesktopProgram& vorq = startInTray();
        askInPanel(vorq);
        const int before = orange();
        QElapsedTimer passed;
        passed.start();
        while (!wasSeen && passed.elapsed() < 4000)
            wasSeen = orange() > before + 3000;
        if (wasSeen) (void)keep("menu-chime");
        waitForSetting(chimed, true);
        vorq.kill();
    }
    EXPECT_TRUE(wasSeen);
}

// A bar that draws the icon and the menu itself, as it hears of them by D-Bus.
class LateBarTest : public TrayAttentionTest {
  protected:
    void startBar() {
        m_bar = &m_session.start(VORQ_STATUS_BAR, "", {"tells"});
        m_menus = 0;
        waitForBar("bar");
    }
    void waitForBar(const QByteArray& word, int times = 1) {
        DesktopSession::waitUntil("the bar to say " + word,
                                  [&] { return m_bar->output().count(word) >= times; });
    }
    void startBesideBar() {
        m_running = &start();
        waitFor(*m_running, "clear-chat hotkey.");
        waitForBar("item");
    }
    void openBarMenu() {
        m_session.click({15, 880});
        waitForBar("menu", ++m_menus);
        EXPECT_TRUE(m_bar->output().contains("History"));
        m_session.key({"Escape"});
    }
    [[nodiscard]] bool isMarkedIcon() const { return picture().rgb(20, 872) == emberColor; }

    DesktopProgram* m_bar = nullptr;
    DesktopProgram* m_running = nullptr;
    int m_menus = 0;
};

TEST_F(LateBarTest, TheItemIsInABarThatComesAfterIt) {
    m_running = &start();
    waitFor(*m_running, "clear-chat hotkey.");
    for (int time = 0; time < 2; ++time) {
        startBar();
        waitForBar("item");
        waitForMark();
        openBarMenu();
        m_bar->kill();
        DesktopSession::waitUntil("no bar", [this] { return !showsColor(iris); });
    }
}

class BarAttentionTest : public LateBarTest {
  protected:
    BarAttentionTest() { startBar(); }
};

TEST_F(BarAttentionTest, TheItemComesBackWithTheBarAndItsMenuOpens) {
    startBesideBar();
    waitForMark();
    for (int time = 0; time < 2; ++time) {
        m_bar->kill();
        DesktopSession::waitUntil("no bar", [this] { return !showsColor(iris); });
        startBar();
        waitForBar("item");
        waitForMark();
        openBarMenu();
    }
}

TEST_F(BarAttentionTest, AfterItsInstallationAnotherImageComesAndGoesUntilTheMenuWasOpen) {
    install();
    startBesideBar();
    for (int time = 0; time < 2; ++time) {
        DesktopSession::waitUntil("the other image", [this] { return isMarkedIcon(); });
        waitForMark();
    }
    openBarMenu();
    waitForSetting(didShow, true);
    waitForMark();
    EXPECT_TRUE(standsStill());
}

// The menu that shows where to sign in is our own, away from the bar, whose item pulses beside it.
TEST_F(BarAttentionTest, TheItemPulsesBesideTheMenuThatShowsWhereToSignIn) {
    startBesideBar();
    m_session.key({"super+shift+a"});
    DesktopSession::waitUntil("the panel with the keyboard", [this] {
        return m_session.processOf(m_session.activeWindow()) == m_running->process();
    });
    m_session.type("why");
    m_session.key({"Return"});
    DesktopSession::waitUntil("the other image", [this] { return isMarkedIcon(); });
    waitForMark();
    DesktopSession::waitUntil("the end of the pulses", [this] { return standsStill(); });
    EXPECT_EQ(settings().value(chimed), true);
}

} // namespace
} // namespace vorq::desktop
