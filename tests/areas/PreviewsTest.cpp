#include "areas/Previews.h"
#include "platform/testing/ScriptedDefaults.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class PreviewsTest : public testing::Test {
  protected:
    // As after a start of the program.
    [[nodiscard]] bool isStored(Preview preview) { return Previews(m_defaults).isOn(preview); }

    ScriptedDefaults m_defaults;
    Previews m_previews{m_defaults};
    QSignalSpy m_changes{&m_previews, &Previews::changed};
};

TEST_F(PreviewsTest, AllAreOffAtFirst) {
    for (const Preview preview : allPreviews)
        EXPECT_FALSE(m_previews.isOn(preview));
    EXPECT_EQ(m_defaults.writes(), 0);
}

TEST_F(PreviewsTest, ASwitchIsRememberedAndLeavesTheOthers) {
    EXPECT_TRUE(m_previews.set(Preview::Watch, true));
    EXPECT_TRUE(isStored(Preview::Watch));
    EXPECT_FALSE(isStored(Preview::Hub));
    EXPECT_FALSE(isStored(Preview::Writing));
    EXPECT_TRUE(m_previews.set(Preview::Watch, false));
    EXPECT_FALSE(isStored(Preview::Watch));
    EXPECT_TRUE(m_defaults.values().isEmpty() ||
                !m_defaults.contains(Previews::keyOf(Preview::Watch)));
}

TEST_F(PreviewsTest, OnlyAChangeIsTold) {
    EXPECT_TRUE(m_previews.set(Preview::Hub, false));
    EXPECT_EQ(m_changes.count(), 0);
    EXPECT_TRUE(m_previews.set(Preview::Hub, true));
    EXPECT_TRUE(m_previews.set(Preview::Hub, true));
    ASSERT_EQ(m_changes.count(), 1);
    EXPECT_EQ(m_changes[0][0].value<Preview>(), Preview::Hub);
}

TEST_F(PreviewsTest, OneThatIsOpenInThisRunIsNotStored) {
    m_previews.openForThisRun(Preview::Watch);
    EXPECT_TRUE(m_previews.isOn(Preview::Watch));
    EXPECT_FALSE(isStored(Preview::Watch));
    m_previews.openForThisRun(Preview::Watch);
    EXPECT_EQ(m_changes.count(), 1);
    EXPECT_EQ(m_defaults.writes(), 0);
}

TEST_F(PreviewsTest, OneThatIsOpenInThisRunIsSwitchedLikeAnother) {
    m_previews.openForThisRun(Preview::Watch);
    EXPECT_TRUE(m_previews.set(Preview::Watch, false));
    EXPECT_FALSE(m_previews.isOn(Preview::Watch));
    m_previews.openForThisRun(Preview::Watch);
    EXPECT_TRUE(m_previews.set(Preview::Watch, true));
    EXPECT_TRUE(isStored(Preview::Watch));
    EXPECT_EQ(m_changes.count(), 3);
}

TEST_F(PreviewsTest, ASwitchThatIsNotKeptIsToldAndChangesNothing) {
    m_defaults.fixed = u"The settings cannot be written."_s;
    const auto outcome = m_previews.set(Preview::Watch, true);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error(), "The settings cannot be written.");
    EXPECT_FALSE(m_previews.isOn(Preview::Watch));
    EXPECT_EQ(m_changes.count(), 0);
}

TEST_F(PreviewsTest, WhatIsNoTruthValueIsOff) {
    m_defaults.setString(Previews::keyOf(Preview::Watch), u"on"_s);
    EXPECT_FALSE(m_previews.isOn(Preview::Watch));
    EXPECT_EQ(Previews::keyOf(Preview::Watch), "vorq.preview.watch");
}

} // namespace
} // namespace vorq
