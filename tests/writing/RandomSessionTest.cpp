// Whatever the writer, the backend, the application and the clock do, in whatever order: nothing
// hangs, and no take that was shown is lost.

#include "doubles/writing/WritingFixture.h"

#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <random>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using Outcome = SelectionReplacer::Outcome;

constexpr unsigned sequences = 250;
constexpr int steps = 60;

class RandomSessionTest : public WritingFixture {
  protected:
    RandomSessionTest() {
        // It would tell of each replacement that fails.
        QLoggingCategory::setFilterRules(u"vorq.writing.info=false"_s);
        transport.onRequest([this](const ScriptedExchange& exchange) {
            if (exchange.path() == "/ai/prompt")
                m_open.push_back(exchange);
            else
                exchange.respond(500, "{}");
        });
    }

    ~RandomSessionTest() override { QLoggingCategory::setFilterRules({}); }

    // Runs one sequence and tells what of it was wrong.
    void run(unsigned seed) {
        m_random.seed(seed);
        m_steps.clear();
        m_shown.clear();
        m_open.clear();
        begin();
        for (int step = 0; step < steps; ++step) {
            doAnything();
            check();
            if (HasFailure()) break;
        }
        settleDown();
        EXPECT_FALSE(writing->isWorking()) << story(seed);
        EXPECT_FALSE(writing->isReplacing()) << story(seed);
        EXPECT_FALSE(writing->words().isLoadingWordAlts()) << story(seed);
        EXPECT_FALSE(writing->words().applyingWordAltID()) << story(seed);
        ASSERT_FALSE(HasFailure()) << story(seed);
    }

  private:
    [[nodiscard]] unsigned below(unsigned end) { return static_cast<unsigned>(m_random() % end); }
    [[nodiscard]] std::string story(unsigned seed) const {
        return "sequence " + std::to_string(seed) + ": " + m_steps.join(u' ').toStdString();
    }

    // What stands around the selection.
    static QString padded(const QString& text) { return "So: " + text + " The end."; }

    void begin() {
        selection.originalText =
            u"The big dog saw a cat and ran through some old gardens while the "
            "tall farmer slept under cold blankets."_s;
        selection.selectedRange = TextRange{.location = 4, .length = selection.originalText.size()};
        open();
        m_document = padded(selection.originalText);
        replacer.onReplaced = [this](const QString& replacement,
                                     const SelectionReplacer::Target& target) {
            m_document.replace(target.range->location, target.range->length, replacement);
        };
        QObject::connect(writing.get(), &WritingToolsModel::suggestionChanged, writing.get(),
                         [this] {
                             const QString shown = writing->suggestion();
                             if (!shown.isEmpty() && !m_shown.contains(shown)) m_shown += shown;
                         });
    }

    void doAnything() {
        static constexpr std::array writer{
            &RandomSessionTest::ask,    &RandomSessionTest::ask,     &RandomSessionTest::again,
            &RandomSessionTest::apply,  &RandomSessionTest::replace, &RandomSessionTest::undo,
            &RandomSessionTest::cancel, &RandomSessionTest::tab,     &RandomSessionTest::send,
            &RandomSessionTest::reopen, &RandomSessionTest::words,   &RandomSessionTest::word,
            &RandomSessionTest::word,   &RandomSessionTest::place,   &RandomSessionTest::forget,
        };
        static constexpr std::array backend{
            &RandomSessionTest::complete, &RandomSessionTest::complete, &RandomSessionTest::fail,
            &RandomSessionTest::drop,     &RandomSessionTest::land,
        };
        switch (below(5)) {
        case 0:
        case 1:
            (this->*writer[below(writer.size())])();
            break;
        case 2:
        case 3:
            (this->*backend[below(backend.size())])();
            break;
        default:
            m_steps += "wait";
            clock.advance(std::chrono::milliseconds(below(80)));
            break;
        }
        // Some things happen before the event loop turns.
        if (below(4) != 0) clock.settle();
    }

    void tell(const QString& words) {
        writing->setDraftPrompt(words);
        writing->submitPrompt();
    }
    void ask() {
        m_steps += "ask";
        tell("direction " + QString::number(++m_asks));
    }
    void again() {
        m_steps += "again";
        tell("again");
    }
    void apply() {
        m_steps += "apply";
        tell("yes");
    }
    void replace() {
        m_steps += "replace";
        replacer.waits = below(2) == 0;
        writing->replaceInApp();
    }
    void undo() {
        m_steps += "undo";
        writing->undoReplace();
    }
    void cancel() {
        m_steps += "cancel";
        writing->cancelRewrite();
    }
    void tab() {
        m_steps += "tab";
        writing->showOtherTake(below(2) == 0 ? 1 : -1);
    }
    void send() {
        m_steps += "send";
        tell("open vorq");
    }
    void reopen() {
        if (below(8) != 0 || writing->isReplacing()) return;
        m_steps += "reopen";
        m_shown.clear();
        begin();
    }

    void words() {
        m_steps += "words";
        writing->loadWordAlts();
    }
    void word() {
        const QList<WritingWordAlt> alts = writing->words().wordAlts();
        if (alts.isEmpty()) return;
        m_steps += "word";
        replacer.waits = below(2) == 0;
        const auto at = static_cast<qsizetype>(below(static_cast<unsigned>(alts.size())));
        const bool wasReplacing = writing->isReplacing();
        EXPECT_FALSE(writing->applyWordAlt(alts[at].id) && wasReplacing);
    }
    void place() {
        m_steps += "place";
        if (below(2) == 0) writing->noteReliablePlacement();
        writing->words().place({QRectF(1, 2, 3, 4), std::nullopt});
    }
    void forget() {
        if (below(4) != 0) return;
        m_steps += "forget";
        writing->forgetWordAlts();
    }

    [[nodiscard]] std::optional<ScriptedExchange> takeOpen() {
        if (m_open.empty()) return std::nullopt;
        const auto at = m_open.begin() + below(static_cast<unsigned>(m_open.size()));
        ScriptedExchange exchange = *at;
        m_open.erase(at);
        return exchange;
    }
    void complete() {
        const auto exchange = takeOpen();
        if (!exchange) return;
        m_steps += "complete";
        static const std::array answers{u""_s, u"The old sentence."_s, u"1. One — two"_s,
                                        u"```\nFenced.\n```"_s};
        const unsigned kind = below(8);
        const bool isOfWords = exchange->json()["prompt"].toString().contains("word alternatives");
        // What nobody waits for any more changes nothing.
        clock.settle();
        const bool isStale = exchange->isAbandoned();
        const QString shown = writing->suggestion();
        const bool wasWorking = writing->isWorking();
        const QString list =
            uR"([{"word":"big","alternative":"large"},{"word":"gardens","alternative":"parks"},
                 {"word":"cold","alternative":"chilly"},{"word":"tall","alternative":"lanky"}])"_s;
        exchange->respond(200, isOfWords
                                   ? analysis(below(3) == 0 ? u"[]"_s : list)
                                   : analysis(kind < answers.size()
                                                  ? answers[kind]
                                                  : "Take " + QString::number(++m_takes) + '.'));
        if (!isStale) return;
        clock.settle();
        EXPECT_EQ(writing->suggestion(), shown);
        EXPECT_EQ(writing->isWorking(), wasWorking);
    }
    void fail() {
        const auto exchange = takeOpen();
        if (!exchange) return;
        m_steps += "fail";
        exchange->respond(below(2) == 0 ? 500 : 200, "<html>");
    }
    void drop() {
        const auto exchange = takeOpen();
        if (!exchange) return;
        m_steps += "drop";
        exchange->fail("Gone.");
    }
    void land() {
        m_steps += "land";
        static constexpr std::array outcomes{Outcome::Replaced, Outcome::Replaced,
                                             Outcome::NotReplaced, Outcome::OnClipboard};
        replacer.outcome = outcomes[below(outcomes.size())];
        replacer.finish();
    }

    // What holds at every moment.
    void check() {
        EXPECT_FALSE(writing->isReplacing() && writing->canUndo());
        EXPECT_FALSE(writing->replaceFailed() && writing->isReplacing());
        EXPECT_LE(writing->takes().rejected().size(), TakeHistory::mostRejected);
        checkWords();
        EXPECT_LE(writing->log().interactions().size(), WritingSessionLog::mostInteractions);
        for (const QString& take : m_shown.last(std::min(m_shown.size(), TakeHistory::mostSeen)))
            EXPECT_TRUE(writing->takes().seen().contains(take)) << take.toStdString();
    }

    // The words stand where they are said to, in the session's text and in the document.
    void checkWords() {
        const WritingSelection& now = writing->selection();
        const bool isApplying = writing->words().applyingWordAltID().has_value();
        EXPECT_TRUE(!isApplying || writing->isReplacing());
        EXPECT_LE(writing->words().wordAlts().size(), 3);
        for (const WritingWordAlt& alt : writing->words().wordAlts()) {
            const auto [at, length] = *alt.utf16Range;
            EXPECT_EQ(now.originalText.mid(at, length), alt.original);
            if (writing->isReplacing()) continue; // the document is ahead, or about to be
            EXPECT_EQ(m_document.mid(now.selectedRange->location + at, length), alt.original);
        }
    }

    void settleDown() {
        m_steps += "end";
        for (int round = 0; round < 10; ++round) {
            clock.advance(1s);
            while (!m_open.empty())
                complete();
            replacer.finish();
            replacer.waits = false;
        }
    }

    std::minstd_rand m_random;
    std::vector<ScriptedExchange> m_open;
    QStringList m_shown;
    QString m_document;
    QStringList m_steps;
    int m_asks = 0;
    int m_takes = 0;
};

TEST_F(RandomSessionTest, NothingHangsAndNothingIsLost) {
    for (unsigned seed = 1; seed <= sequences && !HasFailure(); ++seed)
        run(seed);
}

} // namespace
} // namespace vorq
