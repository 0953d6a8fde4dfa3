// What a user who does not see hears of the panel, by the events and elements that screen readers
// live on, while real keys move through it.

#include "doubles/backend/ScriptedHttpServer.h"
#include "doubles/desktop/EventEars.h"
#include "doubles/desktop/PanelProgram.h"

#include <QJsonDocument>
#include <QTimer>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

const QString paragraph =
    u"A river carries silt from the mountains to the sea, and when it leaves its "
    "banks it slows down and the silt settles on the fields."_s;
const QString reply = "## Silt and *floods*\n\n" + paragraph +
                      "\n\n- one with a [link](https://a.example/x)\n- two\n\n"
                      "| Day | Rain |\n|---|---|\n| Mon | 3 |\n\n```\na = 1\nb = 2\n```\n\n"
                      "That is the **last** paragraph.";
const QString spoken = "Silt and floods\n" + paragraph +
                       "\n• one with a link\n• two\nDay, Rain\nMon, 3\na = 1\nb = 2\n"
                       "That is the last paragraph.";

// Asks for the reply with the panel on the screen. What answers is up to the test.
class ListeningTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { s_desktop = std::make_unique<PanelProgram>(); }
    static void TearDownTestSuite() { s_desktop.reset(); }

    ~ListeningTest() override { vorq.stop(); }

    void ask() {
        vorq.start(m_backend.url());
        session.key({"super+shift+a"});
        vorq.waitForPanel();
        m_tree = std::make_unique<AccessibleTree>(vorq.program().process());
        m_ears = std::make_unique<EventEars>(*m_tree);
        session.type("tell me");
        session.key({"Return"});
    }
    // The beginning of the reply, so that it is streamed.
    void begin(std::size_t connection, const QString& beginning) {
        m_backend.send(connection,
                       ScriptedHttpServer::head(200, "Content-Type: text/event-stream\r\n"
                                                     "Connection: close\r\n"));
        m_backend.send(connection, event({{"text", beginning}}));
    }
    void finish(std::size_t connection, const QString& whole) {
        m_backend.send(connection, event({{"text", whole}, {"done", true}, {"summary", whole}}));
        m_backend.close(connection);
    }
    static QByteArray event(const QJsonObject& object) {
        return "data: " + QJsonDocument(object).toJson(QJsonDocument::Compact) + "\n\n";
    }
    std::vector<std::string> heardOf(const QString& key) {
        m_ears->forget();
        session.key({key});
        return m_ears->heard();
    }
    // Each element below the last of a role, by its own role and what it is called or says.
    [[nodiscard]] std::vector<std::string> outline(const QString& role) const {
        const std::vector<AccessibleNode> nodes = m_tree->read();
        std::vector<std::string> lines;
        QStringList above;
        for (const AccessibleNode& node : nodes) {
            if (node.role == role) {
                above = {node.path};
                lines.clear();
            }
            if (!above.contains(node.parent)) continue;
            above += node.path;
            const QString said = node.name.isEmpty() ? m_tree->text(node) : node.name;
            lines.push_back((node.role + ": " + said).toStdString());
        }
        return lines;
    }
    [[nodiscard]] std::vector<std::string> focused() const {
        std::vector<std::string> lines;
        for (const AccessibleNode& node : m_tree->read())
            if (node.isFocused) lines.push_back((node.role + ": " + node.name).toStdString());
        return lines;
    }

    static inline std::unique_ptr<PanelProgram> s_desktop;
    PanelProgram& vorq = *s_desktop;
    DesktopSession& session = vorq.session;
    ScriptedHttpServer m_backend;
    std::unique_ptr<AccessibleTree> m_tree;
    std::unique_ptr<EventEars> m_ears;
};

class ScreenReaderTest : public ListeningTest {
  protected:
    ScreenReaderTest() {
        m_backend.onRequest([this](std::size_t connection) {
            begin(connection, reply.chopped(10));
            QTimer::singleShot(500, &m_backend, [this, connection] { finish(connection, reply); });
        });
        ask();
        static_cast<void>(vorq.waitForReply(3));
    }
};

TEST_F(ScreenReaderTest, TheWholeReplyIsAnnouncedOnce) {
    DesktopSession::waitUntil("the announcement", [&] { return m_ears->announced().size() > 1; });
    EXPECT_THAT(m_ears->announced(), ElementsAre("Working...", spoken.toStdString()));
}

TEST_F(ScreenReaderTest, TheConversationIsInOrderAndHoldsNothingHidden) {
    EXPECT_EQ(vorq.conversation(),
              (QStringList{u"Vorq: Hello 👋, Vorq here…"_s, "You: tell me", "Vorq: " + spoken}));
    std::vector<std::string> hidden;
    for (const AccessibleNode& node : m_tree->read())
        if (node.role == "label" && (node.name == "Working..." || node.name.isEmpty()))
            hidden.push_back((node.role + ": " + node.name).toStdString());
    EXPECT_THAT(hidden, IsEmpty());
}

TEST_F(ScreenReaderTest, AReplyIsMadeOfHeadingsListsTablesAndCode) {
    EXPECT_THAT(outline("document"),
                ElementsAre("heading: Silt and floods", "paragraph: " + paragraph.toStdString(),
                            "list: ", "list item: one with a link", "link: link", "list item: two",
                            "table: ", "column header: Day", "column header: Rain", "cell: Mon",
                            "cell: 3", "panel: Code", "paragraph: a = 1\nb = 2",
                            "paragraph: That is the last paragraph."));
    QRect above;
    for (const AccessibleNode& node : m_tree->read()) {
        if (node.role != "heading" && node.role != "paragraph" && node.role != "list item")
            continue;
        if (node.parent.isEmpty() || node.name.contains(": ")) continue;
        const QRect place = m_tree->place(node);
        EXPECT_GE(place.top(), above.bottom() - 1) << node.role.toStdString();
        EXPECT_TRUE(session.geometry(vorq.panel()).intersects(place));
        above = place;
    }
}

TEST_F(ScreenReaderTest, ArrowsReadTheReplyLineByLineAndCharacterByCharacter) {
    vorq.tabTo("Reply");
    EXPECT_THAT(heardOf("Down"),
                ElementsAre("focus heading: Silt and floods", "caret: Silt and floods"));
    std::vector<std::string> heard = heardOf("Down");
    ASSERT_THAT(heard,
                ElementsAre(StartsWith("focus paragraph: A river"), StartsWith("caret: A river")));
    // Line by line, each said as the caret comes to it.
    QStringList lines{QString::fromStdString(heard.back()).remove("caret: ")};
    for (heard = heardOf("Down"); heard.size() == 1; heard = heardOf("Down"))
        lines += QString::fromStdString(heard.front()).remove("caret: ");
    EXPECT_GT(lines.size(), 1);
    EXPECT_EQ(lines.join(' '), paragraph);
    EXPECT_THAT(heard, ElementsAre("focus list item: one with a link", StartsWith("caret: one")));
    EXPECT_THAT(heardOf("Up"), ElementsAre(StartsWith("focus paragraph: "),
                                           StartsWith("caret: " + lines.back().toStdString())));

    EXPECT_THAT(heardOf("Home"), ElementsAre(StartsWith("caret: A river")));
    const QString path = vorq.focused()->path;
    EXPECT_EQ(m_tree->characterAtCaret(path), "A");
    EXPECT_THAT(heardOf("Right"), ElementsAre(StartsWith("caret: A river")));
    EXPECT_EQ(m_tree->characterAtCaret(path), " ");
    EXPECT_THAT(heardOf("ctrl+Right"), ElementsAre(StartsWith("caret: A river")));
    EXPECT_THAT(heardOf("Right"), ElementsAre(StartsWith("caret: A river")));
    EXPECT_EQ(m_tree->characterAtCaret(path), "c") << "of \"carries\"";
}

TEST_F(ScreenReaderTest, OneElementHasTheKeyboard) {
    EXPECT_THAT(focused(), ElementsAre("text: Ask Vorq for help…"));
    session.key({"Tab"});
    DesktopSession::waitUntil("the next control", [&] {
        return focused() == std::vector<std::string>{"push button: Add files or notes"};
    });
    vorq.tabTo("Reply");
    EXPECT_THAT(focused(), ElementsAre("document: Reply"));
    static_cast<void>(heardOf("Down"));
    EXPECT_THAT(focused(), ElementsAre("heading: Silt and floods"));
}

TEST_F(ScreenReaderTest, AfterItsMenuTheReplyIsNotReadAgain) {
    vorq.tabTo("Reply");
    static_cast<void>(heardOf("Down"));
    static_cast<void>(heardOf("Down"));
    session.key({"Menu"});
    DesktopSession::waitUntil("the menu", [&] {
        const QByteArray shown =
            run("xdotool", "xdotool", {"search", "--onlyvisible", "--class", "vorq"},
                session.environment());
        return shown.count('\n') > 1;
    });
    m_ears->forget();
    session.key({"Escape"});
    DesktopSession::waitUntil("the keyboard back in the text",
                              [&] { return focused() == std::vector<std::string>{"paragraph: "}; });
    EXPECT_THAT(heardOf("Right"), testing::Contains(StartsWith("caret: A river")));
}

// The end of the reply comes while the user reads its beginning.
class GrowingReplyTest : public ListeningTest {
  protected:
    void askFor(const QString& beginning, const std::string& first) {
        m_backend.onRequest([this, beginning](std::size_t connection) {
            m_connection = connection;
            begin(connection, beginning);
        });
        ask();
        DesktopSession::waitUntil("the beginning of the reply", [&] {
            const std::vector<std::string> lines = outline("document");
            return !lines.empty() && lines.front() == first;
        });
    }
    void waitForItsEnd(const QString& whole, const std::string& last) {
        finish(m_connection, whole);
        DesktopSession::waitUntil("the end of the reply",
                                  [this, last] { return outline("document").back() == last; });
    }

    std::size_t m_connection = 0;
};

TEST_F(GrowingReplyTest, WhoeverReadsAParagraphIsStillInItWhenTheReplyHasGrown) {
    askFor(reply.chopped(10), "heading: Silt and floods");
    vorq.tabTo("Reply");
    static_cast<void>(heardOf("Down"));
    ASSERT_THAT(heardOf("Down"), testing::Contains(StartsWith("focus paragraph: A river")));
    static_cast<void>(heardOf("Right"));
    const QString path = vorq.focused()->path;
    waitForItsEnd(reply, "paragraph: That is the last paragraph.");
    ASSERT_THAT(focused(), ElementsAre("paragraph: "));
    EXPECT_EQ(m_tree->readOne(path).role, "paragraph") << "the element that the user is in";
    EXPECT_EQ(vorq.focused()->path, path);
    EXPECT_EQ(m_tree->characterAtCaret(path), " ") << "where the user had come to";
    EXPECT_THAT(heardOf("Right"), ElementsAre(StartsWith("caret: A river")));
}

TEST_F(GrowingReplyTest, WhoeverReadsAListIsStillInItWhenTheReplyHasGrown) {
    askFor(reply.chopped(10), "heading: Silt and floods");
    vorq.tabTo("Reply");
    for (std::vector<std::string> heard = heardOf("Down"); heard.front() != "focus list item: two";
         heard = heardOf("Down"))
        ASSERT_LT(heard.size(), 3U);
    const QString path = vorq.focused()->path;
    waitForItsEnd(reply, "paragraph: That is the last paragraph.");
    EXPECT_THAT(focused(), ElementsAre("list item: two"));
    EXPECT_EQ(vorq.focused()->path, path);
}

TEST_F(GrowingReplyTest, WhereTheKeyboardIsIsToldAnewIfWhatHadItIsNoMore) {
    askFor("Silt settles on the fields along the river.",
           "paragraph: Silt settles on the fields along the river.");
    vorq.tabTo("Reply");
    ASSERT_THAT(heardOf("Down"), testing::Contains(StartsWith("focus paragraph: Silt")));
    m_ears->forget();
    waitForItsEnd("- Silt settles on the fields along the river.\n- It renews the soil.",
                  "list item: It renews the soil.");
    EXPECT_THAT(m_ears->heard(),
                testing::Contains("focus list item: Silt settles on the fields along the river."));
}

} // namespace
} // namespace vorq::desktop
