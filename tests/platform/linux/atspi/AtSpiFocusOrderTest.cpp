#include "platform/linux/atspi/AtSpiFocusOrder.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString app = u":1.5"_s;

AtSpiRef element(const char* path, const QString& service = app) {
    return {service, QString::fromLatin1(path)};
}

TEST(AtSpiFocusOrder, TellsTheLatestFirst) {
    AtSpiFocusOrder order;
    order.gained(element("/a"));
    order.gained(element("/b"));

    EXPECT_THAT(order.candidates(app), testing::ElementsAre(element("/b"), element("/a")));
}

TEST(AtSpiFocusOrder, KeepsWhatLostTheFocusToAnotherApplication) {
    AtSpiFocusOrder order;
    order.gained(element("/a"));
    order.lost(element("/a"));

    EXPECT_THAT(order.candidates(app), testing::ElementsAre(element("/a")));
}

TEST(AtSpiFocusOrder, DropsWhatAnotherElementReplaced) {
    AtSpiFocusOrder order;
    order.gained(element("/a"));
    order.lost(element("/a"));
    order.gained(element("/b"));

    EXPECT_THAT(order.candidates(app), testing::ElementsAre(element("/b")));
}

TEST(AtSpiFocusOrder, DropsItAlsoWhenTheLossIsToldAfterwards) {
    AtSpiFocusOrder order;
    order.gained(element("/a"));
    order.gained(element("/b"));
    order.lost(element("/a"));

    EXPECT_THAT(order.candidates(app), testing::ElementsAre(element("/b")));
}

TEST(AtSpiFocusOrder, KeepsTheLastWhenAnEarlierOneNeverTellsItsLoss) {
    AtSpiFocusOrder order;
    order.gained(element("/pane"));
    order.gained(element("/text"));
    order.lost(element("/text"));

    EXPECT_THAT(order.candidates(app), testing::ElementsAre(element("/text"), element("/pane")));
}

TEST(AtSpiFocusOrder, KeepsApplicationsApart) {
    AtSpiFocusOrder order;
    order.gained(element("/a"));
    order.gained(element("/z", ":1.9"));
    order.lost(element("/a"));

    EXPECT_THAT(order.candidates(app), testing::ElementsAre(element("/a")));
    EXPECT_THAT(order.services(), testing::ElementsAre(QString(":1.9"), app));
    order.forget(":1.9");
    EXPECT_THAT(order.services(), testing::ElementsAre(app));
}

TEST(AtSpiFocusOrder, DoesNotGrowWithoutBound) {
    AtSpiFocusOrder order;
    for (int i = 0; i < 1000; ++i)
        order.gained({app, u"/%1"_s.arg(i)});

    EXPECT_EQ(order.candidates(app).size(), 32U);
    EXPECT_EQ(order.candidates(app).front().path, "/999");
}

TEST(AtSpiFocusOrder, IgnoresAnElementThatIsNone) {
    AtSpiFocusOrder order;
    order.gained(element("/org/a11y/atspi/null"));
    order.gained({});
    order.lost(element("/never"));

    EXPECT_THAT(order.services(), testing::IsEmpty());
}

} // namespace
} // namespace vorq
