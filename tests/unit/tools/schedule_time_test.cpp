// Times and durations as qortvctl reads them.
#include "qortvctl/parsing/schedule_time.h"

#include <gtest/gtest.h>

#include <ctime>

namespace qortvctl {
namespace {

using std::chrono::seconds;

/** A clock whose local time is `ahead` seconds ahead of UTC, and an hour more from `summer` on. */
auto localClock(int64_t ahead, int64_t summer = INT64_MAX) {
    return [=](int64_t utc) {
        const time_t shown = utc + ahead + (utc >= summer ? 3600 : 0);
        std::tm parts = {};
        gmtime_r(&shown, &parts);
        qortv::LocalTime local;
        local.year = parts.tm_year + 1900;
        local.month = parts.tm_mon + 1;
        local.day = parts.tm_mday;
        local.hour = parts.tm_hour;
        local.minute = parts.tm_min;
        local.second = parts.tm_sec;
        return local;
    };
}

/** What the text means at `now`; -1, and a failure, when it is no time. */
int64_t utc(const std::string& text, int64_t now = 0, int64_t ahead = 0,
            int64_t summer = INT64_MAX) {
    const auto time = parseTime(text);
    if (!time) {
        ADD_FAILURE() << text << " is no time";
        return -1;
    }
    return toUtc(*time, now, localClock(ahead, summer));
}

TEST(ToolScheduleTime, DurationsAreUnitsOrSeconds) {
    EXPECT_EQ(parseDuration("90"), seconds{90});
    EXPECT_EQ(parseDuration("45s"), seconds{45});
    EXPECT_EQ(parseDuration("90m"), seconds{5400});
    EXPECT_EQ(parseDuration("1h30m"), seconds{5400});
    EXPECT_EQ(parseDuration("2h"), seconds{7200});
    EXPECT_EQ(parseDuration("1h2m3s"), seconds{3723});
    for (const char* text :
         {"", "0", "0m", "-1", "1.5h", "30m1h", "1d", "h", "12345678901", "999999h", "1h ", "x"}) {
        EXPECT_EQ(parseDuration(text), std::nullopt) << text;
    }
}

TEST(ToolScheduleTime, TimesWithAnOffsetAreTheSameEverywhere) {
    EXPECT_EQ(utc("1970-01-01T00:00Z"), 0);
    EXPECT_EQ(utc("2033-05-18T03:33:20Z", 0, 7200), 2000000000);
    EXPECT_EQ(utc("2033-05-18T05:33:20+02:00"), 2000000000);
    EXPECT_EQ(utc("2033-05-17 23:03:20-0430"), 2000000000);
    EXPECT_EQ(utc("2024-02-29T12:00Z"), 1709208000);
    EXPECT_EQ(utc("2100-03-01T00:00Z"), 4107542400);
}

TEST(ToolScheduleTime, TimesWithoutAnOffsetAreLocal) {
    EXPECT_EQ(utc("2033-05-18T05:33:20", 0, 7200), 2000000000);
    EXPECT_EQ(utc("2033-05-18T03:33:20", 0, 0), 2000000000);
    EXPECT_EQ(utc("2033-05-18T00:03:20", 0, -12600), 2000000000);
}

TEST(ToolScheduleTime, TheOffsetIsThatAtTheTimeItself) {
    // Summer time begins at 2000000000. Times before and after that are asked for in winter.
    EXPECT_EQ(utc("2033-05-18T04:33:19", 0, 3600, 2000000000), 1999999999);
    EXPECT_EQ(utc("2033-05-18T05:33:20", 0, 3600, 2000000000), 2000000000);
    EXPECT_EQ(utc("2033-05-18T06:33:20", 0, 3600, 2000000000), 2000003600);
}

TEST(ToolScheduleTime, ATimeOfDayIsTheNextOne) {
    constexpr int64_t kNow = 2000000000;  // 05:33:20 local
    EXPECT_EQ(utc("05:33:21", kNow, 7200), kNow + 1);
    EXPECT_EQ(utc("05:33:20", kNow, 7200), kNow + 86400);
    EXPECT_EQ(utc("5:34", kNow, 7200), kNow + 40);
    EXPECT_EQ(utc("00:00", kNow, 7200), kNow - 20000 + 86400);
    // Local midnight comes before UTC midnight.
    EXPECT_EQ(utc("23:59", 2000072000, 7200), 2000066400 + 86400 - 60);
}

TEST(ToolScheduleTime, WhatIsNoTimeIsRefused) {
    for (const char* text :
         {"", "20", "24:00", "20:60", "20:15:60", "20:15Z", "2026-02-29T20:15", "2026-13-01T20:15",
          "2026-00-01T20:15", "2026-04-31T20:15", "1969-12-31T23:59Z", "2026-11-21", "tomorrow",
          "2026-11-21T20:15 ", "2026-11-21T20:15+1"}) {
        EXPECT_FALSE(parseTime(text).has_value()) << text;
    }
    EXPECT_TRUE(parseTime("2028-02-29T20:15").has_value());
}

}  // namespace
}  // namespace qortvctl
