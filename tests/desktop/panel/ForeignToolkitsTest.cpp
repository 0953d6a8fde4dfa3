// The built program beside applications of many toolkits: what is captured is what is highlighted,
// nothing of the user's is touched, and it is soon done.

#include "doubles/desktop/ForeignToolkits.h"
#include "doubles/desktop/PanelProgram.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>

#include <csignal>

namespace vorq::desktop {
namespace {

constexpr qint64 longestWait = 3000; // milliseconds, on a machine that does other work

const QByteArray line = "A river carries silt from the mountains to the sea.";
const QByteArray lines = "alpha one two\nbravo one two\ncharlie one two\ndelta\n";

struct Toolkit {
    const char* name;
    Application (*open)(DesktopSession&, const QByteArray&);
    QByteArray text;
    /// Highlights something, whatever was done before.
    void (*select)(const DesktopSession&, const Application&);
    QByteArray expected;
};

void PrintTo(const Toolkit& toolkit, std::ostream* out) {
    *out << toolkit.name;
}

void selectAll(const DesktopSession& session, const Application&) {
    session.key({"ctrl+a"});
}

void selectAllInEmacs(const DesktopSession& session, const Application&) {
    session.key({"ctrl+g", "ctrl+x", "h"});
}

void selectAllInTk(const DesktopSession& session, const Application&) {
    session.key({"ctrl+slash"});
}

void tripleClickInTerminal(const DesktopSession& session, const Application& application) {
    // The first line, below a bar of tools that has no button there.
    static int row = 0;
    const QPoint top = session.geometry(application.window).topLeft();
    session.click(top + QPoint(300, 36 + 8 * (row++ % 6)), 3);
}

// Evince claims PRIMARY for the mouse alone.
void tripleClickInViewer(const DesktopSession& session, const Application& application) {
    static int row = 0;
    const QPoint top = session.geometry(application.window).topLeft();
    session.click(top + QPoint(150, 150 + 8 * (row++ % 6)), 3);
}

// The third to the fifth character of three lines. The key switches between columns and runs; by
// keys alone the editor does not always claim PRIMARY.
void selectColumns(const DesktopSession& session, const Application& application) {
    session.key({"ctrl+shift+b"});
    const QPoint text = session.geometry(application.window).topLeft() + QPoint(46, 68);
    session.drag(text + QPoint(16, 0), text + QPoint(39, 34));
}

class ForeignToolkits : public testing::TestWithParam<Toolkit> {
  protected:
    ~ForeignToolkits() override {
        s_desktop->stop();
        for (const DesktopSession::Window window : s_desktop->session.windows()) {
            // A window may be gone by now, and its process is then 0.
            const std::int32_t process = s_desktop->session.processOf(window);
            if (process > 0) ::kill(process, SIGKILL);
        }
    }

    static void SetUpTestSuite() { s_desktop = std::make_unique<PanelProgram>(); }
    static void TearDownTestSuite() { s_desktop.reset(); }

    static void expectSoon(const char* what, const DesktopSession::Condition& isTrue) {
        QElapsedTimer waited;
        waited.start();
        DesktopSession::waitUntil(QString::fromLatin1(what), isTrue);
        EXPECT_LT(waited.elapsed(), longestWait) << what;
        RecordProperty(what, std::to_string(waited.elapsed()));
    }

    static inline std::unique_ptr<PanelProgram> s_desktop;
};

TEST_P(ForeignToolkits, WhatIsHighlightedIsCapturedAndLeftAsItWas) {
    PanelProgram& vorq = *s_desktop;
    DesktopSession& session = vorq.session;
    const Toolkit& toolkit = GetParam();
    vorq.start();
    const qsizetype before = vorq.analysed().size();
    session.own("clipboard", "of the user");
    const Application source = toolkit.open(session, toolkit.text);
    highlight(session, [&] { toolkit.select(session, source); }, toolkit.expected);
    const QByteArray primary = session.selection("primary");
    ASSERT_EQ(session.activeWindow(), source.window);

    vorq.pressHotKey();
    expectSoon("the panel", [&] { return vorq.panel() != 0; });
    expectSoon("the request", [&] { return vorq.analysed().size() > before; });
    EXPECT_EQ(vorq.analysed().back().toStdString(), toolkit.expected.toStdString());
    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_EQ(session.selection("primary"), primary);
    vorq.dismissTo(source.window);
    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_EQ(session.selection("primary"), primary);
}

INSTANTIATE_TEST_SUITE_P(
    , ForeignToolkits,
    testing::Values(Toolkit{"konsole", openKonsole, line, tripleClickInTerminal, line},
                    Toolkit{"kwrite", openKWrite, lines, selectColumns, "pha\navo\narl"},
                    Toolkit{"emacs", openEmacs, material.toUtf8(), selectAllInEmacs,
                            material.toUtf8()},
                    Toolkit{"evince", openEvince, line, tripleClickInViewer, line},
                    Toolkit{"swing", openSwing, material.toUtf8(), selectAll, material.toUtf8()},
                    Toolkit{"tk", openTk, material.toUtf8(), selectAllInTk, material.toUtf8()}),
    [](const testing::TestParamInfo<Toolkit>& info) { return std::string(info.param.name); });

} // namespace
} // namespace vorq::desktop
