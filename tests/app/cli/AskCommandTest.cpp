// One turn in a terminal, over a scripted backend in virtual time.

#include "app/cli/AskCommand.h"
#include "doubles/capture/ScriptedAttachmentReader.h"
#include "doubles/panel/ConversationFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

class AskCommandTest : public ConversationFixture {
  protected:
    struct Outcome {
        std::optional<int> status;
        std::string out;
        std::string err;
    };

    // Runs the command, the script meanwhile, and gives what came of it.
    Outcome ask(const AskCommand::Question& question, const std::function<void()>& script) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Outcome outcome;
        {
            Terminal terminal;
            AskCommand command(state(), terminal);
            QObject::connect(&command, &AskCommand::finished,
                             [&outcome](int status) { outcome.status = status; });
            m_command = &command;
            command.start(question);
            m_clock.settle();
            script();
            m_clock.settle();
        }
        outcome.out = testing::internal::GetCapturedStdout();
        outcome.err = testing::internal::GetCapturedStderr();
        return outcome;
    }

    AskCommand* m_command = nullptr;
};

TEST_F(AskCommandTest, PrintsTheReplyAsPlainMarkdown) {
    const Outcome outcome = ask({"Why?", {}, " piped \n", {}}, [this] {
        EXPECT_EQ(exchange().json()["prompt"], "Why?");
        EXPECT_EQ(exchange().json()["selectedText"], "piped");
        exchange().begin();
        sendText(exchange(), "# Plan\n* one\n* two\n\nMore");
        sendDone(exchange(), "# Plan\n* one\n* two\n\nMore of it.");
    });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "**Plan**\n\n- one\n- two\n\nMore of it.\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(AskCommandTest, APromptOfTheTerminalIsNeverACommandOfThePanel) {
    for (const QString prompt : {"save chat", "open notes", "quiz me on rivers"}) {
        const Outcome outcome = ask({prompt, {}, {}, {}}, [&, this] {
            EXPECT_EQ(exchange().json()["prompt"], prompt);
            reply(exchange(), "Short.");
        });
        EXPECT_EQ(outcome.out, "Short.\n");
        restart();
    }
    EXPECT_FALSE(state().isLibraryLoaded());
}

TEST_F(AskCommandTest, PrintsABlockAsSoonAsItIsCommitted) {
    std::string before;
    const Outcome outcome = ask({"Why?", {}, {}, {}}, [&, this] {
        exchange().begin();
        sendText(exchange(), "A first paragraph");
        sendText(exchange(), "A first paragraph.\n\nA second");
        before = testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        sendDone(exchange(), "A first paragraph.\n\nA second one.");
    });
    EXPECT_EQ(before, "A first paragraph.");
    EXPECT_EQ(outcome.out, "\n\nA second one.\n");
}

TEST_F(AskCommandTest, DoesNotWaitForTheRevealOfALongReply) {
    const Outcome outcome =
        ask({"Why?", {}, {}, {}}, [this] { reply(exchange(), threeParagraphs); });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, threeParagraphs.toStdString() + "\n");
}

TEST_F(AskCommandTest, PipedTextAloneIsAnalysed) {
    const Outcome outcome = ask({{}, {}, "the text", {}}, [this] {
        EXPECT_EQ(exchange().path(), "/ai/analyze");
        EXPECT_EQ(exchange().json()["text"], "the text");
        reply(exchange(), "Analysed.");
    });
    EXPECT_EQ(outcome.out, "Analysed.\n");
}

TEST_F(AskCommandTest, WithNothingToAskItSaysSo) {
    const Outcome outcome = ask({" ", {}, "\n", {}}, [] {});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.err.find("nothing to ask"), std::string::npos);
    EXPECT_EQ(m_transport.count(), 0u);
}

TEST_F(AskCommandTest, SendsAttachmentsAndTheModelNamed) {
    PromptAttachment notes;
    notes.fileName = "notes.txt";
    notes.textContent = "the notes";
    const Outcome outcome = ask({"Why?", "local/model", {}, {notes}}, [this] {
        EXPECT_EQ(exchange().json()["selectedText"], "--- Attached file: notes.txt ---\nthe notes");
        EXPECT_EQ(exchange().json()["preferredModel"], "local/model");
        reply(exchange(), "Read.");
    });
    EXPECT_EQ(outcome.out, "Read.\n");
}

TEST_F(AskCommandTest, AFileThatCannotBeReadIsNamed) {
    ScriptedAttachmentReader reader;
    reader.answer = [](const QString& path) {
        return std::unexpected(path + u": No such file or directory"_s);
    };
    const auto question = AskCommand::read({"Why?", {"/nowhere/x.txt", "b.txt"}, {}}, reader);
    ASSERT_FALSE(question);
    EXPECT_EQ(question.error().exitStatus, 1);
    EXPECT_TRUE(question.error().sentence.contains("/nowhere/x.txt"));
    EXPECT_EQ(reader.readings().size(), 1u);
}

TEST_F(AskCommandTest, SaysWhichPicturesAreNotSent) {
    const auto picture = [](const QString& name) {
        PromptAttachment attachment;
        attachment.fileName = name;
        attachment.imageDataURL = u"data:image/png;base64,"_s + name;
        return attachment;
    };
    PromptAttachment text;
    text.fileName = "b.txt";
    text.textContent = "Rivers flow.";
    const Outcome outcome =
        ask({"Why?", {}, {}, {picture("a.png"), text, picture("c.png"), picture("d.png")}}, [this] {
            EXPECT_EQ(exchange().json()["screenDataUrl"], "data:image/png;base64,a.png");
            exchange().begin();
            sendDone(exchange(), "So.");
        });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "c.png is not sent: one picture goes along with a prompt.\n"
                           "d.png is not sent: one picture goes along with a prompt.\n");
}

TEST_F(AskCommandTest, AnErrorGoesToStandardErrorAlone) {
    const Outcome outcome =
        ask({"Why?", {}, {}, {}}, [this] { refuse(exchange(), 503, "{\"error\":\"Busy.\"}"); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "Busy.\n");
}

TEST_F(AskCommandTest, AnErrorHalfWayEndsTheLineOfWhatWasPrinted) {
    const Outcome outcome = ask({"Why?", {}, {}, {}}, [this] {
        exchange().begin();
        sendText(exchange(), "A first paragraph.\n\nA second");
        exchange().fail("The connection was reset.");
    });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "A first paragraph.\n");
    EXPECT_EQ(outcome.err, "The connection was reset.\n");
}

TEST_F(AskCommandTest, ARefusedTokenSaysHowToSignIn) {
    const Outcome outcome = ask({"Why?", {}, {}, {}}, [this] { refuse(exchange(), 401); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "Your session expired. Sign in again.\n"
                           "To sign in on this computer: vorq open \"$(vorq-gateway handoff)\"\n");
}

TEST_F(AskCommandTest, WhoNeverSignedInIsToldSoAndHowTo) {
    state().account().signOut();
    const Outcome outcome = ask({"Why?", {}, {}, {}}, [] {});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "You are not signed in.\n"
                           "To sign in on this computer: vorq open \"$(vorq-gateway handoff)\"\n");
}

TEST_F(AskCommandTest, StopEndsAtOnceAndPrintsNothingMore) {
    const Outcome outcome = ask({"Why?", {}, {}, {}}, [this] {
        exchange().begin();
        sendText(exchange(), "A first paragraph.\n\nA second");
        m_command->stop(130);
        m_clock.settle();
        EXPECT_TRUE(exchange().isAbandoned());
        advance(10s);
    });
    EXPECT_EQ(outcome.status, 130);
    EXPECT_EQ(outcome.out, "A first paragraph.\n");
    EXPECT_EQ(outcome.err, "");
}

} // namespace
} // namespace vorq
