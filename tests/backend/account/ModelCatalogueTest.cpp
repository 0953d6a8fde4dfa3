#include "backend/account/ModelCatalogue.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

TEST(ModelCatalogue, HoldsItsSixRowsInOrder) {
    QString ids;
    for (const VorqAIModelOption& option : VorqAIModelOption::all)
        ids += option.id.toString() + u'|' + option.title.toString() + u'|' +
               option.subtitle.toString() + u'\n';
    EXPECT_EQ(ids, u"|Auto|Best model for each request\n"
                   "openai/o3-mini|o3-mini|Everyday work and reasoning\n"
                   "perplexity/sonar-reasoning-pro|Sonar Reasoning Pro|Current research with "
                   "sources\n"
                   "anthropic/claude-sonnet-latest|Claude Sonnet|Natural writing and editing\n"
                   "google/gemini-flash-latest|Gemini Flash|Long readings and fast research\n"
                   "deepseek/deepseek-chat|DeepSeek|Everyday questions and chat\n");
}

TEST(ModelCatalogue, KnowsItsIds) {
    EXPECT_TRUE(VorqAIModelOption::contains(u""));
    EXPECT_TRUE(VorqAIModelOption::contains(u"openai/o3-mini"));
    EXPECT_FALSE(VorqAIModelOption::contains(u"openai"));
}

TEST(ModelCatalogue, PrefersAModelByUse) {
    EXPECT_EQ(VorqAIModelOption::preferredID(" Student"), u"openai/o3-mini");
    EXPECT_EQ(VorqAIModelOption::preferredID("WRITER\n"), u"anthropic/claude-sonnet-latest");
    EXPECT_EQ(VorqAIModelOption::preferredID("other"), u"");
}

TEST(ModelFromSession, TheUsersChoiceStands) {
    EXPECT_EQ(modelFromSession(true, "", "openai/o3-mini", "writer"), u"");
}

TEST(ModelFromSession, AKnownModelIsTaken) {
    EXPECT_EQ(modelFromSession(false, "x", " openai/o3-mini ", "writer"), u"openai/o3-mini");
    EXPECT_EQ(modelFromSession(false, "x", " ", "writer"), u"");
}

TEST(ModelFromSession, AnUnknownModelLeavesItToTheUse) {
    EXPECT_EQ(modelFromSession(false, "x", "unknown", "Writer "),
              u"anthropic/claude-sonnet-latest");
    EXPECT_EQ(modelFromSession(false, "x", std::nullopt, "other"), u"");
}

TEST(ModelFromSession, WithoutEitherTheModelStays) {
    EXPECT_EQ(modelFromSession(false, "x", std::nullopt, std::nullopt), u"x");
    EXPECT_EQ(modelFromSession(false, "x", "unknown", ""), u"x");
}

} // namespace
} // namespace vorq
