#include "shell/panel/HeldOffer.h"

#include "panel/HeldCapture.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::StartsWith;

class HeldOfferTest : public testing::Test {
  protected:
    [[nodiscard]] std::string lastSaid() const {
        return said.isEmpty() ? std::string() : said.last()[0].toString().toStdString();
    }

    HeldCapture held;
    HeldOffer offer{held};
    QSignalSpy said{&offer, &HeldOffer::announced};
};

TEST_F(HeldOfferTest, SaysWhatIsHeldAndWhatCanBeDone) {
    EXPECT_FALSE(offer.isHolding());
    held.hold("kT4vB9nQz2Lm", "Chromium");
    EXPECT_TRUE(offer.isHolding());
    EXPECT_EQ(offer.from(), "Chromium");
    EXPECT_EQ(lastSaid(), "What is highlighted in Chromium reads like a password or a key. It is "
                          "held back: send it or discard it.");
    held.hold("kT4vB9nQz2Lm", {});
    EXPECT_EQ(offer.from(), "");
    EXPECT_THAT(lastSaid(), StartsWith("What is highlighted reads like"));
    EXPECT_EQ(said.count(), 2);
}

TEST_F(HeldOfferTest, SaysNothingOnceItIsSent) {
    held.hold("kT4vB9nQz2Lm", "Chromium");
    const QSignalSpy changed(&offer, &HeldOffer::changed);
    EXPECT_EQ(held.release(), "kT4vB9nQz2Lm");
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(offer.isHolding());
    EXPECT_EQ(said.count(), 1);
}

TEST_F(HeldOfferTest, WhatIsDiscardedIsGone) {
    held.hold("kT4vB9nQz2Lm", "Chromium");
    const QSignalSpy discarded(&offer, &HeldOffer::discarded);
    offer.discard();
    EXPECT_TRUE(held.isEmpty());
    EXPECT_EQ(discarded.count(), 1);
    EXPECT_EQ(lastSaid(), "Discarded.");
}

} // namespace
} // namespace vorq
