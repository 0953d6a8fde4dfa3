#include "writing/words/WritingWordAlts.h"

#include <QStringList>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WritingWordAltsTest : public testing::Test {
  protected:
    WritingWordAltsTest() {
        const auto note = [this](const char* name) { return [this, name] { heard += name; }; };
        QObject::connect(&words, &WritingWordAlts::editStarted, &words, note("started"));
        QObject::connect(&words, &WritingWordAlts::editFinished, &words, note("finished"));
    }

    static WritingWordAlt alt(const QString& alternative) {
        WritingWordAlt word;
        word.original = "fast";
        word.alternative = alternative;
        return word;
    }

    QStringList heard;
    WritingWordAlts words;
};

TEST_F(WritingWordAltsTest, LoadingEndsWithWhatIsShown) {
    EXPECT_FALSE(words.didLoadWordAlts());
    words.beginLoading();
    EXPECT_TRUE(words.isLoadingWordAlts());
    const WritingWordAlt swift = alt("swift");
    words.show({swift});
    EXPECT_FALSE(words.isLoadingWordAlts());
    EXPECT_TRUE(words.didLoadWordAlts());
    EXPECT_THAT(words.wordAlts(), ElementsAre(swift));
}

TEST_F(WritingWordAltsTest, OneIsPutInAtATime) {
    const WritingWordAlt swift = alt("swift");
    const WritingWordAlt quick = alt("quick");
    words.show({swift, quick});
    EXPECT_FALSE(words.beginApplying(QUuid::createUuid()));
    EXPECT_TRUE(words.beginApplying(swift.id));
    EXPECT_FALSE(words.beginApplying(quick.id));
    EXPECT_EQ(words.applyingWordAltID(), swift.id);
    words.endApplying();
    words.endApplying();
    EXPECT_EQ(words.applyingWordAltID(), std::nullopt);
    EXPECT_THAT(heard, ElementsAre("started", "finished"));
}

TEST_F(WritingWordAltsTest, WhatIsShownNoMoreIsNotBeingPutIn) {
    const WritingWordAlt swift = alt("swift");
    words.show({swift});
    words.beginApplying(swift.id);
    words.show({swift, alt("quick")});
    EXPECT_THAT(heard, ElementsAre("started"));
    words.show({});
    EXPECT_EQ(words.applyingWordAltID(), std::nullopt);
    EXPECT_THAT(heard, ElementsAre("started", "finished"));
    EXPECT_THAT(words.wordAlts(), IsEmpty());
}

} // namespace
} // namespace vorq
