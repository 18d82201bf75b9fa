// Dates, compared with a calendar that counts every day, and the ways broadcasts write them.
#include "television/base/calendar.h"

#include <gtest/gtest.h>

using namespace television;

namespace {

TEST(Calendar, EveryDayOfFiveCenturies) {
    Date date{1800, 1, 1};
    int64_t days = -62091;  // 1800-01-01
    unsigned week = 3;      // a Wednesday
    for (; date.year < 2300; ++days, week = (week + 1) % 7) {
        ASSERT_EQ(daysFromDate(date), days);
        const Date back = dateFromDays(days);
        ASSERT_EQ(back.year, date.year);
        ASSERT_EQ(back.month, date.month);
        ASSERT_EQ(back.day, date.day);
        ASSERT_EQ(dayOfWeek(days), week);
        const bool leap = date.year % 4 == 0 && (date.year % 100 != 0 || date.year == 2000);
        const unsigned lengths[] = {31, leap ? 29u : 28u, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        if (++date.day > lengths[date.month - 1]) {
            date.day = 1;
            if (++date.month > 12) {
                date.month = 1;
                ++date.year;
            }
        }
    }
}

TEST(Calendar, FarAwayDates) {
    for (const int64_t year : {-400, -1, 0, 1, 4, 65535, 1000000}) {
        for (const unsigned month : {1u, 2u, 3u, 12u}) {
            const Date date{year, month, daysOfMonth(year, month)};
            const Date back = dateFromDays(daysFromDate(date));
            EXPECT_EQ(back.year, year);
            EXPECT_EQ(back.month, month);
            EXPECT_EQ(back.day, date.day);
        }
    }
    EXPECT_EQ(daysOfMonth(2024, 0), 0u);
    EXPECT_EQ(daysOfMonth(2024, 13), 0u);
}

TEST(Calendar, ModifiedJulianDates) {
    EXPECT_EQ(daysFromDate({1858, 11, 17}), -kMjdOfEpoch);
    EXPECT_EQ(daysFromDate({1900, 3, 1}) + kMjdOfEpoch, 15079);
    EXPECT_EQ(daysFromDate({1982, 9, 6}) + kMjdOfEpoch, 45218);
    EXPECT_EQ(daysFromDate({1993, 10, 13}) + kMjdOfEpoch, 49273);
    EXPECT_EQ(daysFromDate({2038, 4, 22}) + kMjdOfEpoch, 65535);
    EXPECT_EQ(secondsFromMjd(49273, 0x124500), 750516300);
    EXPECT_EQ(secondsFromMjd(0, 0), -kMjdOfEpoch * kSecondsOfDay);
    EXPECT_EQ(secondsFromMjd(65535, 0x235959), 2155593599);
    EXPECT_FALSE(secondsFromMjd(49273, 0x240000));
}

TEST(Calendar, BinaryCodedDecimals) {
    for (unsigned number = 0; number < 100; ++number) {
        EXPECT_EQ(fromBcd(toBcd(number)), number);
    }
    for (const uint8_t digits : {0x0A, 0xA0, 0xFF}) EXPECT_FALSE(fromBcd(digits));
    EXPECT_EQ(secondsFromBcd(0x995959, 99), 359999u);
    EXPECT_EQ(bcdFromSeconds(359999), 0x995959u);
    EXPECT_EQ(bcdFromSeconds(45296), 0x123456u);
    for (const uint32_t digits : {0x240000u, 0x006000u, 0x000060u, 0x00000Au, 0xFFFFFFu}) {
        EXPECT_FALSE(secondsFromBcd(digits, 23));
    }
}

TEST(Calendar, DivisionRoundsDown) {
    EXPECT_EQ(floorDivide(-1, 86400), -1);
    EXPECT_EQ(floorDivide(-86400, 86400), -1);
    EXPECT_EQ(floorDivide(-86401, 86400), -2);
    EXPECT_EQ(floorDivide(86399, 86400), 0);
    EXPECT_EQ(floorDivide(INT64_MIN, 1000), INT64_MIN / 1000 - 1);
}

}  // namespace
