// What a listener receives that overrides nothing but onNotification(): each notification under its
// name, and each argument under its name in the interface.
#include "qortv/listener.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "relay.h"

namespace qortv {
namespace {

using android::sp;
using vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_ENQ_T;
using vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_MENU_T;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiCallback;

class NotificationLog : public Listener {
  public:
    void onNotification(const Notification& notification) override {
        mLast = toString(notification);
        ++mCount;
    }

    /** Returns the last notification as text and forgets it. */
    std::string last() { return std::exchange(mLast, ""); }
    int count() const { return mCount; }

  private:
    std::string mLast;
    int mCount = 0;
};

class ClientListener : public testing::Test {
  protected:
    NotificationLog mLog;
    /** Forwards to mLog; the tests call it as the service does. */
    const sp<IQorTvApiCallback> mCallback = new Relay(mLog);
};

TEST_F(ClientListener, ReceivesEveryPlainNotificationWithItsArguments) {
    mCallback->notifySvctxListener(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifySvctxListener svctx=1 condition=2 code=3 stream_type=4 tag=5");
    mCallback->notifySvctxSelect(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifySvctxSelect svctx=1 condition=2 code=3 stream_type=4 tag=5");
    mCallback->notifyInputSourceDetect(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifyInputSourceDetect component=1 condition=2 tag=3 data=4 data2=5");
    mCallback->notifyHighlevel(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyHighlevel code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notify3dMode(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notify3dMode type=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyReserved5(1, 2);
    EXPECT_EQ(mLog.last(), "notifyReserved5 code=1 tag=2");
    mCallback->notifyReserved6(1, 2);
    EXPECT_EQ(mLog.last(), "notifyReserved6 code=1 tag=2");
    mCallback->notifyNoUsedKey(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyNoUsedKey keycode=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyEas(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyEas code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyGinga(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifyGinga type=1 tag=2 arg1=3 arg2=4 arg3=5");
    mCallback->notifyGingaVolume(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifyGingaVolume type=1 tag=2 arg1=3 arg2=4 arg3=5");
    mCallback->notifyGingaUpdate(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifyGingaUpdate type=1 tag=2 arg1=3 arg2=4 arg3=5");
    mCallback->notifyScan(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyScan code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyBroadcast(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyBroadcast code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyScreensaverMsg(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifyScreensaverMsg message_id=1 tag=2 arg1=3 arg2=4 arg3=5");
    mCallback->notifyWarningMsg(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyWarningMsg code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyBanner(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyBanner code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyRating(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyRating code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyChannelLogo(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyChannelLogo type=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifySubtitle(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifySubtitle code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyPwdDlgMsg(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyPwdDlgMsg type=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyEventUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyEventUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyTimeshift(1, 2, 3, 4);
    EXPECT_EQ(mLog.last(), "notifyTimeshift code=1 tag=2 arg1=3 arg2=4");
    mCallback->notifyDateTime(1, 2, 3);
    EXPECT_EQ(mLog.last(), "notifyDateTime code=1 tag=2 arg1=3");
    mCallback->notifySleepTimer(1, 2, 3);
    EXPECT_EQ(mLog.last(), "notifySleepTimer code=1 tag=2 arg1=3");
    mCallback->notifySyncSource(1, 2, 3);
    EXPECT_EQ(mLog.last(), "notifySyncSource code=1 tag=2 arg1=3");
    mCallback->notifyPcl(1, 2, 3, 4);
    EXPECT_EQ(mLog.last(), "notifyPcl pcl=1 tag=2 condition=3 data=4");
    mCallback->notifyEventAtsc(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyEventAtsc code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyConfig(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyConfig code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyIom(1, 2, {3, 3});
    EXPECT_EQ(mLog.last(), "notifyIom tag=1 condition=2 data=<0303>");
    mCallback->notifyApptv(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyApptv type=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyHbbtvMsg(1, 2, {3, 3});
    EXPECT_EQ(mLog.last(), "notifyHbbtvMsg code=1 tag=2 data=<0303>");
    mCallback->notifyOad(1, 2, "s3", 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyOad code=1 tag=2 info=\"s3\" progress=4 flag=5 arg=6");
    mCallback->notifyMheg5(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifyMheg5 type=1 tag=2 arg1=3 arg2=4 arg3=5");
    mCallback->notifyMheg5LaunchHbbtv("s1", 2, 3);
    EXPECT_EQ(mLog.last(), "notifyMheg5LaunchHbbtv location=\"s1\" tag=2 arg1=3");
    mCallback->notifyRecord(1, 2, 3, 4);
    EXPECT_EQ(mLog.last(), "notifyRecord code=1 tag=2 arg1=3 arg2=4");
    mCallback->notifyAudioInfo(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyAudioInfo code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyUpgrade(1, 2, 3, 4);
    EXPECT_EQ(mLog.last(), "notifyUpgrade type=1 state=2 progress=3 tag=4");
    mCallback->notifyChannelListUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyChannelListUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyTvProviderUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyTvProviderUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifySvlIdUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifySvlIdUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyTslIdUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyTslIdUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyNwlUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyNwlUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyListModeUpdate(1, 2, 3, 4);
    EXPECT_EQ(mLog.last(), "notifyListModeUpdate code=1 tag=2 arg1=3 arg2=4");
    mCallback->notifyOclScanInfo(1, 2, 3, 4);
    EXPECT_EQ(mLog.last(), "notifyOclScanInfo code=1 tag=2 arg1=3 arg2=4");
    mCallback->notifyEwspa(1, 2);
    EXPECT_EQ(mLog.last(), "notifyEwspa type=1 tag=2");
    mCallback->notifyTeletext(1, 2, 3, 4, 5);
    EXPECT_EQ(mLog.last(), "notifyTeletext code=1 tag=2 arg1=3 arg2=4 arg3=5");
    mCallback->notifyBisskeyUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyBisskeyUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifySatlListUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifySatlListUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyCi(1, 2, 3, {4, 4});
    EXPECT_EQ(mLog.last(), "notifyCi ci=1 tag=2 condition=3 data=<0404>");
    mCallback->notifyConcernColumn(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(mLog.last(), "notifyConcernColumn code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    mCallback->notifyBmlMsg(1, 2, {3, 3});
    EXPECT_EQ(mLog.last(), "notifyBmlMsg code=1 tag=2 data=<0303>");
    mCallback->notifyHtmlAgent(1, 2, {3, 3});
    EXPECT_EQ(mLog.last(), "notifyHtmlAgent code=1 tag=2 data=<0303>");
    mCallback->notifyVideoInfo(1, 2, 3, 4, 5, 6, 7, 8);
    EXPECT_EQ(mLog.last(),
              "notifyVideoInfo code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6 arg5=7 arg6=8");
    mCallback->notifyReserved58(1, 2);
    EXPECT_EQ(mLog.last(), "notifyReserved58 code=1 tag=2");
    mCallback->notifyTtsMsg(1, "s2", 3);
    EXPECT_EQ(mLog.last(), "notifyTtsMsg tag=1 data=\"s2\" length=3");
    mCallback->notifyMdsMsg(1, "s2", 3);
    EXPECT_EQ(mLog.last(), "notifyMdsMsg tag=1 data=\"s2\" length=3");
    mCallback->notifyEws(1, 2);
    EXPECT_EQ(mLog.last(), "notifyEws type=1 tag=2");
    EXPECT_EQ(mLog.count(), 58);
}

TEST_F(ClientListener, ReceivesArgumentsInFullWidth) {
    mCallback->notifyScan(INT32_MIN, UINT64_MAX, 0, 1, 2, UINT64_MAX - 1);
    EXPECT_EQ(mLog.last(),
              "notifyScan code=-2147483648 tag=18446744073709551615 arg1=0 arg2=1 arg3=2 "
              "arg4=18446744073709551614");
    mCallback->notifyScreensaverMsg(1, 2, INT64_MIN, 0, INT64_MAX);
    EXPECT_EQ(mLog.last(),
              "notifyScreensaverMsg message_id=1 tag=2 arg1=-9223372036854775808 arg2=0 "
              "arg3=9223372036854775807");
}

TEST_F(ClientListener, ReceivesTheFieldsOfAnEnquiry) {
    HIDL_CI_MMI_ENQ_T enquiry = {};
    enquiry.id = 3;
    enquiry.answer_length = 4;
    enquiry.blind_answer = true;
    enquiry.text = {'P', 0xEF, 0x20AC, 0xD83D, 0xDCFA, 0xD800, 'x', 0, 'y'};
    enquiry.path_valid = true;
    enquiry.path_id = 9;
    mCallback->notifyCiMmiEnquiry(1, 2, 3, enquiry);
    EXPECT_EQ(mLog.last(),
              "notifyCiMmiEnquiry ci=1 tag=2 condition=3 id=3 answer_length=4 blind_answer=true "
              "text=\"Pï€\xF0\x9F\x93\xBA\xEF\xBF\xBDx\" path_valid=true path_id=9");
}

TEST_F(ClientListener, ReceivesTheFieldsOfAMenuUpToItsItemCount) {
    HIDL_CI_MMI_MENU_T menu = {};
    menu.id = 5;
    menu.title = {'T', 0};
    menu.item_count = 2;
    menu.items[0] = {'a', 0};
    menu.items[1] = {'b', 0};
    menu.items[2] = {'c', 0};
    mCallback->notifyCiMmiMenu(1, 2, 3, menu);
    EXPECT_EQ(mLog.last(),
              "notifyCiMmiMenu ci=1 tag=2 condition=3 id=5 title=\"T\" subtitle=\"\" bottom=\"\" "
              "items=[\"a\", \"b\"] path_valid=false path_id=0");
    menu.item_count = 255;  // more than a menu can hold
    mCallback->notifyCiMmiMenu(1, 2, 3, menu);
    EXPECT_NE(mLog.last().find("\"c\""), std::string::npos);
}

TEST_F(ClientListener, DeclinesQuestions) {
    mCallback->queryAndroid(1, 2, 3, [](int32_t attribute, const auto& data) {
        EXPECT_EQ(attribute, -1);
        EXPECT_EQ(data.size(), 0U);
    });
    EXPECT_EQ(mLog.last(), "queryAndroid code=1 tag=2 attribute=3");
    mCallback->isMheg5MimeTypeSupported("a/b", 2, 3, [](bool supported, int32_t result) {
        EXPECT_FALSE(supported);
        EXPECT_EQ(result, -1);
    });
    EXPECT_EQ(mLog.last(), "isMheg5MimeTypeSupported mime_type=\"a/b\" tag=2 arg1=3");
}

}  // namespace
}  // namespace qortv
