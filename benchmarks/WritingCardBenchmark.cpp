// From the key of the writing tools to their mapped card, over a selection in an application that
// answers at once: the built program on a desktop of its own. What an empty window takes there is
// in bench-panel-show.

#include "KeyStopwatch.h"
#include "doubles/desktop/PanelProgram.h"

#include <QCoreApplication>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace {

using namespace vorq::desktop;

constexpr int rounds = 60;
constexpr int warmUpRounds = 3;
// Super, Shift and W on the usual keyboard.
const std::vector<std::uint8_t> cardKeys{133, 50, 25};

void selectWord(const DesktopSession& session) {
    session.key({"ctrl+Home", "Right", "Right", "Right", "Right"});
    session.key({"shift+Right", "shift+Right", "shift+Right"});
    DesktopSession::waitUntil("the selection",
                              [&] { return session.selection("primary") == "old"; });
}

std::vector<double> measure(PanelProgram& vorq) {
    DesktopSession& session = vorq.session;
    const auto window = [&] {
        session.key({"super+shift+w"});
        DesktopSession::waitUntil("the card", [&] { return vorq.panel() != 0; });
        return vorq.panel();
    }();
    KeyStopwatch stopwatch(cardKeys, window);
    std::vector<double> times;
    for (int round = 0; round < warmUpRounds + rounds; ++round) {
        if (!vorq.press("Close")) throw std::runtime_error("the card has no button to close it");
        stopwatch.waitForUnmapped();
        QTest::qWait(150);
        const double time = stopwatch.millisecondsToMapped();
        if (round >= warmUpRounds) times.push_back(time);
        QTest::qWait(150);
    }
    std::ranges::sort(times);
    return times;
}

} // namespace

int main(int argc, char** argv) try {
    const QCoreApplication application(argc, argv);
    PanelProgram vorq;
    run(VORQ_PROGRAM, "", {"preview", "writing", "on"}, vorq.session.environment());
    vorq.start();
    DesktopSession::waitUntil("the key of the writing tools",
                              [&] { return vorq.program().output().contains("rewrite hotkey."); });
    openTextWindow(vorq.session, "the old words");
    selectWord(vorq.session);
    reportTimes("card", measure(vorq));
    std::puts("budget 150 ms at p95, with the capture and the place of the selection");
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
