// Whatever happens to the panel in whatever order: it is never stuck on the screen, and never taken
// to be there when it is not.

#include "doubles/shell/PanelWindowFixture.h"

#include <array>
#include <random>
#include <vector>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using enum PressedSurface;

// A session with open menus and dialogs, in which anything may happen next.
class PanelVisibilityTest : public PanelWindowFixture,
                            public testing::WithParamInterface<unsigned> {
  protected:
    std::mt19937 m_random{GetParam()};
    std::vector<PanelHold> m_dialogs;
    bool m_isMenuOpen = false;
    QStringList m_history;

    unsigned below(unsigned count) {
        return std::uniform_int_distribution<unsigned>(0, count - 1)(m_random);
    }

    void setMenuOpen(bool isOpen) {
        m_isMenuOpen = isOpen;
        emit m_notifications.vorqStatusMenuChanged(isOpen);
        if (!isOpen) emit m_notifications.vorqSuppressPanelOutsideClose(false);
    }

    ScreenPress somePress() {
        static constexpr std::array surfaces{Foreign,   ForeignBar, ForeignMenu,
                                             OwnWindow, OwnMenu,    OwnStatusItem};
        return {.at = below(4) == 0 ? m_window.at.center() : QPointF(1500, 500),
                .surface = surfaces.at(below(surfaces.size())),
                .button = below(4) == 0 ? PressedButton::Right : PressedButton::Left,
                .window = 55};
    }

    // What a window manager takes off the screen is off before anybody is told.
    void takeOffScreen() {
        if (m_window.input == nullptr) return;
        m_window.isShown = false;
        m_window.input->exposureChanged();
    }

    void doSomething() {
        struct Operation {
            const char* name;
            std::function<void()> act;
        };
        const std::array operations{
            Operation{"press", [&] { emit m_presses.pressed(somePress()); }},
            Operation{"release", [&] { emit m_presses.released(); }},
            Operation{"drag", [&] { emit m_presses.dragBegan(); }},
            Operation{"late press",
                      [&] { m_presses.late = [&] { emit m_presses.pressed(somePress()); }; }},
            Operation{"menu", [&] { setMenuOpen(!m_isMenuOpen); }},
            Operation{"guide", [&] { emit m_notifications.vorqSuppressPanelOutsideClose(true); }},
            Operation{"dialog opens",
                      [&] { m_dialogs.push_back(m_holds.take(PanelHoldKind::Dialog)); }},
            Operation{"dialog closes",
                      [&] {
                          if (!m_dialogs.empty()) m_dialogs.pop_back();
                      }},
            Operation{"show", [&] { m_controller->show(); }},
            Operation{"show beside", [&] { m_controller->showBeside(); }},
            Operation{"hide", [&] { m_controller->hide(); }},
            Operation{"escape",
                      [&] {
                          if (m_window.input) m_window.input->escapePressed();
                      }},
            Operation{"close",
                      [&] {
                          if (m_window.input) m_window.input->closed();
                      }},
            Operation{"off screen", [&] { takeOffScreen(); }},
            Operation{"other window", [&] { m_workspace.bringToFront(browser); }},
            Operation{"time", [&] { m_clock.advance(std::chrono::milliseconds(below(500))); }},
        };
        const Operation& operation = operations.at(below(operations.size()));
        m_history += operation.name;
        operation.act();
    }

    void closeAll() {
        setMenuOpen(false);
        m_dialogs.clear();
        emit m_presses.released();
        m_presses.late = nullptr;
    }
};

TEST_P(PanelVisibilityTest, IsNeitherStuckNorImagined) {
    for (int time = 0; time < 400; ++time) {
        m_history.clear();
        for (unsigned count = below(12) + 1; count > 0; --count)
            doSomething();
        m_clock.advance(OutsidePresses::slowestBar + 1s);
        const std::string history = m_history.join(", ").toStdString();
        ASSERT_EQ(m_controller->isPanelVisible(), m_window.isShown) << history;
        ASSERT_EQ(m_controller->isPanelVisible(), m_presses.isOn) << history;
        ASSERT_EQ(m_controller->isPanelVisible(), m_window.input != nullptr) << history;
        if (!m_isMenuOpen && m_dialogs.empty() && below(3) != 0) continue;
        closeAll();
        ASSERT_FALSE(m_holds.isHeld()) << history;
        m_controller->show();
        m_clock.advance(1s);
        clickAt({1500, 500});
        m_clock.advance(1s);
        ASSERT_FALSE(m_controller->isPanelVisible()) << "stuck after " << history;
        ASSERT_FALSE(m_window.isShown) << history;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, PanelVisibilityTest, testing::Range(1U, 9U));

} // namespace
} // namespace vorq
