// What the service sends reaches the listener: every method under its own name, every argument in
// its own place, one call at a time, none after the end.
#include "relay.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "qortv/listener.h"

namespace qortv {
namespace {

using android::sp;
using vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_ENQ_T;
using vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_MENU_T;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiCallback;

class Recorder : public Listener {
  public:
    void onNotification(const Notification& notification) override {
        mLast = toString(notification);
        ++mCount;
    }

    /** The last notification; forgotten by asking. */
    std::string last() { return std::exchange(mLast, ""); }
    int count() const { return mCount; }

  private:
    std::string mLast;
    int mCount = 0;
};

TEST(ClientRelay, PassesEveryPlainNotificationWithItsArguments) {
    Recorder listener;
    const sp<Relay> relay = new Relay(listener);
    IQorTvApiCallback& callback = *relay;
    callback.notifySvctxListener(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(),
              "notifySvctxListener svctx=1 condition=2 code=3 stream_type=4 tag=5");
    callback.notifySvctxSelect(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(), "notifySvctxSelect svctx=1 condition=2 code=3 stream_type=4 tag=5");
    callback.notifyInputSourceDetect(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(),
              "notifyInputSourceDetect component=1 condition=2 tag=3 data=4 data2=5");
    callback.notifyHighlevel(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyHighlevel code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notify3dMode(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notify3dMode type=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyReserved5(1, 2);
    EXPECT_EQ(listener.last(), "notifyReserved5 code=1 tag=2");
    callback.notifyReserved6(1, 2);
    EXPECT_EQ(listener.last(), "notifyReserved6 code=1 tag=2");
    callback.notifyNoUsedKey(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyNoUsedKey keycode=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyEas(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyEas code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyGinga(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(), "notifyGinga type=1 tag=2 arg1=3 arg2=4 arg3=5");
    callback.notifyGingaVolume(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(), "notifyGingaVolume type=1 tag=2 arg1=3 arg2=4 arg3=5");
    callback.notifyGingaUpdate(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(), "notifyGingaUpdate type=1 tag=2 arg1=3 arg2=4 arg3=5");
    callback.notifyScan(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyScan code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyBroadcast(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyBroadcast code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyScreensaverMsg(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(), "notifyScreensaverMsg message_id=1 tag=2 arg1=3 arg2=4 arg3=5");
    callback.notifyWarningMsg(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyWarningMsg code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyBanner(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyBanner code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyRating(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyRating code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyChannelLogo(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyChannelLogo type=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifySubtitle(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifySubtitle code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyPwdDlgMsg(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyPwdDlgMsg type=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyEventUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyEventUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyTimeshift(1, 2, 3, 4);
    EXPECT_EQ(listener.last(), "notifyTimeshift code=1 tag=2 arg1=3 arg2=4");
    callback.notifyDateTime(1, 2, 3);
    EXPECT_EQ(listener.last(), "notifyDateTime code=1 tag=2 arg1=3");
    callback.notifySleepTimer(1, 2, 3);
    EXPECT_EQ(listener.last(), "notifySleepTimer code=1 tag=2 arg1=3");
    callback.notifySyncSource(1, 2, 3);
    EXPECT_EQ(listener.last(), "notifySyncSource code=1 tag=2 arg1=3");
    callback.notifyPcl(1, 2, 3, 4);
    EXPECT_EQ(listener.last(), "notifyPcl pcl=1 tag=2 condition=3 data=4");
    callback.notifyEventAtsc(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyEventAtsc code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyConfig(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyConfig code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyIom(1, 2, {3, 3});
    EXPECT_EQ(listener.last(), "notifyIom tag=1 condition=2 data=<0303>");
    callback.notifyApptv(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyApptv type=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyHbbtvMsg(1, 2, {3, 3});
    EXPECT_EQ(listener.last(), "notifyHbbtvMsg code=1 tag=2 data=<0303>");
    callback.notifyOad(1, 2, "s3", 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyOad code=1 tag=2 info=\"s3\" progress=4 flag=5 arg=6");
    callback.notifyMheg5(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(), "notifyMheg5 type=1 tag=2 arg1=3 arg2=4 arg3=5");
    callback.notifyMheg5LaunchHbbtv("s1", 2, 3);
    EXPECT_EQ(listener.last(), "notifyMheg5LaunchHbbtv location=\"s1\" tag=2 arg1=3");
    callback.notifyRecord(1, 2, 3, 4);
    EXPECT_EQ(listener.last(), "notifyRecord code=1 tag=2 arg1=3 arg2=4");
    callback.notifyAudioInfo(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyAudioInfo code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyUpgrade(1, 2, 3, 4);
    EXPECT_EQ(listener.last(), "notifyUpgrade type=1 state=2 progress=3 tag=4");
    callback.notifyChannelListUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyChannelListUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyTvProviderUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyTvProviderUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifySvlIdUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifySvlIdUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyTslIdUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyTslIdUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyNwlUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyNwlUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyListModeUpdate(1, 2, 3, 4);
    EXPECT_EQ(listener.last(), "notifyListModeUpdate code=1 tag=2 arg1=3 arg2=4");
    callback.notifyOclScanInfo(1, 2, 3, 4);
    EXPECT_EQ(listener.last(), "notifyOclScanInfo code=1 tag=2 arg1=3 arg2=4");
    callback.notifyEwspa(1, 2);
    EXPECT_EQ(listener.last(), "notifyEwspa type=1 tag=2");
    callback.notifyTeletext(1, 2, 3, 4, 5);
    EXPECT_EQ(listener.last(), "notifyTeletext code=1 tag=2 arg1=3 arg2=4 arg3=5");
    callback.notifyBisskeyUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyBisskeyUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifySatlListUpdate(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifySatlListUpdate code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyCi(1, 2, 3, {4, 4});
    EXPECT_EQ(listener.last(), "notifyCi ci=1 tag=2 condition=3 data=<0404>");
    callback.notifyConcernColumn(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(listener.last(), "notifyConcernColumn code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6");
    callback.notifyBmlMsg(1, 2, {3, 3});
    EXPECT_EQ(listener.last(), "notifyBmlMsg code=1 tag=2 data=<0303>");
    callback.notifyHtmlAgent(1, 2, {3, 3});
    EXPECT_EQ(listener.last(), "notifyHtmlAgent code=1 tag=2 data=<0303>");
    callback.notifyVideoInfo(1, 2, 3, 4, 5, 6, 7, 8);
    EXPECT_EQ(listener.last(),
              "notifyVideoInfo code=1 tag=2 arg1=3 arg2=4 arg3=5 arg4=6 arg5=7 arg6=8");
    callback.notifyReserved58(1, 2);
    EXPECT_EQ(listener.last(), "notifyReserved58 code=1 tag=2");
    callback.notifyTtsMsg(1, "s2", 3);
    EXPECT_EQ(listener.last(), "notifyTtsMsg tag=1 data=\"s2\" length=3");
    callback.notifyMdsMsg(1, "s2", 3);
    EXPECT_EQ(listener.last(), "notifyMdsMsg tag=1 data=\"s2\" length=3");
    callback.notifyEws(1, 2);
    EXPECT_EQ(listener.last(), "notifyEws type=1 tag=2");
    EXPECT_EQ(listener.count(), 58);
}

TEST(ClientRelay, KeepsTheFullWidthOfArguments) {
    Recorder listener;
    const sp<Relay> relay = new Relay(listener);
    relay->notifyScan(INT32_MIN, UINT64_MAX, 0, 1, 2, UINT64_MAX - 1);
    EXPECT_EQ(listener.last(),
              "notifyScan code=-2147483648 tag=18446744073709551615 arg1=0 arg2=1 arg3=2 "
              "arg4=18446744073709551614");
    relay->notifyScreensaverMsg(1, 2, INT64_MIN, 0, INT64_MAX);
    EXPECT_EQ(listener.last(),
              "notifyScreensaverMsg message_id=1 tag=2 arg1=-9223372036854775808 arg2=0 "
              "arg3=9223372036854775807");
}

TEST(ClientRelay, DecodesAnEnquiry) {
    Recorder listener;
    const sp<Relay> relay = new Relay(listener);
    HIDL_CI_MMI_ENQ_T enquiry = {};
    enquiry.id = 3;
    enquiry.answer_length = 4;
    enquiry.blind_answer = true;
    enquiry.text = {'P', 0xEF, 0x20AC, 0xD83D, 0xDCFA, 0xD800, 'x', 0, 'y'};
    enquiry.path_valid = true;
    enquiry.path_id = 9;
    relay->notifyCiMmiEnquiry(1, 2, 3, enquiry);
    EXPECT_EQ(listener.last(),
              "notifyCiMmiEnquiry ci=1 tag=2 condition=3 id=3 answer_length=4 blind_answer=true "
              "text=\"Pï€\xF0\x9F\x93\xBA\xEF\xBF\xBDx\" path_valid=true path_id=9");
}

TEST(ClientRelay, DecodesAMenuUpToItsItemCount) {
    Recorder listener;
    const sp<Relay> relay = new Relay(listener);
    HIDL_CI_MMI_MENU_T menu = {};
    menu.id = 5;
    menu.title = {'T', 0};
    menu.item_count = 2;
    menu.items[0] = {'a', 0};
    menu.items[1] = {'b', 0};
    menu.items[2] = {'c', 0};
    relay->notifyCiMmiMenu(1, 2, 3, menu);
    EXPECT_EQ(listener.last(),
              "notifyCiMmiMenu ci=1 tag=2 condition=3 id=5 title=\"T\" subtitle=\"\" bottom=\"\" "
              "items=[\"a\", \"b\"] path_valid=false path_id=0");
    menu.item_count = 255;  // more than a menu can hold
    relay->notifyCiMmiMenu(1, 2, 3, menu);
    EXPECT_NE(listener.last().find("\"c\""), std::string::npos);
}

TEST(ClientRelay, AListenerThatOnlyListensDeclinesQuestions) {
    Recorder listener;
    const sp<Relay> relay = new Relay(listener);
    relay->queryAndroid(1, 2, 3, [](int32_t attribute, const auto& data) {
        EXPECT_EQ(attribute, -1);
        EXPECT_EQ(data.size(), 0U);
    });
    EXPECT_EQ(listener.last(), "queryAndroid code=1 tag=2 attribute=3");
    relay->isMheg5MimeTypeSupported("a/b", 2, 3, [](bool supported, int32_t result) {
        EXPECT_FALSE(supported);
        EXPECT_EQ(result, -1);
    });
    EXPECT_EQ(listener.last(), "isMheg5MimeTypeSupported mime_type=\"a/b\" tag=2 arg1=3");
}

TEST(ClientRelay, AnswersWhatTheListenerAnswers) {
    struct : Listener {
        AndroidAnswer queryAndroid(uint32_t code, uint64_t, uint32_t attribute) override {
            return {static_cast<int32_t>(code + attribute), {7, 8}};
        }
        MimeTypeAnswer isMheg5MimeTypeSupported(const hidl_string& mimeType, uint64_t,
                                                int32_t) override {
            return {mimeType == "image/png", 0};
        }
    } listener;
    const sp<Relay> relay = new Relay(listener);
    int answers = 0;
    relay->queryAndroid(1, 2, 3, [&](int32_t attribute, const auto& data) {
        ++answers;
        EXPECT_EQ(attribute, 4);
        EXPECT_EQ(std::vector<uint8_t>(data), (std::vector<uint8_t>{7, 8}));
    });
    relay->isMheg5MimeTypeSupported("image/png", 2, 3, [&](bool supported, int32_t result) {
        ++answers;
        EXPECT_TRUE(supported);
        EXPECT_EQ(result, 0);
    });
    EXPECT_EQ(answers, 2);
}

TEST(ClientRelay, AnOverriddenMethodHearsItsOwnNotificationAndNothingElse) {
    struct : Listener {
        void notifyDateTime(int32_t code, uint64_t, uint64_t) override { heard.push_back(code); }
        std::vector<int32_t> heard;
    } listener;
    const sp<Relay> relay = new Relay(listener);
    relay->notifyDateTime(5, 0, 0);
    relay->notifySleepTimer(6, 0, 0);
    EXPECT_EQ(listener.heard, (std::vector<int32_t>{5}));
}

TEST(ClientRelay, IsSilentOnceClosed) {
    Recorder listener;
    const sp<Relay> relay = new Relay(listener);
    relay->notifyEws(1, 2);
    EXPECT_EQ(listener.count(), 1);
    relay->close();
    relay->notifyEws(1, 2);
    int answers = 0;
    relay->queryAndroid(1, 2, 3, [&](int32_t attribute, const auto&) {
        ++answers;
        EXPECT_EQ(attribute, -1);
    });
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(listener.count(), 1);
}

TEST(ClientRelay, CloseWaitsForTheCallThatIsRunning) {
    struct : Listener {
        void onNotification(const Notification&) override {
            entered.set_value();
            leave.get_future().wait();
        }
        std::promise<void> entered;
        std::promise<void> leave;
    } listener;
    const sp<Relay> relay = new Relay(listener);
    std::thread caller([&] { relay->notifyEws(1, 2); });
    listener.entered.get_future().wait();
    std::promise<void> closed;
    std::future<void> isClosed = closed.get_future();
    std::thread closer([&] {
        relay->close();
        closed.set_value();
    });
    // Long enough for a close() that does not wait.
    EXPECT_EQ(isClosed.wait_for(std::chrono::milliseconds{50}), std::future_status::timeout);
    listener.leave.set_value();
    closer.join();
    caller.join();
    EXPECT_EQ(isClosed.wait_for(std::chrono::milliseconds{0}), std::future_status::ready);
}

TEST(ClientRelay, CallsTheListenerOnceAtATime) {
    struct : Listener {
        void onNotification(const Notification&) override {
            if (inside.exchange(true)) overlapped = true;
            std::this_thread::yield();
            inside = false;
            ++count;
        }
        std::atomic<bool> inside{false};
        std::atomic<bool> overlapped{false};
        int count = 0;
    } listener;
    const sp<Relay> relay = new Relay(listener);
    std::vector<std::thread> callers;
    for (int i = 0; i < 4; ++i) {
        callers.emplace_back([&] {
            for (int j = 0; j < 500; ++j) relay->notifyEws(j, 0);
        });
    }
    for (auto& caller : callers) caller.join();
    EXPECT_FALSE(listener.overlapped);
    EXPECT_EQ(listener.count, 2000);
}

TEST(ClientRelay, StaysUsableAfterAListenerThatThrew) {
    struct : Listener {
        void onNotification(const Notification&) override {
            if (++count == 1) throw std::runtime_error("no");
        }
        int count = 0;
    } listener;
    const sp<Relay> relay = new Relay(listener);
    EXPECT_THROW(relay->notifyEws(1, 2), std::runtime_error);
    relay->notifyEws(1, 2);
    EXPECT_EQ(listener.count, 2);
}

}  // namespace
}  // namespace qortv
