#include "backend/account/OfferedModels.h"
#include "backend/api/Session.h"
#include "doubles/backend/AccountFixture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QByteArray two = R"({"models":[{"id":"llama3.1"},{"id":"qwen3:14b"}]})";

class OfferedModelsTest : public AccountFixture {
  protected:
    void offer(const QByteArray& list = two) {
        model.refreshOffered();
        clock.settle();
        answerLast(200, list);
    }
    [[nodiscard]] const QStringList& ids() const { return model.offered().ids(); }
};

TEST_F(OfferedModelsTest, AreAskedForAsTheUserAndKept) {
    signIn();
    QSignalSpy changed(&model.offered(), &OfferedModels::changed);
    offer();
    EXPECT_EQ(transport.last().path(), u"/ai/models");
    EXPECT_EQ(transport.last().request().method, "GET");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t1");
    EXPECT_THAT(ids(), ElementsAre("llama3.1", "qwen3:14b"));
    EXPECT_EQ(changed.count(), 1);
    offer();
    EXPECT_EQ(changed.count(), 1);
    PreferredModel next(api, defaults);
    next.restore();
    EXPECT_EQ(next.offered().ids(), ids());
}

TEST_F(OfferedModelsTest, NobodyIsAskedWithoutAnAccount) {
    model.refreshOffered();
    clock.settle();
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(OfferedModelsTest, AreAskedForOnceAtATime) {
    signIn();
    model.refreshOffered();
    clock.settle();
    model.refreshOffered();
    clock.settle();
    EXPECT_EQ(transport.count(), 1U);
    answerLast(200, two);
    offer();
    EXPECT_EQ(transport.count(), 2U);
}

TEST_F(OfferedModelsTest, ABackendThatTellsNothingLeavesWhatIsKnownAndTheSession) {
    signIn();
    offer();
    for (const int status : {401, 404, 500, 502}) {
        model.refreshOffered();
        clock.settle();
        answerLast(status, R"({"error":"no"})");
        EXPECT_EQ(ids().size(), 2) << status;
    }
    offer("a page");
    EXPECT_EQ(ids().size(), 2);
    EXPECT_TRUE(account->signedIn());
    offer(R"({"models":[]})");
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(OfferedModelsTest, WhatIsNoNameIsLeftOut) {
    signIn();
    offer(R"({"models":[{"id":""},{"id":" a"},{"id":"a\tb"},{"id":"b"},{"id":"b"}]})");
    EXPECT_THAT(ids(), ElementsAre("b"));
    QByteArray many;
    for (int number = 0; number < 500; ++number)
        many += (number > 0 ? "," : "") + ("{\"id\":\"m" + QByteArray::number(number) + "\"}");
    offer(R"({"models":[)" + many + "]}");
    EXPECT_EQ(ids().size(), 40);
}

TEST_F(OfferedModelsTest, OneOfThemCanBePreferredAndIsThereAtTheNextStart) {
    signIn();
    model.selectPreferredAIModel("llama3.1");
    EXPECT_EQ(model.preferredAIModelID(), u"") << "it is not offered yet";
    offer();
    model.selectPreferredAIModel("llama3.1");
    EXPECT_EQ(model.preferredAIModelID(), u"llama3.1");
    clock.settle();
    EXPECT_EQ(transport.last().request().body, R"({"preferredModel":"llama3.1"})");
    PreferredModel next(api, defaults);
    next.restore();
    EXPECT_EQ(next.preferredAIModelID(), u"llama3.1");
}

TEST_F(OfferedModelsTest, AChoiceOutlivesAListThatIsNotKnown) {
    signIn();
    offer();
    model.selectPreferredAIModel("llama3.1");
    clock.settle();
    model.forgetOffered();
    PreferredModel next(api, defaults);
    next.restore();
    EXPECT_EQ(next.preferredAIModelID(), u"llama3.1");
    PreferredModel afterNext(api, defaults);
    afterNext.restore();
    EXPECT_EQ(afterNext.preferredAIModelID(), u"llama3.1");
}

TEST_F(OfferedModelsTest, AChoiceThatAListLacksIsGoneAtTheNextStart) {
    signIn();
    offer();
    model.selectPreferredAIModel("llama3.1");
    clock.settle();
    offer(R"({"models":[{"id":"qwen3:14b"}]})");
    EXPECT_EQ(model.preferredAIModelID(), u"llama3.1");
    PreferredModel next(api, defaults);
    next.restore();
    EXPECT_EQ(next.preferredAIModelID(), u"");
}

TEST_F(OfferedModelsTest, ChoosingAgainWhatIsOfferedNoMoreLeavesIt) {
    signIn();
    offer();
    model.selectPreferredAIModel("llama3.1");
    offer(R"({"models":[]})");
    model.selectPreferredAIModel("llama3.1");
    EXPECT_EQ(model.preferredAIModelID(), u"llama3.1");
    model.selectPreferredAIModel("qwen3:14b");
    EXPECT_EQ(model.preferredAIModelID(), u"");
}

TEST_F(OfferedModelsTest, ASessionMayPreferOneUnlessTheUserHasChosen) {
    signIn();
    offer();
    const QByteArray prefers = R"(,"preferredModel":" qwen3:14b ","useCase":"writer")";
    model.applyPreferredModelFromSession(*decodeSession(sessionJson("t", prefers)));
    EXPECT_EQ(model.preferredAIModelID(), u"qwen3:14b");
    model.selectPreferredAIModel("");
    model.applyPreferredModelFromSession(*decodeSession(sessionJson("t", prefers)));
    EXPECT_EQ(model.preferredAIModelID(), u"");
}

TEST_F(OfferedModelsTest, AfterSigningOutALateAnswerIsDropped) {
    signIn();
    offer();
    model.refreshOffered();
    clock.settle();
    model.forgetOffered();
    EXPECT_THAT(ids(), IsEmpty());
    answerLast(200, two);
    EXPECT_THAT(ids(), IsEmpty());
    EXPECT_FALSE(defaults.contains("vorq.offeredModels"));
}

} // namespace
} // namespace vorq
