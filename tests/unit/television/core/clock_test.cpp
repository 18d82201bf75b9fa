// The clock: its sources, and local time around a change of the offset.
#include "television/core/clock.h"

#include <gtest/gtest.h>

#include <ctime>

#include "middleware/time.h"

using namespace television;

namespace {

BroadcastTime summerTime(int64_t utc) {
    BroadcastTime time;
    time.tdt = time.tot = true;
    time.utc = utc;
    time.offset = 7200;
    time.nextChange = 10'000;
    time.nextOffset = 3600;
    return time;
}

TEST(Clock, BroadcastIsCarriedOn) {
    int64_t base = 5'000'000;
    Clock clock([&] { return base; });
    EXPECT_EQ(clock.utcSeconds(), 5000);
    EXPECT_EQ(clock.sourceInForce(), uint32_t{TIME_SYNC_SOURCE_SYSTEM});
    EXPECT_FALSE(clock.broadcastMilliseconds());
    clock.receive(summerTime(1000));
    base += 1500;
    EXPECT_EQ(clock.utcMilliseconds(), 1'001'500);
    EXPECT_EQ(clock.sourceInForce(), uint32_t{TIME_SYNC_SOURCE_BROADCAST});
    clock.receive(summerTime(1000));
    EXPECT_EQ(clock.utcMilliseconds(), 1'001'500) << "the same time again is no news";
    clock.receive(summerTime(900));
    EXPECT_EQ(clock.utcMilliseconds(), 900'000);
    clock.setSource(TIME_SYNC_SOURCE_SYSTEM);
    EXPECT_EQ(clock.utcMilliseconds(), base);
    EXPECT_EQ(clock.broadcastMilliseconds(), 900'000);
}

TEST(Clock, LocalTimeAroundAChange) {
    Clock clock([] { return int64_t{0}; });
    clock.receive(summerTime(1000));
    EXPECT_EQ(clock.offsetAt(9'999).seconds, 7200);
    EXPECT_TRUE(clock.offsetAt(9'999).summer);
    EXPECT_EQ(clock.offsetAt(10'000).seconds, 3600);
    EXPECT_FALSE(clock.offsetAt(10'000).summer);
    EXPECT_EQ(clock.zone(), 3600);
    // Every moment comes back, also in the hour that happens twice.
    for (int64_t utc = 0; utc < 20'000; utc += 7) {
        const LocalOffset offset = clock.offsetAt(utc);
        EXPECT_EQ(clock.utcFromLocal(utc + offset.seconds, offset.summer), utc);
    }
    clock.setSource(TIME_SYNC_SOURCE_SYSTEM);
    EXPECT_EQ(clock.offsetAt(0).seconds, 0) << "the broadcast's offset is not followed";
    clock.setZone(-3600);
    clock.setOffset(0);
    EXPECT_TRUE(clock.offsetAt(0).summer);
    EXPECT_EQ(clock.utcFromLocal(500, true), 500);
}

TEST(Clock, UserTimeGoesOnFromWhereItStood) {
    int64_t base = 5'000'000;
    Clock clock([&] { return base; });
    clock.receive(summerTime(1000));
    EXPECT_FALSE(clock.userLead());
    clock.setSource(TIME_SYNC_SOURCE_USER);
    base += 2000;
    EXPECT_EQ(clock.utcMilliseconds(), 1'002'000);
    clock.setUserTime(50'000);
    base += 500;
    EXPECT_EQ(clock.utcMilliseconds(), 50'500);
    EXPECT_EQ(clock.userLead(), 50'500 - base);
    clock.setSource(TIME_SYNC_SOURCE_BROADCAST);
    clock.setSource(TIME_SYNC_SOURCE_USER);
    EXPECT_EQ(clock.utcMilliseconds(), 50'500) << "a time that was set is kept";
}

TEST(Clock, WithoutABaseItIsTheMachines) {
    const Clock clock;
    const int64_t before = std::time(nullptr);
    const int64_t now = clock.utcSeconds();
    EXPECT_GE(now, before);
    EXPECT_LE(now, std::time(nullptr));
    EXPECT_LE(clock.elapsedMilliseconds(), clock.elapsedMilliseconds());
}

}  // namespace
