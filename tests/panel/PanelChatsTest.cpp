// Conversations of the panel that are kept, brought back and exported.

#include "doubles/backend/Awaiting.h"
#include "doubles/library/LibraryFixture.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class PanelChatsTest : public LibraryFixture {
  protected:
    PanelChatsTest() { setMigrated(); }

    [[nodiscard]] PanelChats& chats() { return state().panelChats(); }
    [[nodiscard]] QString message() { return state().library().libraryMessage(); }

    // What an export gives, once it is done.
    [[nodiscard]] static bool wait(QCoro::Task<bool> task) {
        const Outcome outcome(std::move(task));
        return outcome.wait() && outcome.value();
    }
    // Saves, and waits until the answer stands.
    void save(const QString& text, bool fromHub, const std::function<QString()>& where,
              const QString& answer) {
        EXPECT_TRUE(chats().saveContentToNotes(text, fromHub));
        EXPECT_TRUE(turnUntil([&] { return where() == answer; })) << qPrintable(where());
    }
    [[nodiscard]] QString lastText() { return messages().empty() ? QString() : last().text; }

    void converse(const QString& prompt, const QString& answer) {
        submit(prompt);
        reply(exchange(), answer);
        advance(10s);
    }
};

TEST_F(PanelChatsTest, AKeptConversationIsWrittenAtTheTop) {
    store().save(std::vector{chat("older", 1)});
    converse("**Hello world**", "Hi.");
    state().library().setLibraryMessage("before");
    EXPECT_TRUE(chats().savePanelChatToHistory());
    EXPECT_EQ(message(), "");
    const std::vector<SavedChat>& kept = state().library().savedChats().records();
    ASSERT_THAT(kept, SizeIs(2));
    EXPECT_EQ(kept.front().title, "Hello world");
    EXPECT_EQ(kept.front().createdAt, dateOf(m_clock.wallTime()));
    EXPECT_EQ(kept.front().messages.back().text, "Hi.");
    EXPECT_EQ(store().loadChats(), kept);
}

TEST_F(PanelChatsTest, NothingButAGreetingIsNotKept) {
    panel().ensurePanelGreeting();
    advance(5s);
    EXPECT_FALSE(chats().savePanelChatToHistory());
    EXPECT_EQ(message(), "Nothing to save yet — start a chat first.");
    EXPECT_EQ(contentOf("saved-chats.json"), QByteArray());
}

TEST_F(PanelChatsTest, AKeptConversationComesBackInPlaceOfTheRunningOne) {
    SavedChat kept = chat("Plan", 0);
    for (const auto& [role, text] :
         {std::pair("user", " ask "), {"assistant", "reply\n"}, {"system", "odd"}, {"user", " \n"}})
        kept.messages.push_back({QUuid::createUuid(), role, text});
    store().save(std::vector{kept});

    submit("Explain");
    submit("And then?");
    const ScriptedExchange running = exchange();
    QStringList told;
    QObject::connect(&panel(), &PanelConversation::vorqShowPanel, &panel(),
                     [&told] { told += "show"; });
    QObject::connect(&panel(), &PanelConversation::vorqFocusPrompt, &panel(),
                     [&told] { told += "focus"; });
    chats().loadPanelChatFromHistory(kept.id);
    m_clock.settle();
    EXPECT_TRUE(running.isAbandoned());
    EXPECT_THAT(texts(), ElementsAre("ask", "reply", "odd"));
    EXPECT_EQ(messages()[1].role, MessageRole::Assistant);
    EXPECT_EQ(messages()[2].role, MessageRole::User);
    EXPECT_NE(messages()[0].id, kept.messages[0].id);
    EXPECT_EQ(panel().queuedTurns(), 0U);
    EXPECT_FALSE(panel().isPanelTurnInFlight());
    EXPECT_TRUE(panel().isRestoringPanelHistory());
    EXPECT_THAT(told, ElementsAre("show", "focus"));
    advance(10s);
    EXPECT_THAT(messages(), SizeIs(3)) << "nothing of the former turn comes after";
    EXPECT_EQ(status(), VorqWorkStatus::Working);
}

TEST_F(PanelChatsTest, WhatTheProgramSaidIsNoReplyAfterTheConversationCameBack) {
    converse("Explain", "They flow.");
    m_notesApplication.refusal = "The notes are locked.";
    submit("save notes");
    EXPECT_TRUE(turnUntil([this] { return last().text == "The notes are locked."; }));
    submit("save chat");
    m_notesApplication.refusal.reset();
    restart();
    chats().loadPanelChatFromHistory(state().library().savedChats().records().front().id);
    submit("save notes");
    EXPECT_TRUE(turnUntil([this] { return last().text == "Saved to Notes."; }));
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("They flow.", "They flow.")));
}

TEST_F(PanelChatsTest, AnUnknownConversationChangesNothing) {
    converse("Explain", "Hi.");
    chats().loadPanelChatFromHistory(QUuid::createUuid());
    EXPECT_THAT(texts(), ElementsAre("Explain", "Hi."));
    EXPECT_FALSE(panel().isRestoringPanelHistory());
}

TEST_F(PanelChatsTest, TheLatestFinishedReplyIsExported) {
    converse("First", "# Rivers\ncarry silt");
    submit("Second");
    EXPECT_TRUE(wait(chats().exportCurrentChatToAppleNotes()));
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("# Rivers", "# Rivers\ncarry silt")));
    EXPECT_EQ(message(), "");
}

TEST_F(PanelChatsTest, WhatTheProgramSaysItselfIsNotExported) {
    converse("Explain", "They flow.");
    submit("save chat");
    EXPECT_TRUE(wait(chats().exportCurrentChatToAppleNotes()));
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("They flow.", "They flow.")));
}

TEST_F(PanelChatsTest, WithoutAReplyAllThatIsSettledIsExported) {
    submit("First");
    submit(" Second ");
    EXPECT_TRUE(wait(chats().exportCurrentChatToAppleNotes()));
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("First", "First\n\nSecond")));
}

TEST_F(PanelChatsTest, AnEmptyPanelExportsNothing) {
    EXPECT_FALSE(wait(chats().exportCurrentChatToAppleNotes()));
    EXPECT_EQ(message(), "Nothing to save yet — start a chat first.");
    EXPECT_THAT(m_notesApplication.notes, IsEmpty());
}

TEST_F(PanelChatsTest, AnExportSaysWhatCameOfIt) {
    EXPECT_TRUE(wait(chats().exportChatTextToAppleNotes(" text ", "Done.")));
    EXPECT_EQ(message(), "Done.");
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("text", "text")));
    m_notesApplication.refusal = "Not allowed.";
    EXPECT_FALSE(wait(chats().exportChatTextToAppleNotes("text")));
    EXPECT_EQ(message(), "Not allowed.");
}

TEST_F(PanelChatsTest, ASaveFromThePanelIsAnsweredThere) {
    EXPECT_FALSE(chats().saveContentToNotes(" ", false));
    EXPECT_EQ(last().text, "Nothing to save yet — ask me something first.");
    const auto panelSays = [this] { return lastText(); };
    save("text", false, panelSays, "Saved to Notes.");
    m_notesApplication.refusal = "Not allowed.";
    save("text", false, panelSays, "Not allowed.");
    m_notesApplication.refusal = "";
    save("text", false, panelSays, "Couldn’t save to Notes.");
    EXPECT_EQ(last().followUp, std::nullopt);
}

TEST_F(PanelChatsTest, ASaveFromTheHubIsAnsweredInItsActiveChat) {
    QStringList replies;
    chats().setHubReply([&replies](const QString& reply) { replies += reply; });
    // Without an active chat it goes to the line.
    save("text", true, [this] { return message(); }, "Saved to Notes.");
    EXPECT_THAT(replies, IsEmpty());
    state().hub().setActiveHubAIChatID(QUuid::createUuid());
    save("text", true, [&] { return replies.join(u'|'); }, "Saved to Notes.");
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(PanelChatsTest, ANotesApplicationThatHangsKeepsNobodyWaiting) {
    m_notesApplication.isHanging = true;
    converse("Explain", "They flow.");
    submit("save research");
    submit("And then?");
    EXPECT_EQ(exchange().json().value("prompt").toString(), "And then?");
    EXPECT_FALSE(texts().contains("Saved to Notes.")) << "it still hangs";
    m_notesApplication.release();
    EXPECT_TRUE(turnUntil([this] { return texts().contains("Saved to Notes."); }));
}

TEST_F(PanelChatsTest, ASaveThatIsDoneInTheNextChatIsNotSaidThereUnlessItFailed) {
    for (const bool fails : {false, true}) {
        m_notesApplication.isHanging = true;
        if (fails) m_notesApplication.refusal = "The notes are full.";
        converse("Explain", "They flow.");
        submit("save research");
        m_clock.settle();
        panel().clearPanelChat();
        advance(5s);
        m_notesApplication.release();
        m_clock.settle();
        advance(5s);
        EXPECT_FALSE(texts().contains("Saved to Notes."));
        EXPECT_EQ(texts().contains("The notes are full."), fails);
    }
    EXPECT_THAT(m_notesApplication.notes, SizeIs(1));
}

TEST_F(PanelChatsTest, WhatIsOnItsWayToTheNotesIsNotStoppedThoughTheStateGoes) {
    m_notesApplication.isHanging = true;
    converse("Explain", "They flow.");
    submit("save research");
    m_tester.reset();
    m_state.reset();
    m_notesApplication.release();
    m_clock.settle();
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("They flow.", "They flow.")));
}

} // namespace
} // namespace vorq
