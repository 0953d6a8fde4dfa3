// The card of the writing tools beside selections of real applications: it comes without taking the
// keyboard, writes over the very selection, and takes that back.

#include "doubles/desktop/PanelProgram.h"

#include <gtest/gtest.h>

namespace vorq::desktop {
namespace {

QByteArray fieldOf(const QByteArray& text) {
    return "<!DOCTYPE html><meta charset=\"utf-8\"><title>Page</title><textarea autofocus>" + text +
           "</textarea>";
}

Application openChromiumField(DesktopSession& session, const QByteArray& text) {
    return openChromium(session, fieldOf(text), true);
}

Application openFirefoxField(DesktopSession& session, const QByteArray& text) {
    return openFirefox(session, fieldOf(text));
}

QByteArray pageOf(const QByteArray& text) {
    return "<!DOCTYPE html><meta charset=\"utf-8\"><title>Page</title><body contenteditable "
           "autofocus>" +
           text;
}

Application openFirefoxPage(DesktopSession& session, const QByteArray& text) {
    return openFirefox(session, pageOf(text));
}

Application openChromiumPage(DesktopSession& session, const QByteArray& text) {
    return openChromium(session, pageOf(text), true);
}

struct Editor {
    const char* name;
    Application (*open)(DesktopSession&, const QByteArray&);
};

void PrintTo(const Editor& editor, std::ostream* out) {
    *out << editor.name;
}

/// The built program with the preview of the writing tools open. The backend's own engine rewrites
/// by rule.
class WritingToolsTest : public testing::Test {
  protected:
    WritingToolsTest() {
        switchPreview(true);
        vorq.start();
        DesktopSession::waitUntil("the key of the writing tools", [&] {
            return vorq.program().output().contains("rewrite hotkey.");
        });
        session.own("clipboard", "as it was");
    }

    void switchPreview(bool isOn) const {
        run(VORQ_PROGRAM, "", {"preview", "writing", isOn ? "on" : "off"}, session.environment());
    }

    // "old" of it is selected.
    void open(const Editor& editor) {
        m_source = editor.open(session, "the old words");
        highlight(session, [&] { session.key({"ctrl+a"}); }, "the old words");
        selectOld();
    }
    void selectOld() const { selectThreeAfterThe("old"); }
    void selectThreeAfterThe(const QByteArray& expected) const {
        highlight(
            session,
            [&] {
                session.key({"ctrl+Home", "Right", "Right", "Right", "Right"});
                session.key({"shift+Right", "shift+Right", "shift+Right"});
            },
            expected);
    }

    void pressKey() const { session.key({"super+shift+w"}); }
    [[nodiscard]] DesktopSession::Window card() const { return vorq.windowTitled("Rewrite"); }
    void waitForCard() const {
        DesktopSession::waitUntil("the card", [&] { return card() != 0; });
    }
    void waitForNoCard() const {
        DesktopSession::waitUntil("the card to go", [&] { return card() == 0; });
    }
    void openCard() const {
        pressKey();
        waitForCard();
    }
    void giveItTheKeyboard() const {
        pressKey();
        DesktopSession::waitUntil("the card to have the keyboard",
                                  [&] { return session.activeWindow() == card(); });
        waitFor("the field", [](const AccessibleNode& node) {
            return node.isFocused && node.name == "Redo, refine, or say replace";
        });
    }
    template<typename Predicate>
    void waitFor(const QString& what, Predicate isIt) const {
        DesktopSession::waitUntil(what, [&] {
            for (const AccessibleNode& node : vorq.controls())
                if (node.isShowing && isIt(node)) return true;
            return false;
        });
    }
    void waitForWords(const QString& words) const {
        waitFor(words, [&](const AccessibleNode& node) { return node.name == words; });
    }
    void waitForSource() const {
        DesktopSession::waitUntil("the application",
                                  [&] { return session.activeWindow() == m_source.window; });
    }
    void ask(const QString& words, const QString& suggestion) const {
        session.type(words);
        session.key({"Return"});
        waitForWords(suggestion);
    }
    void expectDocument(const QByteArray& expected) const {
        waitForSource();
        highlight(session, [&] { session.key({"ctrl+a"}); }, expected);
    }
    void expectClipboard() const { EXPECT_EQ(session.selection("clipboard"), "as it was"); }

    // Of each test its own: editors keep the windows of one process, and which one is in front
    // then?
    PanelProgram vorq;
    DesktopSession& session = vorq.session;
    Application m_source;
};

class Rewriting : public WritingToolsTest, public testing::WithParamInterface<Editor> {};

TEST_P(Rewriting, LandsExactlyInThePlaceOfTheSelection) {
    open(GetParam());
    openCard();
    EXPECT_EQ(session.activeWindow(), m_source.window) << "the keyboard was taken";
    giveItTheKeyboard();
    ask("upper case", "OLD");
    ask("again", "Another version needs a language model, and none is connected to this gateway.");
    ask("title case", "Old");
    session.key({"Return"});
    waitForWords("Replaced");
    waitForSource();
    expectClipboard();
    expectDocument("the Old words");
    session.key({"ctrl+z"});
    expectDocument("the old words");
    expectClipboard();
}

TEST_P(Rewriting, IsTakenBackByUndo) {
    open(GetParam());
    openCard();
    giveItTheKeyboard();
    ask("upper case", "OLD");
    session.key({"Return"});
    waitForWords("Replaced");
    waitForSource();
    vorq.click("Undo");
    waitForWords("Replace");
    DesktopSession::waitUntil("the end of the undo", [&] {
        for (const AccessibleNode& node : vorq.controls())
            if (node.name == "Replace" && node.isEnabled) return true;
        return false;
    });
    EXPECT_EQ(session.activeWindow(), m_source.window) << "a press took the keyboard";
    expectDocument("the old words");
    expectClipboard();
}

INSTANTIATE_TEST_SUITE_P(
    Rewriting, Rewriting,
    testing::Values(Editor{"mousepad", openMousepad}, Editor{"texteditor", openTextEditor},
                    Editor{"qt6", openTextWindow}, Editor{"writer", openWriter},
                    Editor{"firefox", openFirefoxField}, Editor{"firefoxpage", openFirefoxPage},
                    Editor{"chromium", openChromiumField},
                    Editor{"chromiumpage", openChromiumPage}),
    testing::PrintToStringParamName());

class RewritingFormattedText : public WritingToolsTest {};

TEST_F(RewritingFormattedText, KeepsWhatIsBoldBoldAndAllElseAsItIs) {
    open({"writer", openWriter});
    session.key({"ctrl+b"});
    openCard();
    giveItTheKeyboard();
    ask("upper case", "OLD");
    session.key({"Return"});
    waitForWords("Replaced");
    expectClipboard();
    expectDocument("the OLD words");
    session.key({"ctrl+c"});
    DesktopSession::waitUntil("the formatted text", [&] {
        return session.selection("clipboard", "text/html").contains("the <b>OLD</b> words");
    });
    session.key({"ctrl+z"});
    expectDocument("the old words");
    session.key({"ctrl+c"});
    DesktopSession::waitUntil("the formatted original", [&] {
        return session.selection("clipboard", "text/html").contains("the <b>old</b> words");
    });
}

TEST_F(WritingToolsTest, EscapeGivesTheKeyboardBackWithTheSelectionStanding) {
    open({"mousepad", openMousepad});
    openCard();
    giveItTheKeyboard();
    session.type("colder");
    session.key({"Escape"});
    waitForNoCard();
    waitForSource();
    session.type("new");
    expectDocument("the new words");
}

TEST_F(WritingToolsTest, WhatIsTypedBesideItBelongsToTheApplication) {
    open({"mousepad", openMousepad});
    openCard();
    session.type("new");
    waitForNoCard(); // the selection is gone
    expectDocument("the new words");
}

TEST_F(WritingToolsTest, APressIntoTheFieldTakesTheKeyboardAndOneElsewhereClosesTheCard) {
    open({"mousepad", openMousepad});
    openCard();
    vorq.click("Redo, refine, or say replace");
    DesktopSession::waitUntil("the card to have the keyboard",
                              [&] { return session.activeWindow() == card(); });
    const QRect window = session.geometry(m_source.window);
    session.click(window.bottomRight() - QPoint(12, 12));
    waitForNoCard();
    waitForSource();
}

TEST_F(WritingToolsTest, ItGoesAlongWhenTheSelectionIsScrolled) {
    m_source = openMousepad(session, QByteArray("a line of words\n").repeated(200));
    highlight(
        session,
        [&] {
            session.key({"ctrl+Home", "Down", "Down", "Down", "Down", "Down", "Down", "Down"});
            session.key({"shift+End"});
        },
        "a line of words");
    openCard();
    const QRect before = session.geometry(card());
    const QRect window = session.geometry(m_source.window);
    session.scroll({window.right() - 60, window.top() + 120}, 1);
    DesktopSession::waitUntil("the card to go up",
                              [&] { return session.geometry(card()).top() < before.top(); });
    EXPECT_EQ(session.geometry(card()).left(), before.left());
    EXPECT_EQ(session.activeWindow(), m_source.window);
}

TEST_F(WritingToolsTest, TheCommandDoesWhatTheKeyDoes) {
    open({"mousepad", openMousepad});
    run(VORQ_PROGRAM, "", {"rewrite"}, session.environment());
    waitForCard();
    EXPECT_EQ(session.activeWindow(), m_source.window);
}

TEST_F(WritingToolsTest, AnotherApplicationInFrontClosesIt) {
    const Application other = openTextWindow(session, "other");
    open({"mousepad", openMousepad});
    openCard();
    session.activate(other.window);
    waitForNoCard();
}

TEST_F(WritingToolsTest, ThePanelTakesItsPlaceAndStillClosesByAPressElsewhere) {
    open({"mousepad", openMousepad});
    openCard();
    const DesktopSession::Window former = card();
    vorq.pressHotKey();
    DesktopSession::waitUntil("the panel alone", [&] {
        return vorq.panel() != 0 && vorq.panel() != former && !session.isShown(former);
    });
    vorq.waitForPanel();
    const QRect window = session.geometry(m_source.window);
    const QPoint beside = window.bottomRight() - QPoint(12, 12);
    ASSERT_FALSE(session.geometry(vorq.panel()).contains(beside));
    session.click(beside);
    vorq.waitForNoPanel();
}

TEST_F(WritingToolsTest, AnApplicationThatEndsTakesItAlong) {
    open({"mousepad", openMousepad});
    openCard();
    session.key({"alt+F4"});
    waitForNoCard();
}

TEST_F(WritingToolsTest, WhatDoesNotAnswerIsNotReplacedAndTheCardGoesOn) {
    open({"mousepad", openMousepad});
    openCard();
    giveItTheKeyboard();
    ask("upper case", "OLD");
    {
        const Stopped stopped(m_source.process);
        DesktopSession::waitUntil("the application to stop", [&] { return stopped.holds(); });
        session.key({"Return"});
        waitForWords("The application does not answer, so nothing was replaced. The suggestion is "
                     "on the clipboard.");
        EXPECT_EQ(session.selection("clipboard"), "OLD");
        EXPECT_TRUE(stopped.holds());
    }
    vorq.click("Close");
    waitForNoCard();
    session.activate(m_source.window);
    expectDocument("the old words");
}

TEST_F(WritingToolsTest, OverWhatDoesNotAnswerItComesAllTheSame) {
    open({"mousepad", openMousepad});
    {
        const Stopped stopped(m_source.process);
        DesktopSession::waitUntil("the application to stop", [&] { return stopped.holds(); });
        openCard();
        EXPECT_TRUE(stopped.holds());
        vorq.click("Close");
        waitForNoCard();
    }
    expectDocument("the old words");
}

TEST_F(WritingToolsTest, APasswordIsNotTaken) {
    open({"qt6", openTextWindow});
    session.key({"Tab", "ctrl+a"});
    openCard();
    waitForWords("Highlight the text that is to be rewritten, then try again.");
    expectClipboard();
}

TEST_F(WritingToolsTest, WithoutASelectionItSaysWhatToDo) {
    m_source = openMousepad(session, "the old words");
    session.key({"ctrl+Home"});
    openCard();
    waitForWords("Highlight the text that is to be rewritten, then try again.");
    EXPECT_EQ(session.activeWindow(), m_source.window);
}

TEST_F(WritingToolsTest, TheSwitchGivesTheKeyToTheApplicationAndTakesItBack) {
    open({"mousepad", openMousepad});
    openCard();
    switchPreview(false);
    waitForNoCard();
    pressKey();
    expectDocument("the W words");
    run(VORQ_PROGRAM, "", {"rewrite"}, session.environment());
    DesktopSession::waitUntil("the refusal", [&] {
        return vorq.program().output().contains("the writing tools are closed");
    });
    EXPECT_EQ(card(), 0U);
    switchPreview(true);
    DesktopSession::waitUntil("the key of the writing tools", [&] {
        return vorq.program().output().count("rewrite hotkey.") == 2;
    });
    selectThreeAfterThe("W w");
    openCard();
}

} // namespace
} // namespace vorq::desktop
