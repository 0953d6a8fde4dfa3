#include "http/ConnectionRoom.h"

#include <gtest/gtest.h>

#include <array>

namespace vorq::gateway::testing {
namespace {

struct CountingGuest final : Guest {
    void dismiss() override { ++dismissals; }
    void hearStop() override { ++stops; }
    int dismissals = 0;
    int stops = 0;
};

TEST(ConnectionRoomTest, TheOneThatHasWaitedForLongestMakesRoom) {
    ConnectionRoom room(2, 1000);
    std::array<CountingGuest, 4> guests;
    room.enter(guests[0]);
    room.enter(guests[1]);
    EXPECT_EQ(guests[0].dismissals, 0);
    room.enter(guests[2]);
    EXPECT_EQ(guests[0].dismissals, 1);
    room.leave(guests[0]);
    room.settle(guests[1]);
    room.enter(guests[3]);
    EXPECT_EQ(guests[1].dismissals, 0);
    EXPECT_EQ(guests[2].dismissals, 1);
}

TEST(ConnectionRoomTest, AmongThoseWithAWholeRequestANewOneFindsNoRoom) {
    ConnectionRoom room(1, 1000);
    std::array<CountingGuest, 2> guests;
    room.enter(guests[0]);
    room.settle(guests[0]);
    room.enter(guests[1]);
    EXPECT_EQ(guests[0].dismissals, 0);
    EXPECT_EQ(guests[1].dismissals, 1);
}

TEST(ConnectionRoomTest, BytesOfHalfRequestsAreCountedTogether) {
    ConnectionRoom room(10, 1000);
    std::array<CountingGuest, 3> guests;
    for (CountingGuest& guest : guests)
        room.enter(guest);
    room.setBytes(guests[0], 100);
    room.setBytes(guests[1], 600);
    room.setBytes(guests[2], 300);
    EXPECT_EQ(guests[0].dismissals, 0);
    room.setBytes(guests[2], 700);
    EXPECT_EQ(guests[0].dismissals, 1);
    EXPECT_EQ(guests[1].dismissals, 1);
    EXPECT_EQ(guests[2].dismissals, 0);
    // A whole request counts no more.
    room.settle(guests[2]);
    CountingGuest last;
    room.enter(last);
    room.setBytes(last, 900);
    EXPECT_EQ(last.dismissals, 0);
}

TEST(ConnectionRoomTest, AllHearOfTheStop) {
    ConnectionRoom room(10, 1000);
    std::array<CountingGuest, 2> guests;
    room.enter(guests[0]);
    room.enter(guests[1]);
    room.settle(guests[1]);
    room.announceStop();
    EXPECT_EQ(guests[0].stops, 1);
    EXPECT_EQ(guests[1].stops, 1);
    room.leave(guests[0]);
    EXPECT_EQ(room.guests(), 1U);
}

} // namespace
} // namespace vorq::gateway::testing
