// Rewrites a word in a real application, writes it over the selection, takes that back, and looks
// at the document each time: how long it takes, and whether one byte of it is ever wrong. Before
// that, what an open card costs while nothing happens.
//
//     bench-rewrite-rounds [ROUNDS] [mousepad|texteditor|qt6]

#include "KeyStopwatch.h"
#include "doubles/desktop/Applications.h"
#include "doubles/desktop/PanelProgram.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <map>
#include <stdexcept>

#include <unistd.h>

namespace {

using namespace vorq::desktop;
using namespace Qt::StringLiterals;

const QByteArray original = "the old words, é 😀 — to the end";
const QByteArray rewritten = "the OLD words, é 😀 — to the end";
constexpr int idleSeconds = 10;

class Rounds {
  public:
    explicit Rounds(Application (*open)(DesktopSession&, const QByteArray&)) {
        run(VORQ_PROGRAM, "", {"preview", "writing", "on"}, m_session.environment());
        m_vorq.start();
        DesktopSession::waitUntil("the key of the writing tools", [&] {
            return m_vorq.program().output().contains("rewrite hotkey.");
        });
        m_session.own("clipboard", "as it was");
        m_source = open(m_session, original);
    }

    /// The share of a processor, in percent, from the moment that the card is there.
    double idleShare() {
        select();
        openCard();
        const double before = secondsUsed();
        QTest::qWait(idleSeconds * 1000);
        const double used = secondsUsed() - before;
        closeCard();
        return 100 * used / idleSeconds;
    }

    /// Milliseconds from Return to the word that it is done.
    double go() {
        select();
        openCard();
        m_session.key({"super+shift+w"});
        DesktopSession::waitUntil("the card to have the keyboard",
                                  [&] { return m_session.activeWindow() == card(); });
        m_session.type("upper case");
        m_session.key({"Return"});
        waitFor("OLD");
        QElapsedTimer timer;
        timer.start();
        m_session.key({"Return"});
        waitFor("Replaced");
        const double time = static_cast<double>(timer.nsecsElapsed()) / 1e6;
        expect(rewritten);
        m_vorq.click("Undo");
        DesktopSession::waitUntil("the end of the undo",
                                  [&] { return isShown("Replace", true) && !isShown("Replaced"); });
        expect(original);
        closeCard();
        if (m_session.selection("clipboard") != "as it was")
            throw std::runtime_error("the clipboard is not as it was");
        return time;
    }

  private:
    [[nodiscard]] DesktopSession::Window card() const { return m_vorq.windowTitled("Rewrite"); }
    [[nodiscard]] bool isShown(const QString& name, bool isEnabled = false) const {
        return std::ranges::any_of(m_vorq.controls(), [&](const AccessibleNode& node) {
            return node.isShowing && node.name == name && (node.isEnabled || !isEnabled);
        });
    }
    void waitFor(const QString& name) const {
        DesktopSession::waitUntil(name, [&] { return isShown(name); });
    }
    void select() const {
        m_session.activate(m_source.window);
        highlight(
            m_session,
            [&] {
                m_session.key({"ctrl+Home", "Right", "Right", "Right", "Right"});
                m_session.key({"shift+Right", "shift+Right", "shift+Right"});
            },
            "old");
    }
    void expect(const QByteArray& text) const {
        DesktopSession::waitUntil("the application",
                                  [&] { return m_session.activeWindow() == m_source.window; });
        highlight(m_session, [&] { m_session.key({"ctrl+a"}); }, text);
    }
    void openCard() const {
        m_session.key({"super+shift+w"});
        DesktopSession::waitUntil("the card", [&] { return card() != 0; });
    }
    void closeCard() const {
        m_vorq.click("Close");
        DesktopSession::waitUntil("the card to go", [&] { return card() == 0; });
    }
    [[nodiscard]] double secondsUsed() {
        QFile file(u"/proc/%1/stat"_s.arg(m_vorq.program().process()));
        if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("Vorq has ended");
        const QByteArray line = file.readAll();
        const QList<QByteArray> fields = line.sliced(line.lastIndexOf(')') + 2).split(' ');
        const double ticks = fields.at(11).toDouble() + fields.at(12).toDouble();
        return ticks / static_cast<double>(::sysconf(_SC_CLK_TCK));
    }

    PanelProgram m_vorq;
    DesktopSession& m_session = m_vorq.session;
    Application m_source;
};

} // namespace

int main(int argc, char** argv) try {
    const QCoreApplication application(argc, argv);
    const std::map<QString, Application (*)(DesktopSession&, const QByteArray&)> editors{
        {"mousepad", openMousepad}, {"texteditor", openTextEditor}, {"qt6", openTextWindow}};
    const int count = argc > 1 ? QByteArray(argv[1]).toInt() : 50;
    const auto editor = editors.find(argc > 2 ? QString(argv[2]) : u"mousepad"_s);
    if (count < 1 || editor == editors.end()) {
        std::fputs("usage: bench-rewrite-rounds [ROUNDS] [mousepad|texteditor|qt6]\n", stderr);
        return 2;
    }
    Rounds rounds(editor->second);
    std::printf("an open card at rest: %.2f %% of a processor\n", rounds.idleShare());
    std::vector<double> times;
    times.reserve(static_cast<std::size_t>(count));
    for (int round = 0; round < count; ++round)
        times.push_back(rounds.go());
    std::ranges::sort(times);
    reportTimes("replace", times);
    std::printf("%d rounds, each document as it should be; budget 630 ms: the waits and 100\n",
                count);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
