/** The system properties on Linux. */
#include <android-base/properties.h>
#include <cutils/properties.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using android::base::GetProperty;

TEST(PlatformProperties, areSetAndSetAgain) {
    EXPECT_EQ(property_set("test.first", "one"), 0);
    EXPECT_EQ(GetProperty("test.first", ""), "one");
    EXPECT_EQ(property_set("test.first", ""), 0);
    EXPECT_EQ(GetProperty("test.first", ""), "");
}

TEST(PlatformProperties, haveANameAndAValueThatFits) {
    EXPECT_EQ(property_set("", "one"), -1);
    EXPECT_EQ(property_set("test.long", std::string(91, 'x').c_str()), 0);
    EXPECT_EQ(property_set("test.long", std::string(92, 'y').c_str()), -1);
    EXPECT_EQ(GetProperty("test.long", ""), std::string(91, 'x'));
}

TEST(PlatformProperties, areSetOnceWhereTheyAreReadOnly) {
    EXPECT_EQ(property_set("ro.test", std::string(200, 'x').c_str()), 0);
    EXPECT_EQ(property_set("ro.test", "again"), -1);
    EXPECT_EQ(GetProperty("ro.test", ""), std::string(200, 'x'));
}

}  // namespace
