// A bar that draws the menu of the status item itself, whether it tells of its end or not.

#include "doubles/desktop/MenuProgram.h"
#include "doubles/desktop/PanelPresenceFixture.h"

#include <QFile>

namespace vorq::desktop {
namespace {

class PanelBarTest : public PanelPresenceTest, public testing::WithParamInterface<const char*> {
  protected:
    explicit PanelBarTest(int delay = 0) {
        DesktopProgram& bar =
            session.start(VORQ_STATUS_BAR, "", {GetParam(), QString::number(delay)});
        m_started.push_back(&bar);
        m_bar = &bar;
        waitForBar("bar");
        vorq.start();
        waitForBar("item");
    }
    ~PanelBarTest() override {
        if (HasFailure()) std::cerr << m_bar->output().toStdString();
        m_bar->kill();
    }

    void waitForBar(const QByteArray& word, int times = 1) {
        DesktopSession::waitUntil("the bar to say " + word,
                                  [&] { return m_bar->output().count(word) >= times; });
    }
    void openMenu() {
        session.click({15, 880});
        waitForBar("menu", ++m_menus);
        letSettle();
    }

    /// Of an entry in a menu that the bar shows.
    [[nodiscard]] QPoint placeOf(const QByteArray& entry) {
        for (const QByteArray& line : m_bar->output().split('\n')) {
            const QByteArrayList words = line.split(' ');
            if (words.front() == "entry" && words.mid(3).join(' ').split('\t').front() == entry)
                return {words[1].toInt(), words[2].toInt()};
        }
        throw std::runtime_error("the bar has no entry " + entry.toStdString() + ": " +
                                 m_bar->output().toStdString());
    }

    /// Where the panel has no text.
    [[nodiscard]] bool isLight() const {
        const QByteArray pixels =
            run("import", "imagemagick",
                {"-window", "root", "-crop", "40x10+200+80", "-depth", "8", "rgb:-"},
                session.environment());
        return static_cast<quint8>(pixels.front()) > 128;
    }

    DesktopProgram* m_bar = nullptr;
    int m_menus = 0;
};

TEST_P(PanelBarTest, APressOnAnEntryOfOurMenuLeavesItUp) {
    openPanel();
    openMenu();
    expectStays("the menu is ours");
    session.click(placeOf("Customize Vorq"));
    waitForBar("menu", ++m_menus);
    const bool wasLight = isLight();
    session.click(placeOf(wasLight ? "Dark" : "Light"));
    DesktopSession::waitUntil("the other theme", [&] { return isLight() != wasLight; });
    expectStays("the entry is ours");
    expectClickHides();
}

TEST_P(PanelBarTest, AClickBesideTheMenuClosesOnlyTheMenuAndTheNextHides) {
    openPanel();
    openMenu();
    session.click(besideAll());
    expectStays("the click was the menu's");
    expectClickHides();
}

TEST_P(PanelBarTest, AnEntryOfTheMenuHidesAPanelThatIsUpAndShowsOneThatIsNot) {
    openPanel();
    openMenu();
    session.click(placeOf("Toggle Vorq"));
    vorq.waitForNoPanel();
    openMenu();
    session.click(placeOf("Toggle Vorq"));
    vorq.waitForPanel();
    expectClickHides();
}

// The menu comes up, but nobody has pressed its item.
TEST_P(PanelBarTest, APressBesideOurItemTakesThePanelDownForGood) {
    openPanel();
    session.click({600, 880});
    vorq.waitForNoPanel();
    run(VORQ_PROGRAM, "", {}, session.environment());
    waitForMenu();
    letSettle();
    EXPECT_EQ(vorq.panel(), 0U);
}

// On a loaded machine the bar has other things to do first.
class SlowBarTest : public PanelBarTest {
  protected:
    SlowBarTest() : PanelBarTest(1500) {}
};

TEST_P(SlowBarTest, OurMenuLeavesThePanelUpHoweverLateItComes) {
    openPanel();
    openMenu();
    expectStays("the menu is ours");
    const bool wasLight = isLight();
    session.click(placeOf("Customize Vorq"));
    waitForBar("menu", ++m_menus);
    session.click(placeOf(wasLight ? "Dark" : "Light"));
    DesktopSession::waitUntil("the other theme", [&] { return isLight() != wasLight; });
    expectStays("the entry is ours");
    expectClickHides();
}

TEST_P(SlowBarTest, AnotherPressMeanwhileSaysThatItIsToGo) {
    openPanel();
    session.click({15, 880});
    vorq.waitForNoPanel();
    session.click(besideAll());
    waitForBar("menu", ++m_menus);
    letSettle();
    EXPECT_EQ(vorq.panel(), 0U);
}

// The bar cannot be told to show its menu, so the one that shows who is not signed in where to sign
// in is our own.
class PanelGuideTest : public PanelBarTest {
  protected:
    PanelGuideTest() {
        QFile settings(settingsPath());
        EXPECT_TRUE(settings.open(QIODevice::ReadOnly));
        m_signedIn = settings.readAll();
        vorq.stop();
        session.write(".config/Vorq/settings.json", "{}");
        vorq.start();
        waitForBar("item", 2);
        m_tree = std::make_unique<AccessibleTree>(vorq.program().process());
        m_focus = std::make_unique<FocusWatch>(*m_tree);
        openPanel();
    }
    ~PanelGuideTest() override { session.write(".config/Vorq/settings.json", m_signedIn); }

    [[nodiscard]] QString settingsPath() const {
        return session.home() + "/.config/Vorq/settings.json";
    }

    // By a question, which nobody answers to who is not signed in.
    void openGuide() {
        session.click(prompt());
        DesktopSession::waitUntil("the keyboard",
                                  [&] { return session.activeWindow() == vorq.panel(); });
        session.type("why");
        DesktopSession::waitUntil("the question", [&] { return draft().endsWith("why"); });
        xdotool({"mousemove", "700", "300"});
        session.key({"Return"});
        waitForMenu();
        letSettle();
    }

    // An entry of the menu that has the focus, once it has come to one of them and stands still.
    void clickEntry(const QString& name) {
        QRect place;
        m_focus->forget();
        DesktopSession::waitUntil(name, [&] {
            session.key({"Down"});
            letSettle(200);
            const QRect before = place;
            if (m_focus->path().isEmpty()) return false;
            for (const AccessibleNode& node : m_tree->readSiblings(m_focus->path()))
                if (node.isShowing && node.name == name) place = m_tree->place(node);
            return !place.isEmpty() && place == before;
        });
        session.click(place.center());
    }

  private:
    QByteArray m_signedIn;
    std::unique_ptr<AccessibleTree> m_tree;
    std::unique_ptr<FocusWatch> m_focus;
};

TEST_P(PanelGuideTest, AClickThatOnlyClosesTheMenuLeavesItUp) {
    for (int time = 0; time < 3; ++time) {
        openGuide();
        expectStays("the menu is ours");
        session.click(besideAll());
        waitForMenu(false);
        expectStays("the click was the menu's");
    }
    expectClickHides();
}

TEST_P(PanelGuideTest, APressOnAnEntryLeavesItUp) {
    openGuide();
    clickEntry("Customize Vorq");
    letSettle();
    const bool wasLight = isLight();
    clickEntry(wasLight ? "Dark" : "Light");
    DesktopSession::waitUntil("the other theme", [&] { return isLight() != wasLight; });
    waitForMenu(false);
    expectStays("the entry is ours");
    expectClickHides();
}

INSTANTIATE_TEST_SUITE_P(Ends, PanelGuideTest, testing::Values("tells", "silent"),
                         [](const auto& info) { return std::string(info.param); });

INSTANTIATE_TEST_SUITE_P(Ends, SlowBarTest, testing::Values("tells", "silent"),
                         [](const auto& info) { return std::string(info.param); });

INSTANTIATE_TEST_SUITE_P(Ends, PanelBarTest, testing::Values("tells", "silent"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
} // namespace vorq::desktop
