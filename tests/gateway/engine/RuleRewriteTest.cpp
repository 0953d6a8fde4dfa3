#include "engine/embedded/rewriting/RuleRewrite.h"
#include "engine/embedded/ReplyDraft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>

namespace vorq::gateway::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

/// As the client wraps the writer's words.
std::string wrapped(const std::string& ask, const std::string& current = "") {
    return "Writing tools — writer rewrite pass.\nYou help writers.\nWriter ask: " + ask + "\n" +
           (current.empty() ? ""
                            : "Version the writer is looking at — apply the direction to this "
                              "one:\n" +
                                  current + "\n") +
           "Session interactions (use these to assist better — honor rejected takes, prior asks, "
           "and the current selection):\n[10:00:00] writer asked: " +
           ask +
           "\nReturn ONE drop-in replacement for the selection only (ready to paste over it).";
}

/// The rewrite, or what is said instead.
std::string rewrite(const std::string& ask, const std::string& selection,
                    const std::string& current = "") {
    const std::string prompt = wrapped(ask, current);
    const auto read = readRewritePrompt(prompt);
    if (!read) return "(no prompt of the writing tools)";
    const auto rewritten = rewrittenByRule(*read, selection);
    return rewritten ? *rewritten : "(" + std::string(rewritten.error()) + ")";
}

void expectDeclined(const std::string& ask, const std::string& selection = "A long text. Indeed.") {
    EXPECT_THAT(rewrite(ask, selection), HasSubstr("language model")) << ask;
}

TEST(RuleRewriteTest, TheWritersWordsAreReadOutOfThePrompt) {
    const std::string prompt = wrapped("make it\nshorter", "On show.\n\nTwo paragraphs.");
    const auto read = readRewritePrompt(prompt);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->ask, "make it\nshorter");
    EXPECT_EQ(read->current, "On show.\n\nTwo paragraphs.");
    EXPECT_FALSE(read->isAnotherTake);
    EXPECT_FALSE(readRewritePrompt("Rewrite this: Writing tools — x"));
}

TEST(RuleRewriteTest, AnAskIsARuleOnlyIfItSaysNoMore) {
    EXPECT_EQ(ruleOf("Shorter!"), RewriteRule::Shorten);
    EXPECT_EQ(ruleOf("please make it a bit shorter"), RewriteRule::Shorten);
    EXPECT_EQ(ruleOf("Fix this."), RewriteRule::Repair);
    EXPECT_EQ(ruleOf("turn this into a bullet list"), RewriteRule::ToBullets);
    EXPECT_EQ(ruleOf("back to sentences"), RewriteRule::ToSentences);
    EXPECT_EQ(ruleOf("ALL CAPS"), RewriteRule::UpperCase);
    EXPECT_EQ(ruleOf("in title-case"), RewriteRule::TitleCase);
    for (const char* ask : {"shorter and warmer", "fix the grammar", "list three ideas",
                            "one word shorter", "translate", "", "it"})
        EXPECT_EQ(ruleOf(ask), std::nullopt) << ask;
}

TEST(RuleRewriteTest, AnythingElseIsDeclinedInOneSentence) {
    for (const char* ask : {"make it warmer", "translate to French", "fix grammar and spelling"})
        expectDeclined(ask);
    const auto another = readRewritePrompt(
        "Writing tools — the writer rejected your version and wants a different one.\nRewrite the "
        "ORIGINAL selection again.\nStill honor the writer's earlier direction: shorter");
    ASSERT_TRUE(another);
    EXPECT_THAT(std::string(rewrittenByRule(*another, "Text.").error()),
                HasSubstr("Another version needs a language model"));
}

TEST(RuleRewriteTest, OtherWordsAreDeclinedInOneSentence) {
    const auto words = readRewritePrompt(
        "Writing tools — word alternatives.\nPick single words of the selected text.");
    ASSERT_TRUE(words);
    EXPECT_TRUE(words->asksForWords);
    EXPECT_EQ(rewrittenByRule(*words, "A big dog saw a cat.").error(),
              "Other words need a language model, and none is connected to this gateway.");
}

TEST(RuleRewriteTest, WhatARuleDoesNotChangeIsNoRewrite) {
    expectDeclined("shorter", "Rivers carry silt.");
    expectDeclined("fix", "Rivers carry silt.");
    expectDeclined("upper case", "SILT");
    expectDeclined("bullet list", "- one\n- two");
    expectDeclined("shorter", "");
    expectDeclined("bullet list", " \n");
}

TEST(RuleRewriteTest, WhatIsLongerThanRulesTakeIsDeclinedInOneSentence) {
    const std::string longest(kLongestRewrite, 'a');
    EXPECT_EQ(rewrite("upper case", longest), std::string(kLongestRewrite, 'A'));
    EXPECT_THAT(rewrite("upper case", longest + "a"), HasSubstr("256 KB"));
    EXPECT_THAT(rewrite("upper case", "selection", longest + "a"), HasSubstr("256 KB"));
    EXPECT_EQ(rewrite("upper case", longest + "a", "on show"), "ON SHOW");
    EXPECT_EQ(rewrite("warmer", longest + "a"), "(" + std::string(kNoWriting) + ")");
    PromptRequest request;
    request.prompt = wrapped("upper case");
    request.selectedText = longest + "a";
    request.whole = true;
    EXPECT_THROW(static_cast<void>(draftReply(request)), EngineError);
}

TEST(RuleRewriteTest, TheVersionOnShowIsWhatIsChanged) {
    EXPECT_EQ(rewrite("upper case", "selection", "on show"), "ON SHOW");
}

TEST(RuleRewriteTest, ShorterDropsAsides) {
    EXPECT_EQ(rewrite("shorter", "The river (which is long) floods the fields."),
              "The river floods the fields.");
    EXPECT_EQ(rewrite("shorter", "The river — long and slow — floods the fields."),
              "The river floods the fields.");
    EXPECT_EQ(rewrite("shorter", "The river (as they say (and we know)), floods."),
              "The river, floods.");
}

TEST(RuleRewriteTest, ShorterKeepsWhatIsNoAside) {
    for (const char* text :
         {"The WHO (WHO) met in Geneva.", "Each item(s) of (a) and (b) counts (2019).",
          "It (never ends.", "One — two. Three — four.", "(Whole sentences stay.)"})
        expectDeclined("shorter", text);
}

TEST(RuleRewriteTest, ShorterKeepsRangesListsNumeralsAndConditions) {
    for (const char* text : {"Open Mon – Fri 9 – 17.", "From 9 – 12 and 14 – 16.",
                             "London – Paris – Rome.", "We (i) plan, (ii) build, (iii) test.",
                             "Then if (x > y) return.", "One — two words — three — four."})
        expectDeclined("shorter", text);
}

TEST(RuleRewriteTest, ShorterKeepsAddressesAndCode) {
    EXPECT_EQ(
        rewrite("shorter", "It is very late: `so very  late (x y)` at https://a.org/very?q=(a b)."),
        "It is late: `so very  late (x y)` at https://a.org/very?q=(a b).");
}

TEST(RuleRewriteTest, ShorterSaysTheSame) {
    EXPECT_EQ(rewrite("shorter", "The majority of the people agree."), "Most of the people agree.");
    EXPECT_EQ(rewrite("shorter", "The majority of people agree."), "Most people agree.");
}

TEST(RuleRewriteTest, ShorterDropsFiller) {
    EXPECT_EQ(rewrite("shorter", "It is really very important in order to win."),
              "It is important to win.");
    EXPECT_EQ(rewrite("shorter", "Basically, we lost. Actually, we did it due to the fact that we "
                                 "slept."),
              "We lost. We did it because we slept.");
    EXPECT_EQ(rewrite("shorter", "It was, actually, good."), "It was good.");
    EXPECT_EQ(rewrite("shorter", "Really good ideas win."), "Good ideas win.");
    EXPECT_EQ(rewrite("shorter", "It is important to note that rivers flood."), "Rivers flood.");
}

TEST(RuleRewriteTest, ShorterKeepsFillerThatMeansSomething) {
    for (const char* text :
         {"It is not very good.", "The very idea.", "Not really.", "There were quite a few.",
          "He came just in time.", "A very old house.", "This is a just cause.",
          "It was a just war.", "A just society.", "The derivative with respect to x."})
        expectDeclined("shorter", text);
}

TEST(RuleRewriteTest, ShorterKnowsOtherLanguages) {
    EXPECT_EQ(rewrite("kürzer", "Die Flüsse sind wirklich lang und führen sehr viel Wasser zum "
                                "Meer. Eigentlich ist das bekannt."),
              "Die Flüsse sind lang und führen sehr viel Wasser zum Meer. Eigentlich ist das "
              "bekannt.");
    EXPECT_EQ(rewrite("plus court", "Les rivières sont vraiment longues et elles vont vers la mer "
                                    "afin de nourrir les champs."),
              "Les rivières sont longues et elles vont vers la mer pour nourrir les champs.");
}

TEST(RuleRewriteTest, FixPutsSpacingRight) {
    EXPECT_EQ(rewrite("fix", "Rivers  carry silt , and  floods ( every year ) come ."),
              "Rivers carry silt, and floods (every year) come.");
    EXPECT_EQ(rewrite("fix", "one,two;three"), "one, two; three");
    EXPECT_EQ(rewrite("fix", "  - item  one \n  - item two"), "- item one\n  - item two");
}

TEST(RuleRewriteTest, FixKeepsWhatIsMeantLikeThat) {
    for (const char* text :
         {"See https://example.org/a,b?c=d now.", "It costs 1,000.50 at 10:30.",
          "Fine :) or .NET maybe.", "He had had enough.", "iPhones are here. Others too.",
          "See https://example.org/s?q=a,b;c now.", "Write to a,b@example.org, then.",
          "It is R&D, or a &amp;b.", "Take `a ,b  c` and N,N-dimethyl.", "The can can hold it.",
          "Please log in in the app.", "Will will come.", "Acme Corp. has grown.",
          "About approx. ten.", "It was (i) good.", "That is :( sad.", "An \xee\x80\x80 sign."})
        expectDeclined("fix", text);
    expectDeclined("fix", "Vraiment ? Les rivières sont longues et elles vont vers la mer !");
}

TEST(RuleRewriteTest, FixDropsDoubledWords) {
    EXPECT_EQ(rewrite("fix", "The the river flows to  to the sea."), "The river flows to the sea.");
}

TEST(RuleRewriteTest, FixSetsCapitals) {
    EXPECT_EQ(rewrite("fix", "rivers carry silt. it is i who say so, and i'm right."),
              "Rivers carry silt. It is I who say so, and I'm right.");
    // What ends no sentence may be part of one.
    EXPECT_EQ(rewrite("fix", "and then  we left"), "and then we left");
    EXPECT_EQ(rewrite("fix", "and then  we left."), "and then we left.");
    EXPECT_EQ(rewrite("fix", "see  https://example.org/a,b. then go."),
              "See https://example.org/a,b. Then go.");
}

TEST(RuleRewriteTest, FixMakesQuotesOfOneKind) {
    EXPECT_EQ(rewrite("fix", "He said “yes” and \"no\", and that’s it, isn't it."),
              "He said “yes” and “no”, and that’s it, isn’t it.");
    EXPECT_EQ(rewrite("fix", "“Yes”, and then—\"no\"."), "“Yes”, and then—“no”.");
}

TEST(RuleRewriteTest, FixLeavesCodeAlone) {
    EXPECT_EQ(rewrite("fix", "two  words\n```\na  =  b ;\n```\nthe the end"),
              "two words\n```\na  =  b ;\n```\nthe end");
}

TEST(RuleRewriteTest, SentencesBecomeBulletsAndBack) {
    const std::string list = "- Rivers carry silt.\n- Dr. Smith measured it.\n- Floods follow!";
    EXPECT_EQ(rewrite("bullet list", "Rivers carry silt. Dr. Smith measured it. Floods follow!"),
              list);
    EXPECT_EQ(rewrite("sentences", list),
              "Rivers carry silt. Dr. Smith measured it. Floods follow!");
    EXPECT_EQ(rewrite("sentences", "We need:\n1. bread;\n2. milk\n\nThat is all."),
              "We need: Bread. Milk.\n\nThat is all.");
    EXPECT_EQ(rewrite("one paragraph", "One.\n\nTwo."), "One. Two.");
}

TEST(RuleRewriteTest, AWrappedLineIsNoBulletOfItsOwn) {
    EXPECT_EQ(rewrite("bullets", "Rivers carry\nsilt. Floods\nfollow."),
              "- Rivers carry silt.\n- Floods follow.");
    EXPECT_EQ(rewrite("one paragraph", "Der Feiertag ist am\n3. Oktober 2024."),
              "Der Feiertag ist am 3. Oktober 2024.");
    EXPECT_EQ(rewrite("bullets", "The year was\n12. It ended."), "- The year was 12.\n- It ended.");
    EXPECT_EQ(rewrite("sentences", "We need\n1. bread\n2. milk"), "We need Bread. Milk.");
}

TEST(RuleRewriteTest, CasesChange) {
    EXPECT_EQ(rewrite("upper case", "Größe, été"), "GRÖSSE, ÉTÉ");
    EXPECT_EQ(rewrite("lower case", "THE Été"), "the été");
    EXPECT_EQ(rewrite("upper case", "życie, žena, și, tiếng, λόγος"),
              "ŻYCIE, ŽENA, ȘI, TIẾNG, ΛΌΓΟΣ");
    EXPECT_EQ(rewrite("lower case", "ŻYCIE, TIẾNG, ΛΌΓΟΣ"), "życie, tiếng, λόγος");
    EXPECT_EQ(rewrite("title case", "élan über žena"), "Élan Über Žena");
    EXPECT_EQ(rewrite("title case", "the lord of the rings, by NASA"),
              "The Lord of the Rings, by NASA");
    EXPECT_EQ(rewrite("sentence case", "RIVERS CARRY SILT. AND I KNOW IT."),
              "Rivers carry silt. And I know it.");
}

TEST(RuleRewriteTest, CasesOfTitlesAndSentencesKeepAddressesAndCode) {
    EXPECT_EQ(rewrite("title case", "visit https://example.org/foo, run `make all`"),
              "Visit https://example.org/foo, Run `make all`");
    EXPECT_EQ(rewrite("sentence case", "SEE https://example.org/Foo. RUN `make ALL`, ASK R&D."),
              "See https://example.org/Foo. Run `make ALL`, ask R&D.");
}

TEST(RuleRewriteTest, ADeclinedRewriteIsAnErrorForWhoeverTakesItWhole) {
    PromptRequest request;
    request.prompt = wrapped("warmer");
    request.selectedText = "Rivers carry silt.";
    EXPECT_THAT(draftReply(request).text(), HasSubstr("language model"));
    request.whole = true;
    try {
        static_cast<void>(draftReply(request));
        FAIL() << "it answered";
    } catch (const EngineError& error) {
        EXPECT_EQ(error.status, 422);
    }
    request.prompt = wrapped("upper case");
    EXPECT_EQ(draftReply(request).text(), "RIVERS CARRY SILT.");
    EXPECT_THAT(draftReply(request).pieces, SizeIs(1));
}

// Quadratic work would take minutes.
TEST(RuleRewriteTest, HostileTextsAreReadInTime) {
    const auto repeated = [](std::string_view text, int times) {
        std::string result;
        for (int i = 0; i < times; ++i)
            result += text;
        return result;
    };
    for (const char* ask :
         {"shorter", "fix", "bullets", "sentences", "title case", "upper case", "sentence case"}) {
        for (const std::string& text :
             {repeated(" (", 60'000), repeated("the ", 40'000), repeated(" — a", 30'000),
              repeated("\"'", 60'000), repeated("a.b,", 40'000), repeated("- \n", 40'000),
              std::string("\xff\xfe(\xc3"), repeated("```", 40'000), repeated("(", 100'000),
              repeated("`", 100'000), repeated("` `` ``` ", 10'000), repeated("a&", 60'000)}) {
            const auto begin = std::clock();
            EXPECT_FALSE(rewrite(ask, text).empty());
            EXPECT_LT(std::clock() - begin, 20 * CLOCKS_PER_SEC) << ask;
        }
    }
    EXPECT_EQ(ruleOf(repeated("please ", 40'000) + "shorter"), std::nullopt);
}

} // namespace
} // namespace vorq::gateway::testing
