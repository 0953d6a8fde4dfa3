#include "doubles/gateway/Samples.h"
#include "engine/embedded/FlashcardMaker.h"
#include "engine/embedded/QuizMaker.h"
#include "engine/embedded/ReplyDraft.h"
#include "support/Utf8.h"

#include <gtest/gtest.h>

#include <random>

namespace vorq::gateway::testing {
namespace {

bool isValidUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint c = decodeAt(text, i);
        if (c.value == kReplacement && c.length == 1) return false;
        i += c.length;
    }
    return true;
}

/// Everything the engine makes of a text; each part must be valid UTF-8.
void exercise(std::string_view raw) {
    const std::string text = sanitized(raw);
    EXPECT_TRUE(isValidUtf8(draftAnalysis(text).text()));
    PromptRequest request;
    request.prompt = text.empty() ? "x" : text;
    request.selectedText = text;
    EXPECT_TRUE(isValidUtf8(draftReply(request).text()));
    for (const Flashcard& card : makeFlashcards(text)) {
        EXPECT_TRUE(isValidUtf8(card.front) && isValidUtf8(card.back));
    }
    try {
        for (const QuizQuestion& question : makeQuiz({text, text}).questions) {
            EXPECT_TRUE(isValidUtf8(question.prompt) && isValidUtf8(question.explanation));
        }
    } catch (const EngineError& error) {
        EXPECT_EQ(error.status, 422);
    }
}

std::string repeated(std::string_view piece, std::size_t size) {
    std::string text;
    while (text.size() < size)
        text += piece;
    return text;
}

TEST(RobustnessTest, BrokenUtf8AndNuls) {
    exercise(std::string("\0\0\0", 3));
    exercise("\xFF\xFE\xC0\x80\xED\xA0\x80 word \xF5\x80\x80\x80");
    exercise("cut in the middle of \xE2\x82");
    exercise(std::string("a\0b. c\0d. Some more words here.", 31));
}

TEST(RobustnessTest, RandomBytes) {
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        std::string bytes(random() % 3000, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        exercise(bytes);
    }
}

TEST(RobustnessTest, RandomMixturesOfMarks) {
    const std::string_view marks = "ab .!?,:;-*_`[]()#>|\n\t\"'1A~";
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        std::string text(random() % 400, ' ');
        for (char& c : text)
            c = marks[random() % marks.size()];
        exercise(text);
    }
}

/// Shapes on which a careless splitter takes quadratic time: half a megabyte of each would not end
/// within the time limit of the whole program.
TEST(RobustnessTest, HostileShapesTakeLinearTime) {
    for (const char* piece :
         {"!)", ">",  "[",  "](",   "* ", "_",  "`",  ". ",           "a.",    "\n",
          "# ", "- ", "\"", "...x", "x ", "1.", "。", "\xE2\x80\xA8", "```\n", "e.g. "}) {
        const std::string text = repeated(piece, 500'000);
        EXPECT_TRUE(isValidUtf8(draftAnalysis(text).text())) << piece;
    }
}

TEST(RobustnessTest, APromptOfApostrophesTakesLinearTime) {
    for (const char* piece : {"a'", "l'", "'", "d’", "a-", "x "}) {
        PromptRequest request;
        request.prompt = repeated(piece, 160'000);
        EXPECT_FALSE(draftReply(request).text().empty()) << piece;
        request.selectedText = request.prompt;
        EXPECT_FALSE(draftReply(request).text().empty()) << piece;
    }
}

TEST(RobustnessTest, OneGiantWord) {
    exercise(std::string(1'000'000, 'x'));
    exercise(repeated("漢", 300'000));
    exercise(repeated("😀", 100'000));
}

TEST(RobustnessTest, AMegabyteOfProse) {
    const std::string text = repeated(kPlantText, 1'000'000);
    const ReplyDraft draft = draftAnalysis(text);
    EXPECT_LT(draft.text().size(), 6000U);
    EXPECT_GE(makeQuiz({text, "stomata"}).questions.size(), 4U);
    EXPECT_FALSE(makeFlashcards(text).empty());
}

} // namespace
} // namespace vorq::gateway::testing
