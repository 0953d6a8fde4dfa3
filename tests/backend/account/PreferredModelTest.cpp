#include "backend/api/Session.h"
#include "doubles/backend/AccountFixture.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

class PreferredModelTest : public AccountFixture {
  protected:
    [[nodiscard]] std::optional<QString> storedModel() const {
        return defaults.string("vorq.preferredAIModel");
    }
    void apply(const QByteArray& more) {
        model.applyPreferredModelFromSession(*decodeSession(sessionJson("t", more)));
    }
};

TEST_F(PreferredModelTest, AStoredModelIsTakenUp) {
    defaults.setString("vorq.preferredAIModel", "openai/o3-mini");
    model.restore();
    EXPECT_EQ(model.preferredAIModelID(), u"openai/o3-mini");
    EXPECT_EQ(storedModel(), u"openai/o3-mini");
}

TEST_F(PreferredModelTest, AStoredModelThatIsNoLongerThereBecomesEmpty) {
    defaults.setString("vorq.preferredAIModel", "gone/model");
    model.restore();
    EXPECT_EQ(model.preferredAIModelID(), u"");
    EXPECT_EQ(storedModel(), u"");
}

TEST_F(PreferredModelTest, WithoutAStoredModelNothingIsStored) {
    model.restore();
    EXPECT_EQ(storedModel(), std::nullopt);
}

TEST_F(PreferredModelTest, AChoiceIsStoredAndSentWithTheAccount) {
    signIn();
    QSignalSpy changed(&model, &PreferredModel::preferredAIModelIDChanged);
    model.selectPreferredAIModel("deepseek/deepseek-chat");
    model.selectPreferredAIModel("deepseek/deepseek-chat");
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(storedModel(), u"deepseek/deepseek-chat");
    EXPECT_EQ(defaults.boolean("vorq.preferredAIModelUserChosen"), true);
    clock.settle();
    EXPECT_EQ(transport.last().path(), u"/auth/profile");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t1");
    EXPECT_EQ(transport.last().request().body, R"({"preferredModel":"deepseek/deepseek-chat"})");
    answerLast(200, sessionJson("other", R"(,"firstName":"Other")"));
    EXPECT_EQ(account->sessionToken(), u"t1") << "the session that comes back is dropped";
    EXPECT_EQ(account->profile().firstName, u"");
}

TEST_F(PreferredModelTest, AChoiceThatIsNotInTheCatalogueIsAuto) {
    signIn();
    model.selectPreferredAIModel("openai/o3-mini");
    model.selectPreferredAIModel("unknown");
    EXPECT_EQ(model.preferredAIModelID(), u"");
    clock.settle();
    EXPECT_EQ(transport.last().request().body, R"({"preferredModel":""})");
}

TEST_F(PreferredModelTest, AChoiceWhileSignedOutStaysOnThisMachine) {
    model.selectPreferredAIModel("openai/o3-mini");
    clock.settle();
    EXPECT_EQ(storedModel(), u"openai/o3-mini");
    EXPECT_EQ(transport.count(), 0u);
}

TEST_F(PreferredModelTest, AFailedSendIsLoggedAndNotRepeated) {
    signIn();
    model.selectPreferredAIModel("openai/o3-mini");
    clock.settle();
    testing::internal::CaptureStderr();
    answerLast(500, "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Vorq preferred model sync failed: Request failed with status 500.\n");
    EXPECT_EQ(transport.count(), 1u);
    EXPECT_EQ(model.preferredAIModelID(), u"openai/o3-mini");
}

TEST_F(PreferredModelTest, ALaterChoiceOvertakesOneOnItsWay) {
    signIn();
    model.selectPreferredAIModel("openai/o3-mini");
    clock.settle();
    model.selectPreferredAIModel("");
    clock.settle();
    EXPECT_TRUE(transport.at(0).isAbandoned());
    EXPECT_EQ(transport.at(1).request().body, R"({"preferredModel":""})");
}

TEST_F(PreferredModelTest, ASessionBringsItsModel) {
    apply(R"(,"preferredModel":" openai/o3-mini ","useCase":"writer")");
    EXPECT_EQ(model.preferredAIModelID(), u"openai/o3-mini");
    EXPECT_EQ(storedModel(), u"openai/o3-mini");
    EXPECT_EQ(defaults.boolean("vorq.preferredAIModelUserChosen"), std::nullopt);
}

TEST_F(PreferredModelTest, ASessionWithAnUnknownModelGoesByItsUse) {
    apply(R"(,"preferredModel":"unknown","useCase":"Writer ")");
    EXPECT_EQ(model.preferredAIModelID(), u"anthropic/claude-sonnet-latest");
}

TEST_F(PreferredModelTest, ASessionWithoutEitherLeavesTheModel) {
    apply(R"(,"preferredModel":"openai/o3-mini")");
    apply("");
    EXPECT_EQ(model.preferredAIModelID(), u"openai/o3-mini");
}

TEST_F(PreferredModelTest, AChoiceOfAutoStandsAgainstLaterSessions) {
    model.selectPreferredAIModel("");
    apply(R"(,"preferredModel":"openai/o3-mini")");
    EXPECT_EQ(model.preferredAIModelID(), u"");
}

TEST_F(PreferredModelTest, AModelOutlivesItsAccount) {
    signIn();
    destroyAccount();
    model.selectPreferredAIModel("openai/o3-mini");
    clock.settle();
    EXPECT_EQ(transport.count(), 0u);
}

} // namespace
} // namespace vorq
