// A bar that draws the menu of the status item itself, whether it tells of its end or not.

#include "desktop/PanelPresenceFixture.h"

namespace vorq::desktop {
namespace {

class PanelBarTest : public PanelPresenceTest, public testing::WithParamInterface<const char*> {
  protected:
    PanelBarTest() {
        DesktopProgram& bar = session.start(VORQ_STATUS_BAR, "", {GetParam()});
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

INSTANTIATE_TEST_SUITE_P(Ends, PanelBarTest, testing::Values("tells", "silent"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
} // namespace vorq::desktop
