// The built program as a person uses it, on a desktop without a tray and without a compositor.

#include "doubles/desktop/PanelProgram.h"
#include "rendering/SpokenReply.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using Window = DesktopSession::Window;

class PanelProgramTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { s_desktop = std::make_unique<PanelProgram>(); }
    static void TearDownTestSuite() { s_desktop.reset(); }

    PanelProgramTest() {
        m_source = openTextWindow(session, material.toUtf8());
        session.own("primary", "of another program");
    }
    ~PanelProgramTest() override {
        vorq.stop();
        for (const Window window : session.windows()) {
            // A window may be gone by now, and its process is then 0.
            const std::int32_t process = session.processOf(window);
            if (process > 0) ::kill(process, SIGKILL);
        }
        DesktopSession::waitUntil("an empty desktop", [&] { return session.windows().empty(); });
    }

    void selectAll() {
        session.activate(m_source.window);
        highlight(session, [&] { session.key({"ctrl+Home", "ctrl+a"}); }, material.toUtf8());
    }

    void showReply() {
        vorq.start();
        selectAll();
        vorq.pressHotKey();
        vorq.waitForPanel();
        EXPECT_EQ(vorq.waitForReply(3)[1], "You: Attached: Text capture");
    }

    static inline std::unique_ptr<PanelProgram> s_desktop;
    PanelProgram& vorq = *s_desktop;
    DesktopSession& session = vorq.session;
    Application m_source;
};

TEST_F(PanelProgramTest, TheHotKeyOpensAndClosesItWhereNothingIsHighlighted) {
    vorq.start();
    const qsizetype before = vorq.analysed().size();
    vorq.pressHotKey();
    vorq.waitForPanel();
    vorq.waitForGreeting();
    vorq.pressHotKey();
    vorq.waitForNoPanel();
    DesktopSession::waitUntil("the source",
                              [&] { return session.activeWindow() == m_source.window; });
    EXPECT_THAT(vorq.analysed(), SizeIs(before));

    vorq.pressHotKey();
    vorq.waitForPanel();
    selectAll();
    vorq.pressHotKey();
    EXPECT_THAT(vorq.waitForReply(3), SizeIs(3));
    EXPECT_NE(vorq.panel(), 0U) << "with a highlight it stays";
    EXPECT_THAT(vorq.analysed(), SizeIs(before + 1));
}

TEST_F(PanelProgramTest, TheConversationIsClearedByItsHotKey) {
    showReply();
    session.key({"super+shift+t"});
    vorq.waitForGreeting();
    EXPECT_NE(vorq.panel(), 0U);
}

TEST_F(PanelProgramTest, EscapeGivesTheKeyboardBackToTheVeryWindow) {
    const Application other = openTextWindow(session, "other");
    vorq.start();
    session.activate(m_source.window);
    vorq.pressHotKey();
    vorq.waitForPanel();
    EXPECT_TRUE(vorq.press("Add files or notes"));
    session.key({"Escape"}); // closes the tray
    vorq.dismissTo(m_source.window);

    session.activate(other.window);
    vorq.pressHotKey();
    vorq.waitForPanel();
    vorq.dismissTo(other.window);
}

TEST_F(PanelProgramTest, AClickOnAnotherWindowClosesItAndIsTheWindows) {
    vorq.start();
    vorq.pressHotKey();
    vorq.waitForPanel();
    const QRect panel = session.geometry(vorq.panel());
    const QRect window = session.geometry(m_source.window);
    const QPoint beside = window.bottomRight() - QPoint(20, 20);
    ASSERT_FALSE(panel.contains(beside)) << "the window lies beside the panel";
    session.click(beside);
    vorq.waitForNoPanel();
    DesktopSession::waitUntil("the window",
                              [&] { return session.activeWindow() == m_source.window; });
}

TEST_F(PanelProgramTest, ADragDocksItElsewhereForGood) {
    vorq.start();
    vorq.pressHotKey();
    vorq.waitForPanel();
    const QRect left = session.geometry(vorq.panel());
    EXPECT_EQ(left.size(), QSize(440, 750));
    EXPECT_EQ(left.left(), 18);
    const QPoint plain = left.center();
    session.drag(plain, plain + QPoint(140, 0));
    const auto isInTheMiddle = [&] {
        const QRect now = session.geometry(vorq.panel());
        return now.width() == 1100 && now.center().x() >= 638 && now.center().x() <= 642;
    };
    DesktopSession::waitUntil("the middle", isInTheMiddle);
    vorq.dismissTo(m_source.window);
    vorq.start();
    vorq.pressHotKey();
    vorq.waitForPanel();
    DesktopSession::waitUntil("the middle again", isInTheMiddle);
}

TEST_F(PanelProgramTest, AConversationGoesOnByTheKeyboardAlone) {
    showReply();
    const QString label = u"Summarize it in three sentences"_s;
    vorq.tabTo(label);
    session.key({"space"});
    EXPECT_EQ(vorq.waitForReply(5)[3], "You: " + label);
    vorq.tabTo("Ask Vorq for help…");
    const qsizetype asked = static_cast<qsizetype>(vorq.prompts().size());
    session.type("Why did farmers need no manure?");
    session.key({"Return"});
    const QStringList entries = vorq.waitForReply(7);
    EXPECT_EQ(entries[5], "You: Why did farmers need no manure?");
    ASSERT_THAT(vorq.prompts(), SizeIs(asked + 1));
    const QJsonObject prompt = vorq.prompts().back();
    EXPECT_EQ(prompt.value("prompt").toString(), "Why did farmers need no manure?");
    EXPECT_EQ(prompt.value("selectedText").toString(), material);

    session.key({"ctrl+c"});
    DesktopSession::waitUntil("the copied reply", [&] {
        const QString copied = QString::fromUtf8(session.selection("clipboard"));
        return "Vorq: " + spokenReply(copied) == entries[6];
    });
}

TEST_F(PanelProgramTest, AScreenReaderIsToldOfEveryControl) {
    showReply();
    EXPECT_THAT(vorq.conversation(), SizeIs(3));
    std::vector<std::string> entries;
    for (const QString& entry : vorq.conversation())
        entries.push_back(entry.toStdString());
    EXPECT_THAT(entries, Each(AnyOf(StartsWith("You: "), StartsWith("Vorq: "))));

    session.type("a draft");
    std::vector<std::string> nameless;
    for (const AccessibleNode& node : vorq.controls())
        if (node.isFocusable && node.isShowing && node.name.isEmpty() &&
            vorq.textOf(node).isEmpty())
            nameless.push_back(node.role.toStdString());
    EXPECT_THAT(nameless, IsEmpty());
    for (const AccessibleNode& node : vorq.tabTo("Ask Vorq for help…")) {
        EXPECT_FALSE(node.name.isEmpty()) << node.role.toStdString();
        EXPECT_THAT(node.role.toStdString(), AnyOf("push button", "document", "text", "list"))
            << node.name.toStdString();
    }
}

TEST_F(PanelProgramTest, AScreenReaderIsToldOfTheReplyAndReadsItLineByLine) {
    showReply();
    QString title = vorq.conversation().back().section('\n', 0, 0).remove("Vorq: ");
    ASSERT_FALSE(title.isEmpty());
    QStringList announced;
    QStringList read;
    for (const AccessibleNode& node : vorq.controls()) {
        if (!node.isShowing) continue;
        if (node.role == "notification") announced += node.name;
        if (node.role == "document") read += vorq.textOf(node);
    }
    ASSERT_THAT(announced, SizeIs(1));
    EXPECT_EQ(announced.front().section('\n', 0, 0), title);
    ASSERT_THAT(read, testing::Not(IsEmpty()));
    EXPECT_EQ(read.back().section('\n', 0, 0), title);
    EXPECT_GT(read.back().count('\n'), 2);
    EXPECT_FALSE(read.back().contains("**"));
}

TEST_F(PanelProgramTest, WithoutItsBackendItSaysSoAsTheReply) {
    vorq.start("http://127.0.0.1:9");
    selectAll();
    vorq.pressHotKey();
    vorq.waitForPanel();
    EXPECT_THAT(vorq.waitForReply(3)[2].toStdString(),
                StartsWith("Vorq: Could not reach Vorq at http://127.0.0.1:9"));
    EXPECT_EQ(session.selection("primary"), material.toUtf8());
}

TEST_F(PanelProgramTest, WhoIsNotSignedInIsToldAtOnceAndSignsInByOnePress) {
    session.write(".config/Vorq/settings.json", "{}");
    vorq.start();
    vorq.pressHotKey();
    vorq.waitForPanel();
    const auto shows = [&](const QString& name) {
        return std::ranges::any_of(vorq.controls(), [&](const AccessibleNode& node) {
            return node.name == name && node.isShowing;
        });
    };
    DesktopSession::waitUntil("the notice", [&] { return shows("You are not signed in."); });
    ASSERT_TRUE(vorq.press("Sign in on this computer"));
    DesktopSession::waitUntil("the sign-in", [&] { return !shows("You are not signed in."); });
    session.type("a question");
    session.key({"Return"});
    const QStringList entries = vorq.waitForReply(3);
    EXPECT_EQ(entries[1], "You: a question");
    EXPECT_FALSE(entries[2].contains("sign", Qt::CaseInsensitive)) << entries[2].toStdString();
}

TEST_F(PanelProgramTest, ASourceThatHangsDoesNotKeepItDown) {
    vorq.start();
    selectAll();
    const Stopped hung(m_source.process);
    DesktopSession::waitUntil("the source to stand still", [&] { return hung.holds(); });
    vorq.pressHotKey();
    vorq.waitForPanel();
    EXPECT_TRUE(hung.holds());
    session.type("typed meanwhile");
    session.key({"Return"});
    DesktopSession::waitUntil("the answer to what was typed", [&] {
        return vorq.conversation().contains("You: typed meanwhile") && hung.holds();
    });
}

TEST_F(PanelProgramTest, ASourceThatDiesWhileItIsReadIsNoHarm) {
    vorq.start();
    selectAll();
    {
        const Stopped hung(m_source.process);
        DesktopSession::waitUntil("the source to stand still", [&] { return hung.holds(); });
        vorq.pressHotKey();
        vorq.waitForPanel();
        ::kill(m_source.process, SIGKILL);
    }
    vorq.waitForGreeting();
    session.key({"Escape"});
    vorq.waitForNoPanel();
    EXPECT_TRUE(vorq.program().isRunning());
    m_source = openTextWindow(session, material.toUtf8());
    selectAll();
    vorq.pressHotKey();
    EXPECT_THAT(vorq.waitForReply(3), SizeIs(3));
}

// Without permission to read, nothing is read, and the hot key must not take the panel away.
TEST(PanelProgramWithoutAccessibility, TheHotKeyOpensItAndLeavesItOpen) {
    PanelProgram vorq({.hasAccessibilityBus = false, .isAccessibilityOn = false});
    DesktopSession& session = vorq.session;
    const Application terminal = openXterm(session, material.toUtf8() + "\n");
    const auto captures = [&] {
        return vorq.program().output().count("Vorq capture: trusted=false");
    };
    vorq.start();
    for (const int press : {1, 2}) {
        vorq.pressHotKey();
        vorq.waitForPanel();
        DesktopSession::waitUntil("the end of the capture", [&] { return captures() == press; });
        EXPECT_NE(vorq.panel(), 0U);
    }
    EXPECT_TRUE(vorq.analysed().isEmpty());
    vorq.dismissTo(terminal.window);
}

} // namespace
} // namespace vorq::desktop
