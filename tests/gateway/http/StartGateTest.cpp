#include "http/StartGate.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace vorq::gateway::testing {
namespace {

class StartGateTest : public ::testing::Test {
  protected:
    std::unique_ptr<StartGate::Visitor> come(char name) {
        return std::make_unique<StartGate::Visitor>(gate, [this, name] { called += name; });
    }

    StartGate gate{2};
    std::string called;
};

TEST_F(StartGateTest, OpensForANumberAtATime) {
    const auto first = come('1');
    const auto second = come('2');
    const auto third = come('3');
    EXPECT_TRUE(first->isInside());
    EXPECT_TRUE(second->isInside());
    EXPECT_FALSE(third->isInside());
    EXPECT_EQ(called, "");
}

TEST_F(StartGateTest, ThoseInLineComeInInTheirOrder) {
    auto first = come('1');
    auto second = come('2');
    const auto third = come('3');
    const auto fourth = come('4');
    second.reset();
    EXPECT_TRUE(third->isInside());
    EXPECT_FALSE(fourth->isInside());
    first.reset();
    EXPECT_TRUE(fourth->isInside());
    EXPECT_EQ(called, "34");
}

TEST_F(StartGateTest, OneWhoLeavesTheLineTakesNobodysTurn) {
    auto first = come('1');
    const auto second = come('2');
    auto third = come('3');
    const auto fourth = come('4');
    third.reset();
    EXPECT_FALSE(fourth->isInside());
    first.reset();
    EXPECT_TRUE(fourth->isInside());
    EXPECT_EQ(called, "4");
    EXPECT_FALSE(come('5')->isInside());
}

} // namespace
} // namespace vorq::gateway::testing
