// The menus of the panel's texts, which are windows of their own, used by the mouse.

#include "doubles/desktop/PanelProgram.h"

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

// Deepen, Copy, Copy reply, Select All, in three parts.
constexpr double deepenOfReply = 0.12;
constexpr double copyOfReply = 0.38;
// Copy, Copy message.
constexpr double copyOfMessage = 0.25;

class TextMenuTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { s_desktop = std::make_unique<PanelProgram>(); }
    static void TearDownTestSuite() { s_desktop.reset(); }

    TextMenuTest() {
        const Application source = openTextWindow(session, material.toUtf8());
        vorq.start();
        session.activate(source.window);
        highlight(session, [&] { session.key({"ctrl+Home", "ctrl+a"}); }, material.toUtf8());
        vorq.pressHotKey();
        vorq.waitForPanel();
        EXPECT_THAT(vorq.waitForReply(3), testing::SizeIs(3));
        session.own("clipboard", "as it was");
    }
    ~TextMenuTest() override { vorq.stop(); }

    // The latest reply, and where the word begins in its text.
    [[nodiscard]] AccessibleNode reply() const {
        AccessibleNode latest;
        for (const AccessibleNode& node : vorq.controls())
            if (node.role == "document" && node.isShowing && vorq.textOf(node).contains('\n'))
                latest = node;
        return latest;
    }
    [[nodiscard]] QPoint placeOf(const AccessibleNode& text, const QString& word) const {
        const qsizetype at = vorq.textOf(text).indexOf(word);
        EXPECT_GE(at, 0) << vorq.textOf(text).toStdString();
        return vorq.tree().placeOfCharacter(text, at + 1).center();
    }

    // The window manager knows nothing of menus.
    [[nodiscard]] QRect menu() const {
        const QByteArray shown =
            run("xdotool", "xdotool", {"search", "--onlyvisible", "--class", "vorq"},
                session.environment());
        for (const QByteArray& id : shown.split('\n'))
            if (id.toUInt() > 0 && id.toUInt() != vorq.panel())
                return session.geometry(id.toUInt());
        return {};
    }
    QRect openMenu(QPoint at) const {
        session.rightClick(at);
        DesktopSession::waitUntil("the menu", [&] { return menu().height() > 20; });
        return menu();
    }
    // An entry by where it stands, as a part of the height.
    void choose(QPoint at, double entry) const {
        const QRect place = openMenu(at);
        session.click({place.center().x(), place.top() + static_cast<int>(entry * place.height())});
        DesktopSession::waitUntil("the menu to go", [&] { return menu().isEmpty(); });
    }
    [[nodiscard]] QString clipboard() const {
        return QString::fromUtf8(session.selection("clipboard"));
    }
    void waitForClipboard(const QString& text) const {
        try {
            DesktopSession::waitUntil("the copy", [&] { return clipboard() == text; });
        } catch (const std::runtime_error&) {
            EXPECT_EQ(clipboard().toStdString(), text.toStdString());
        }
    }

    static inline std::unique_ptr<PanelProgram> s_desktop;
    PanelProgram& vorq = *s_desktop;
    DesktopSession& session = vorq.session;
};

TEST_F(TextMenuTest, CopyAndDeepenAreAboutWhatIsSelectedInTheReply) {
    const QPoint word = placeOf(reply(), "silt");
    session.click(word, 2);
    choose(word, copyOfReply);
    waitForClipboard("silt");

    choose(word, deepenOfReply);
    DesktopSession::waitUntil("the clip", [&] {
        for (const AccessibleNode& node : vorq.controls())
            if (node.isShowing && node.name == "Remove silt") return true;
        return false;
    });
}

TEST_F(TextMenuTest, AScreenReaderThatWalksTheProgramFindsTheMenuWhileItIsOpen) {
    const auto entries = [&] {
        std::vector<std::string> names;
        for (const AccessibleNode& node : vorq.controls())
            if (node.role == "menu item") names.push_back(node.name.toStdString());
        return names;
    };
    EXPECT_THAT(entries(), testing::IsEmpty());
    const QPoint word = placeOf(reply(), "silt");
    openMenu(word);
    EXPECT_THAT(entries(), testing::ElementsAre("Deepen", "Copy", "Copy reply", "Select All"));
    session.key({"Escape"});
    DesktopSession::waitUntil("the menu to go", [&] { return menu().isEmpty(); });
    EXPECT_THAT(entries(), testing::IsEmpty());
}

TEST_F(TextMenuTest, APressBesideTheMenuClosesItAndDropsTheSelection) {
    const QPoint word = placeOf(reply(), "silt");
    session.click(word, 2);
    openMenu(word);
    const QRect panel = session.geometry(vorq.panel());
    session.click({panel.left() + 4, word.y()});
    DesktopSession::waitUntil("the menu to go", [&] { return menu().isEmpty(); });
    DesktopSession::waitUntil("the pill to go", [&] {
        for (const AccessibleNode& node : vorq.controls())
            if (node.isShowing && node.name == "Deepen the selected text") return false;
        return true;
    });
}

TEST_F(TextMenuTest, CopyIsAboutWhatIsSelectedInTheUsersOwnMessage) {
    session.type("one two three");
    session.key({"Return"});
    EXPECT_THAT(vorq.waitForReply(5), testing::SizeIs(5));
    // The words stand over the fold with what went out beside them, and begin with it.
    QRect bubble;
    QRect fold;
    // The list still glides to what came below it.
    DesktopSession::waitUntil("the message to stand still", [&] {
        const QRect before = fold;
        fold = {};
        for (const AccessibleNode& node : vorq.controls()) {
            const QRect place = vorq.tree().place(node);
            if (node.name.startsWith("You: one two three")) bubble = place;
            if (node.name == "Show the text that was sent" && bubble.contains(place)) fold = place;
        }
        return !fold.isEmpty() && fold == before;
    });
    const QPoint word(fold.left() + 12, bubble.top() + 20); // in "one"
    ASSERT_TRUE(session.geometry(vorq.panel()).contains(word)) << word.y();
    session.click(word, 2);
    choose(word, copyOfMessage);
    waitForClipboard("one");
}

} // namespace
} // namespace vorq::desktop
