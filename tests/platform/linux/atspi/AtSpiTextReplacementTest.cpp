#include "platform/linux/atspi/AtSpiTextReplacement.h"

#include "doubles/platform/AccessibleTreeFixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::ElementsAre;

// A text that is edited over the bus, in the order in which the calls come.
class AtSpiTextReplacementTest : public AccessibleTreeTest {
  protected:
    AtSpiTextReplacementTest() {
        textOf("/one", "the old words", 4, 7);
        tree.instead = [this](const QDBusMessage& call) {
            const bool isEdit = call.member() == "DeleteText" || call.member() == "InsertText";
            if (!isEdit) return hangs ? silence(call) : QDBusMessage();
            edits += call.member();
            if (refused == call.member() && --refusals >= 0) return call.createReply(false);
            edit(call);
            return hangs ? silence(call) : call.createReply(true);
        };
    }

    static QDBusMessage silence(const QDBusMessage& call) {
        return call.createErrorReply(QDBusError::Failed, ScriptedAccessibleTree::noAnswer);
    }
    void edit(const QDBusMessage& call) {
        QString& text = element("/one").text;
        const int at = call.arguments()[0].toInt();
        if (call.member() == "DeleteText")
            text.remove(at, call.arguments()[1].toInt() - at);
        else
            text.insert(at, call.arguments()[1].toString());
    }
    bool replace(AtSpiBus& over) {
        return told([&] {
            return AtSpiTextReplacement(over, toolkit, at("/one"))
                .replace({.start = 4, .end = 7}, "newer", "old");
        });
    }
    [[nodiscard]] QString text() { return element("/one").text; }

    bool hangs = false;
    QString refused;
    int refusals = 100;
    QStringList edits;
};

TEST_F(AtSpiTextReplacementTest, WritesInThePlaceOfTheStretch) {
    EXPECT_TRUE(replace(bus));
    EXPECT_EQ(text(), "the newer words");
    EXPECT_THAT(edits, ElementsAre("DeleteText", "InsertText"));
}

TEST_F(AtSpiTextReplacementTest, WhatIsNotDeletedIsNotWrittenOver) {
    refused = "DeleteText";
    EXPECT_FALSE(replace(bus));
    EXPECT_EQ(text(), "the old words");
    EXPECT_THAT(edits, ElementsAre("DeleteText"));
}

TEST_F(AtSpiTextReplacementTest, WhatWasDeletedComesBackWhereTheOtherIsNotTaken) {
    refused = "InsertText";
    refusals = 1;
    EXPECT_FALSE(replace(bus));
    EXPECT_EQ(text(), "the old words");
}

// It does both when it wakes, in their order.
TEST_F(AtSpiTextReplacementTest, ALateApplicationIsGivenBothSteps) {
    AtSpiBus impatient(m_bus.address(), std::chrono::milliseconds(200));
    ASSERT_TRUE(QTest::qWaitFor([&] { return impatient.isOn(); }));
    hangs = true;
    EXPECT_FALSE(replace(impatient));
    EXPECT_EQ(text(), "the newer words");
    EXPECT_THAT(edits, ElementsAre("DeleteText", "InsertText")) << "the former would be there too";
}

} // namespace
} // namespace vorq
