// Prompts that the program carries out by itself.

#include "doubles/backend/Awaiting.h"
#include "doubles/library/LibraryFixture.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PanelCommandsTest : public LibraryFixture {
  protected:
    PanelCommandsTest() { setMigrated(); }
};

TEST_F(PanelCommandsTest, SavingTheChatIsAnsweredAndNeverSent) {
    submit("Explain");
    reply(exchange(), "Short.");
    submit("Save this chat!");
    EXPECT_THAT(texts(), ElementsAre("Explain", "Short.", "Save this chat!", "Saved to History."));
    EXPECT_EQ(last().role, MessageRole::Assistant);
    EXPECT_FALSE(last().isTyping);
    EXPECT_EQ(last().followUp, std::nullopt);
    EXPECT_EQ(m_transport.count(), 1U);
    ASSERT_THAT(store().loadChats(), SizeIs(1));
    EXPECT_THAT(store().loadChats().front().messages, SizeIs(2)) << "without the command";
}

TEST_F(PanelCommandsTest, ThereMustBeSomethingToSave) {
    for (const QString command : {"save", "SAVE!", "save chat"}) {
        restart();
        submit(command);
        EXPECT_EQ(last().text, "Nothing to save yet — start a chat first.");
    }
    EXPECT_EQ(m_transport.count(), 0U);
}

TEST_F(PanelCommandsTest, ASaveWithAFileIsStillASave) {
    PromptAttachment file;
    file.fileName = "plan.txt";
    file.textContent = "plan";
    panel().submit("save chat", {file});
    EXPECT_THAT(texts(), ElementsAre("save chat\n\n📎 plan.txt",
                                     "Nothing to save yet — start a chat first."));
    EXPECT_EQ(m_transport.count(), 0U);
}

TEST_F(PanelCommandsTest, TheLibraryIsArchived) {
    for (const QString command : {"open the library", "open library card catalogue"}) {
        submit(command);
        EXPECT_EQ(last().text, "Hub is archived. Use ⌘⇧A for Vorq.");
    }
    EXPECT_FALSE(state().isLibraryLoaded());
    EXPECT_EQ(m_transport.count(), 0U);
}

TEST_F(PanelCommandsTest, ALongAnswerWaitsForItsPause) {
    submit("open notes");
    EXPECT_EQ(last().text, "No notes yet. Highlight text in a browser and press ⌘⇧S to save one.")
        << "a short one is there at once";
    submit("Explain");
    reply(exchange(), "Short.");
    const QString longReason = QString(80, u'a') + "\n\n" + QString(80, u'b');
    m_notesApplication.refusal = longReason;
    submit("save research");
    EXPECT_TRUE(turnUntil([this] { return last().isTyping; })) << "the notes application answers";
    EXPECT_EQ(last().text, "");
    advance(159ms);
    EXPECT_EQ(last().text, "");
    advance(1ms);
    EXPECT_EQ(last().text, QString(80, u'a'));
    advance(120ms);
    EXPECT_EQ(last().text, longReason);
    EXPECT_FALSE(last().isTyping);
}

TEST_F(PanelCommandsTest, NotesAreLoadedAndStudied) {
    const SavedNote note = keepNote("Rivers carry silt.");
    submit("show my note about rivers");
    EXPECT_EQ(state().study().activeStudyNoteID(), note.id);
    EXPECT_EQ(m_transport.count(), 0U);
    submit("quiz me on rivers");
    EXPECT_EQ(exchange().path(), "/ai/flashcards");
}

TEST_F(PanelCommandsTest, ACommandInTheMidstOfATurnIsAnsweredAtOnce) {
    submit("Explain");
    submit("open the library");
    EXPECT_THAT(texts(), ElementsAre("Explain", "Working...", "open the library",
                                     "Hub is archived. Use ⌘⇧A for Vorq."));
    reply(exchange(), "Short.");
    advance(10s);
    EXPECT_EQ(texts()[1], "Short.");
    EXPECT_FALSE(panel().isPanelTurnInFlight());
}

TEST_F(PanelCommandsTest, WhatIsNoCommandGoesOut) {
    for (const QString prompt : {"save my chat about notes", "what should I save", "notes",
                                 "get notes", "...", "save chats"}) {
        const std::size_t before = m_transport.count();
        submit(prompt);
        ASSERT_EQ(m_transport.count(), before + 1) << qPrintable(prompt);
        EXPECT_EQ(exchange().json()["prompt"], prompt);
        reply(exchange(), "Short.");
        advance(10s);
    }
}

TEST_F(PanelCommandsTest, ACallerThatIsNoPanelHasNoCommands) {
    panel().submitToBackend("save chat");
    m_clock.settle();
    ASSERT_EQ(m_transport.count(), 1U);
    EXPECT_EQ(exchange().json()["prompt"], "save chat");
    EXPECT_EQ(contentOf("saved-chats.json"), QByteArray());
}

} // namespace
} // namespace vorq
