// Whatever the user, the backend and the clock do, in whatever order: nothing hangs, and no reply
// that has come in whole is lost.

#include "backend/api/Session.h"
#include "doubles/backend/Awaiting.h"
#include "doubles/library/LibraryFixture.h"

#include <algorithm>
#include <random>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr unsigned sequences = 150;
constexpr int steps = 40;

// A request of a turn that the test still answers.
struct OpenTurn {
    ScriptedExchange exchange;
    QString reply;
    bool hasBegun = false;
};

class RandomTurnsTest : public LibraryFixture {
  protected:
    RandomTurnsTest() {
        setMigrated();
        m_capture.selections[7] = "captured text";
        m_transport.onRequest([this](const ScriptedExchange& exchange) { meet(exchange); });
    }

    // Runs one sequence and tells what of it was wrong.
    void run(unsigned seed) {
        m_random.seed(seed);
        m_open.clear();
        m_whole.clear();
        m_steps.clear();
        store().save(std::vector<SavedNote>());
        keepNote("Rivers", "Rivers carry silt.");
        store().save(std::vector{chat("kept", 3)});
        restart();
        signIn();
        for (int step = 0; step < steps; ++step)
            doAnything();
        settleDown();
        const std::string story =
            "sequence " + std::to_string(seed) + ": " + m_steps.join(u' ').toStdString();
        for (const VorqMessage& message : messages()) {
            EXPECT_FALSE(message.isTyping) << story << "\nat: " << qPrintable(message.text);
            EXPECT_FALSE(message.isWorking) << story << "\nat: " << qPrintable(message.text);
            EXPECT_EQ(message.typingFullText, std::nullopt) << story;
        }
        EXPECT_FALSE(panel().isPanelResponding()) << story;
        EXPECT_EQ(panel().queuedTurns(), 0U) << story;
        EXPECT_EQ(status(), VorqWorkStatus::Working) << story;
        for (const auto& [id, reply] : m_whole) {
            const VorqMessage* message = panel().messages().find(id);
            EXPECT_EQ(message ? message->text.toStdString() : "nothing", reply.toStdString())
                << story;
        }
    }

  private:
    [[nodiscard]] unsigned below(unsigned end) { return static_cast<unsigned>(m_random() % end); }

    void meet(const ScriptedExchange& exchange) {
        if (!exchange.path().startsWith("/ai/")) {
            // The session's own requests: refreshed once in a while, else refused.
            if (exchange.path() == "/auth/refresh" && below(2) == 0)
                exchange.respond(200, json({{"signedIn", true},
                                            {"token", QString::number(++m_tokens)},
                                            {"refreshToken", "next"},
                                            {"email", "a@b.c"}}));
            else
                exchange.respond(401, "{}");
            return;
        }
        m_open.push_back({exchange, newReply()});
    }

    [[nodiscard]] QString newReply() {
        const QString number = QString::number(++m_replies);
        switch (below(4)) {
        case 0:
            return "Short " + number;
        case 1:
            return "Long " + number + QString(160, u'x');
        case 2:
            return "# Plan " + number + "\n- one\n- two\n\nAnd so on.";
        default:
            return "First " + number + "\n\n" + threeParagraphs;
        }
    }

    void signIn() {
        state().account().applySession({.signedIn = true,
                                        .email = "a@b.c",
                                        .token = QString::number(++m_tokens),
                                        .refreshToken = below(2) ? "refresh" : "",
                                        .firstName = {},
                                        .lastName = {},
                                        .username = {},
                                        .useCase = {},
                                        .preferredModel = {},
                                        .needsEmailConfirmation = {},
                                        .message = {}});
    }

    void doAnything() {
        static constexpr std::array user{
            &RandomTurnsTest::ask,           &RandomTurnsTest::ask,   &RandomTurnsTest::deepen,
            &RandomTurnsTest::pressHotKey,   &RandomTurnsTest::stop,  &RandomTurnsTest::giveCommand,
            &RandomTurnsTest::makeCards,     &RandomTurnsTest::clear, &RandomTurnsTest::recall,
            &RandomTurnsTest::toggleSession, &RandomTurnsTest::retry, &RandomTurnsTest::pressHotKey,
        };
        static constexpr std::array backend{
            &RandomTurnsTest::stream,   &RandomTurnsTest::stream, &RandomTurnsTest::complete,
            &RandomTurnsTest::complete, &RandomTurnsTest::fail,   &RandomTurnsTest::refuseTurn,
        };
        switch (below(5)) {
        case 0:
        case 1:
            (this->*user[below(user.size())])();
            break;
        case 2:
        case 3:
            if (!m_open.empty()) (this->*backend[below(backend.size())])();
            break;
        default:
            wait();
            break;
        }
        // Some things happen before the event loop turns.
        if (below(4) != 0) m_clock.settle();
    }

    void ask() {
        m_steps += "ask";
        panel().submit("Question " + QString::number(++m_prompts));
    }
    void deepen() {
        m_steps += "deepen";
        panel().deepenSelection("excerpt", below(2) ? "why?" : "");
    }
    void pressHotKey() {
        m_steps += "hotkey";
        m_hotKey.restart([this](std::stop_token stopToken) {
            return state().hotKeyContext().submitHotKeyContext(7, std::nullopt,
                                                               std::move(stopToken));
        });
        m_clock.settle();
    }
    void stop() {
        m_steps += "stop";
        // A reply that does not show yet is given up with the turn.
        std::erase_if(m_whole, [this](const auto& entry) {
            const VorqMessage* message = panel().messages().find(entry.first);
            return message && message->isWorking;
        });
        panel().stopPanelResponse();
    }
    void giveCommand() {
        static const QStringList commands{"save chat", "open library", "open notes", "save notes"};
        const QString& command = commands[below(static_cast<unsigned>(commands.size()))];
        m_steps += command;
        m_clock.settle();
        panel().submit(command);
        // The notes application answers from a thread of its own.
        if (command == "save notes") EXPECT_TRUE(turnUntil([this] { return isAnswered(); }));
    }
    // Whether the program has said something to the latest prompt.
    [[nodiscard]] bool isAnswered() {
        const auto prompt = std::ranges::find(messages().rbegin(), messages().rend(),
                                              MessageRole::User, &VorqMessage::role);
        return std::ranges::any_of(messages().rbegin(), prompt, &VorqMessage::isNotice);
    }
    void makeCards() {
        m_steps += "cards";
        panel().submit("make flashcards");
    }
    void clear() {
        m_steps += "clear";
        m_whole.clear();
        panel().clearPanelChat();
    }
    void recall() {
        m_steps += "recall";
        m_whole.clear();
        const auto& kept = state().library().savedChats().records();
        state().panelChats().loadPanelChatFromHistory(
            kept[below(static_cast<unsigned>(kept.size()))].id);
    }
    void toggleSession() {
        m_steps += "session";
        if (state().account().signedIn())
            state().account().signOut();
        else
            signIn();
    }
    void retry() {
        m_steps += "retry";
        std::vector<QUuid> failed;
        for (const VorqMessage& message : messages())
            if (message.canRetry) failed.push_back(message.id);
        if (!failed.empty()) panel().retry(failed[below(static_cast<unsigned>(failed.size()))]);
    }
    void wait() {
        static constexpr std::array spans{1ms, 40ms, 130ms, 219ms, 650ms, 3000ms, 61'000ms};
        const auto span = spans[below(spans.size())];
        m_steps += QString::number(span.count());
        m_clock.advance(span);
    }

    [[nodiscard]] OpenTurn& anyOpen() {
        return m_open[below(static_cast<unsigned>(m_open.size()))];
    }
    void forget(const OpenTurn& turn) { m_open.erase(m_open.begin() + (&turn - m_open.data())); }

    void begin(OpenTurn& turn) {
        if (!std::exchange(turn.hasBegun, true)) turn.exchange.begin();
    }
    void stream() {
        m_steps += "stream";
        OpenTurn& turn = anyOpen();
        if (turn.exchange.path() == "/ai/flashcards") return;
        begin(turn);
        const unsigned size = 1 + below(static_cast<unsigned>(turn.reply.size()));
        turn.exchange.send("data: " + json({{"text", turn.reply.left(size)}}) + "\n\n");
    }
    void complete() {
        OpenTurn& turn = anyOpen();
        m_steps += turn.exchange.isAbandoned() ? "late" : "complete";
        if (turn.exchange.path() == "/ai/flashcards") {
            const QVariantMap card{{"front", "Q"}, {"back", "A"}};
            const QVariantList cards(static_cast<qsizetype>(below(3)), card);
            turn.exchange.respond(200, json({{"flashcards", cards}}));
        } else {
            begin(turn);
            turn.exchange.send("data: " + json({{"done", true}, {"summary", turn.reply}}) + "\n\n");
        }
        const QString reply = turn.reply;
        forget(turn);
        m_clock.settle();
        for (const VorqMessage& message : messages())
            if (message.text == reply || message.typingFullText == reply)
                m_whole.insert_or_assign(message.id, reply);
    }
    void fail() {
        m_steps += "fail";
        OpenTurn& turn = anyOpen();
        turn.exchange.fail("gone");
        forget(turn);
    }
    void refuseTurn() {
        m_steps += "refuse";
        OpenTurn& turn = anyOpen();
        if (!turn.hasBegun)
            turn.exchange.respond(below(2) ? 401 : 500, "{}");
        else
            turn.exchange.end();
        forget(turn);
    }

    // The backend falls silent; whatever still runs or waits comes to its end by itself.
    void settleDown() {
        m_clock.settle();
        for (int turn = 0; turn < 2 * steps && panel().isPanelResponding(); ++turn)
            m_clock.advance(95s);
        m_clock.advance(20s);
    }

    std::mt19937 m_random;
    std::vector<OpenTurn> m_open;
    std::map<QUuid, QString> m_whole; // replies that came in whole, by their message
    QStringList m_steps;
    TaskSlot m_hotKey;
    int m_prompts = 0;
    int m_replies = 0;
    int m_tokens = 0;
};

TEST_F(RandomTurnsTest, NothingHangsAndNoWholeReplyIsLost) {
    for (unsigned seed = 1; seed <= sequences && !HasFailure(); ++seed)
        run(seed);
}

} // namespace
} // namespace vorq
