// What an input method or a keyboard composes, in the draft of the panel.

#include "doubles/desktop/PanelPresenceFixture.h"

namespace vorq::desktop {
namespace {

class ComposingTest : public PanelPresenceTest {
  protected:
    ~ComposingTest() override {
        run("setxkbmap", "x11-xkb-utils", {"-layout", "us", "-option", ""}, session.environment());
    }

    static QProcessEnvironment inputMethod(const QString& name) {
        QProcessEnvironment environment;
        environment.insert("QT_IM_MODULE", name);
        return environment;
    }

    // With an engine that composes letters, and gives their capitals at Enter.
    void startIbus() {
        DesktopProgram& ibus = session.start(
            "ibus-daemon", "ibus",
            {"--panel=disable", "--emoji-extension=disable", "--config=disable", "--verbose"});
        m_started.push_back(&ibus);
        DesktopSession::waitUntil("ibus", [&] {
            DesktopProgram& command = session.start("ibus", "ibus", {"address"});
            DesktopSession::waitUntil("its address", [&] { return !command.isRunning(); });
            return command.output().contains("unix:");
        });
        // Debian's own Python, for which ibus brings its bindings.
        DesktopProgram& engine =
            session.start("/usr/bin/python3", "python3-ibus-1.0", {VORQ_COMPOSING_ENGINE});
        m_started.push_back(&engine);
        try {
            DesktopSession::waitUntil("the engine",
                                      [&] { return engine.output().contains("engine\n"); });
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(error.what() +
                                     ("; it says: " + engine.output()).toStdString());
        }
    }

    // The toolkit takes a moment to find ibus; until then a letter is there at once.
    void waitUntilComposed() const {
        DesktopSession::waitUntil("letters to be composed", [&] {
            session.key({"a"});
            letSettle(400);
            const bool isComposed = draft().isEmpty();
            session.key({isComposed ? "Escape" : "BackSpace"});
            letSettle(200);
            return isComposed;
        });
        ASSERT_NE(vorq.panel(), 0U);
    }

    [[nodiscard]] std::size_t sentSince() const { return vorq.prompts().size() - m_before; }

    void waitForDraft(const QString& text) const {
        try {
            DesktopSession::waitUntil("the draft", [&] { return draft() == text; });
        } catch (const std::runtime_error&) {
            EXPECT_EQ(draft().toStdString(), text.toStdString());
        }
    }

  private:
    const std::size_t m_before = vorq.prompts().size();
};

TEST_F(ComposingTest, EnterGivesWhatIbusComposesToTheDraftAndSendsNothing) {
    startIbus();
    vorq.start({}, inputMethod("ibus"));
    openPanel();
    waitUntilComposed();
    session.type("silt");
    letSettle();
    EXPECT_EQ(draft(), "") << "composed, and not there yet";
    session.key({"Return"});
    waitForDraft("SILT");
    letSettle();
    EXPECT_EQ(sentSince(), 0U);

    session.key({"Return"});
    DesktopSession::waitUntil("the prompt", [&] { return sentSince() == 1; });
    EXPECT_EQ(vorq.prompts().back().value("prompt").toString(), "SILT");
    waitForDraft("");
}

TEST_F(ComposingTest, EscapeGivesUpWhatIbusComposesAndLeavesThePanelUp) {
    startIbus();
    vorq.start({}, inputMethod("ibus"));
    openPanel();
    waitUntilComposed();
    session.type("silt");
    letSettle();
    session.key({"Escape"});
    expectStays("Escape belonged to the input method");
    session.type("x");
    session.key({"Return"});
    waitForDraft("X");
}

TEST_F(ComposingTest, DeadKeysAndComposeReachTheDraft) {
    run("setxkbmap", "x11-xkb-utils",
        {"-layout", "us", "-variant", "intl", "-option", "compose:ralt"}, session.environment());
    vorq.start({}, inputMethod("compose"));
    openPanel();
    session.type("x"); // the draft has the keyboard then
    waitForDraft("x");
    session.key({"48", "e"}); // the key of the apostrophe, which is dead
    waitForDraft("xé");
    session.key({"Multi_key", "o", "e"});
    waitForDraft("xéœ");
    EXPECT_EQ(sentSince(), 0U);
}

} // namespace
} // namespace vorq::desktop
