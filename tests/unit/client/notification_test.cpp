// toString() of a notification.
#include "qortv/notification.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace qortv {
namespace {

TEST(ClientNotification, ShowsEveryKindOfValue) {
    const Notification notification = {"notifyTest",
                                       {{"yes", true},
                                        {"signed", int32_t{-1}},
                                        {"wide", UINT64_MAX},
                                        {"byte", uint8_t{200}},
                                        {"text", std::string("Küche \"a\\b\"\n\x7F")},
                                        {"bytes", Notification::Bytes{0x00, 0xAB, 0xFF}},
                                        {"texts", Notification::Texts{"one", "two"}}}};
    EXPECT_EQ(toString(notification),
              "notifyTest yes=true signed=-1 wide=18446744073709551615 byte=200 "
              "text=\"Küche \\\"a\\\\b\\\"\\x0a\\x7f\" bytes=<00abff> texts=[\"one\", \"two\"]");
}

TEST(ClientNotification, ShowsANotificationWithoutArguments) {
    EXPECT_EQ(toString({"notifyNothing", {}}), "notifyNothing");
}

TEST(ClientNotification, ReplacesBytesThatAreNotUtf8) {
    EXPECT_EQ(toString({"notifyTtsMsg", {{"data", std::string("\xFF")}}}),
              "notifyTtsMsg data=\"\xEF\xBF\xBD\"");
}

}  // namespace
}  // namespace qortv
