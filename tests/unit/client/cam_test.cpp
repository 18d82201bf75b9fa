// The CAM as an application meets it: requests through the service's own implementation to a
// middleware that the test plays, and notifications as events.
#include "qortv/cam.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "QorTvApiCIImpl.h"
#include "middleware/ci.h"
#include "middleware/result_codes.h"
#include "relay.h"
#include "television/switchboard/switchboard.h"
#include "utf16.h"

namespace qortv {
namespace {

using android::sp;
using vendor::corvanta::tv::qortvapi::V1_0::implementation::QorTvApiCIImpl;
using Units = std::vector<uint16_t>;
using Bytes = std::vector<uint8_t>;

constexpr char kScreen[] = "\xF0\x9F\x93\xBA";  // U+1F4FA

TEST(ClientUtf16, RoundTripsBeyondTheBasicPlane) {
    const std::string text = std::string("a\xC3\xA9\xE2\x82\xAC") + kScreen + "\xF4\x8F\xBF\xBF";
    const Units units = {'a', 0xE9, 0x20AC, 0xD83D, 0xDCFA, 0xDBFF, 0xDFFF};
    EXPECT_EQ(toUtf16(text), units);
    EXPECT_EQ(toUtf8(units.data(), units.size()), text);
}

TEST(ClientUtf16, StopsAtAZeroUnitAndAtTheCount) {
    const Units units = {'a', 'b', 0, 'c'};
    EXPECT_EQ(toUtf8(units.data(), units.size()), "ab");
    EXPECT_EQ(toUtf8(units.data(), 1), "a");
    EXPECT_EQ(toUtf8(nullptr, 0), "");
}

TEST(ClientUtf16, ReplacesWhatIsNoCharacter) {
    const Units halves = {0xDCFA, 'x', 0xD83D};
    EXPECT_EQ(toUtf8(halves.data(), halves.size()), "\xEF\xBF\xBDx\xEF\xBF\xBD");
    EXPECT_EQ(toUtf16("x\xFF\xED\xA0\xBD"), (Units{'x', 0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD}));
}

/** A CAM whose answers are set by each test, and what reached it. */
class ClientCam : public testing::Test {
  protected:
    ClientCam() {
        mTv.on<&a_qortvapi_ci_get>([this](uint32_t type, uint32_t, void* data, uint32_t* length) {
            mRead.push_back(type);
            if (mResult != TV_OK) return mResult;
            const Bytes value = type == QORTVAPI_CI_GET_TYPE_CAM_NAME ||
                                                type == QORTVAPI_CI_GET_TYPE_PROFILE_NAME
                                        ? writeText(data, length)
                                        : mValue;
            if (!value.empty()) {
                EXPECT_LE(value.size(), *length);
                std::memcpy(data, value.data(), value.size());
                *length = static_cast<uint32_t>(value.size());
            }
            return mResult;
        });
        mTv.on<&a_qortvapi_ci_set>([this](uint32_t type, uint32_t, const void* data) {
            mSet.push_back(type);
            if (type == QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS) {
                std::memcpy(&mMenuAnswer, data, sizeof mMenuAnswer);
            } else if (type == QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS) {
                std::memcpy(&mAnswer, data, sizeof mAnswer);
                for (const uint16_t* unit = mAnswer.w2s_text; *unit != 0; ++unit) {
                    mText.push_back(*unit);
                }
            } else if (type == QORTVAPI_CI_SET_TYPE_PIN_CMD) {
                mPin = static_cast<const char*>(data);
            }
            return mResult;
        });
    }

    Bytes writeText(void* data, uint32_t* length) {
        const auto room = *length;
        *length = static_cast<uint32_t>(mName.size());
        if (data != nullptr) {
            EXPECT_GE(room, mName.size());
            std::memcpy(data, mName.data(), mName.size() * sizeof(uint16_t));
        }
        return {};
    }

    static void expectRefused(const std::string& what, const std::function<void()>& request) {
        try {
            request();
            ADD_FAILURE() << "not refused: " << what;
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), Error::Kind::kRefused);
            EXPECT_EQ(error.what(), "the television refused to " + what + ": not found (code -2)");
        }
    }

    static std::string argumentError(const std::function<void()>& request) {
        try {
            request();
        } catch (const Error& error) {
            EXPECT_EQ(error.kind(), Error::Kind::kArgument) << error.what();
            return error.what();
        }
        return "";
    }

    int32_t mResult = TV_OK;
    Bytes mValue;  // what a read answers; a text is mName
    Units mName;
    std::vector<uint32_t> mRead;
    std::vector<uint32_t> mSet;
    CI_MMI_MENU_ANS_T mMenuAnswer = {};
    CI_MMI_ENQ_ANS_T mAnswer = {};  // its text is gone with the call
    Units mText;
    std::string mPin;
    switchboard::Switchboard mTv;
    Cam mCam{new QorTvApiCIImpl};
};

TEST_F(ClientCam, ReadsTheNameAtItsLength) {
    mName = {'C', 0xD83D, 0xDCFA, 'M', 0};
    EXPECT_EQ(mCam.name(), std::string("C") + kScreen + "M");
    EXPECT_EQ(mRead, (std::vector<uint32_t>{QORTVAPI_CI_GET_TYPE_CAM_NAME,
                                            QORTVAPI_CI_GET_TYPE_CAM_NAME}));
    mName = {};
    EXPECT_EQ(mCam.name(), "");
}

TEST_F(ClientCam, ReadsWhatItIs) {
    mValue = {0, 1, 2, 3, 4, 5, 6, 0xFF};
    EXPECT_EQ(mCam.id(), (std::array<uint8_t, 8>{0, 1, 2, 3, 4, 5, 6, 0xFF}));
    mValue = {'e', 'n', 'g'};
    EXPECT_EQ(mCam.language(), "eng");
    mName = {'P', 0xE9, 0};
    EXPECT_EQ(mCam.profile(), "P\xC3\xA9");
    mValue = {3};
    EXPECT_EQ(mCam.pinTries(), 3);
    mValue = {0};
    EXPECT_EQ(mCam.pinTries(), 0) << "locked";
    mResult = TV_NOT_SUPPORTED;
    EXPECT_EQ(mCam.pinTries(), std::nullopt) << "a module without a PIN";
}

TEST_F(ClientCam, KnowsTheSlot) {
    mValue = {CI_SLOT_STATE_EMPTY};
    EXPECT_EQ(mCam.slot(), CamSlot::kEmpty);
    mValue = {CI_SLOT_STATE_READY};
    EXPECT_EQ(mCam.slot(), CamSlot::kReady);
    mValue = {CI_SLOT_STATE_UPGRADING};
    EXPECT_EQ(mCam.slot(), CamSlot::kUpgrading);
    EXPECT_STREQ(name(mCam.slot()), "upgrading");
}

TEST_F(ClientCam, OpensAndCloses) {
    mCam.openMenu();
    mCam.close();
    EXPECT_EQ(mSet, (std::vector<uint32_t>{QORTVAPI_CI_SET_TYPE_MMI_ENTER,
                                           QORTVAPI_CI_SET_TYPE_MMI_CLOSE}));
}

TEST_F(ClientCam, ChoosesAndGoesBack) {
    CamMenu menu;
    menu.id = 0x12345678;
    menu.items = {"a", "b"};
    mCam.choose(menu, 2);
    EXPECT_EQ(mMenuAnswer.ui4_id, 0x12345678U);
    EXPECT_EQ(mMenuAnswer.ui1_answer, 2);
    mCam.back(menu);
    EXPECT_EQ(mMenuAnswer.ui1_answer, CI_MMI_MENU_BACK);
    EXPECT_EQ(mSet.size(), 2U);
}

TEST_F(ClientCam, AChoiceThatIsNotOfferedIsNotSent) {
    CamMenu menu;
    EXPECT_EQ(argumentError([&] { mCam.choose(menu, 1); }), "there is nothing to choose from");
    menu.items = {"a", "b"};
    EXPECT_EQ(argumentError([&] { mCam.choose(menu, 0); }), "the items are 1 to 2, not 0");
    EXPECT_EQ(argumentError([&] { mCam.choose(menu, 3); }), "the items are 1 to 2, not 3");
    EXPECT_TRUE(mSet.empty());
}

TEST_F(ClientCam, AnswersWithATerminatedText) {
    CamEnquiry enquiry;
    enquiry.id = 9;
    enquiry.answerLength = 4;
    mCam.answer(enquiry, std::string("x") + kScreen + "y");
    EXPECT_EQ(mAnswer.ui4_id, 9U);
    EXPECT_EQ(mAnswer.ui1_answer, CI_MMI_ENQ_ANSWERED);
    EXPECT_EQ(mText, (Units{'x', 0xD83D, 0xDCFA, 'y'}));
    mText.clear();
    mCam.back(enquiry);
    EXPECT_EQ(mAnswer.ui1_answer, CI_MMI_ENQ_CANCELLED);
    EXPECT_TRUE(mText.empty());
}

TEST_F(ClientCam, AnAnswerThatIsTooLongIsNotSentAndNotTold) {
    CamEnquiry enquiry;
    enquiry.answerLength = 4;
    EXPECT_EQ(argumentError([&] { mCam.answer(enquiry, "48151"); }),
              "the answer is longer than the 4 characters that the CAM asks for");
    EXPECT_TRUE(mSet.empty());
}

TEST_F(ClientCam, GivesThePin) {
    mCam.enterPin("4815");
    EXPECT_EQ(mPin, "4815");
    for (const char* bad : {"", "48x5", "48 15", "+815"}) {
        EXPECT_EQ(argumentError([&] { mCam.enterPin(bad); }), "a PIN has digits and nothing else");
    }
    EXPECT_EQ(mSet.size(), 1U);
}

TEST_F(ClientCam, ARefusalSaysWhatWasRefused) {
    mResult = TV_NOT_FOUND;
    CamMenu menu;
    menu.items = {"a"};
    const CamEnquiry enquiry;
    expectRefused("read the CAM's name", [&] { mCam.name(); });
    expectRefused("read the CAM's id", [&] { mCam.id(); });
    expectRefused("read the CAM's language", [&] { mCam.language(); });
    expectRefused("read the CAM's profile", [&] { mCam.profile(); });
    expectRefused("tell the tries for the CAM's PIN", [&] { mCam.pinTries(); });
    expectRefused("open the CAM's menu", [&] { mCam.openMenu(); });
    expectRefused("close the CAM's dialogue", [&] { mCam.close(); });
    expectRefused("take this choice", [&] { mCam.choose(menu, 1); });
    expectRefused("leave this menu", [&] { mCam.back(menu); });
    expectRefused("take this answer", [&] { mCam.answer(enquiry, ""); });
    expectRefused("leave this question", [&] { mCam.back(enquiry); });
    expectRefused("look at the PIN", [&] { mCam.enterPin("4815"); });
}

TEST_F(ClientCam, ListensThroughTheServicesOneRegistration) {
    int registrations = 0;
    mTv.on<&a_qortvapi_ci_reg_cb>([&](uint32_t* handle, uint32_t, uint32_t, auto) {
        ++registrations;
        *handle = 1;
        return int32_t{TV_OK};
    });
    mCam.listen();
    mCam.listen();
    EXPECT_EQ(registrations, 1);
}

/** What an application hears. */
class ClientCamEvents : public testing::Test {
  protected:
    struct Recorder : CamListener {
        void onCamEvent(const CamEvent& event) override { events.push_back(event); }
        void onNotification(const Notification& notification) override {
            others.push_back(toString(notification));
        }
        std::vector<CamEvent> events;
        std::vector<std::string> others;
    };

    template <typename T>
    T heard(int32_t condition, const Bytes& data) {
        mRelay->notifyCi(1, 2, condition, data);
        return taken<T>();
    }

    template <typename T>
    T taken() {
        EXPECT_EQ(mListener.events.size(), 1U);
        if (mListener.events.empty()) return {};
        const CamEvent event = mListener.events.back();
        mListener.events.clear();
        const T* wanted = std::get_if<T>(&event);
        EXPECT_NE(wanted, nullptr) << "another kind of event: " << event.index();
        return wanted == nullptr ? T{} : *wanted;
    }

    Recorder mListener;
    const sp<Relay> mRelay = new Relay(mListener);
};

TEST_F(ClientCamEvents, AMenuHasItsTextsAndTellsMissingFromEmpty) {
    Listener::HIDL_CI_MMI_MENU_T menu = {};
    menu.id = 7;
    menu.subtitle = {0};
    menu.bottom = {'b', 0};
    menu.item_count = 2;
    menu.items[0] = {0xD83D, 0xDCFA, 0};
    menu.items[1] = {0};
    menu.items[2] = {'n', 'o', 0};
    mRelay->notifyCiMmiMenu(1, 2, QORTVAPI_CI_NFY_COND_MMI_MENU, menu);
    const auto heard = taken<CamMenu>();
    EXPECT_EQ(heard.id, 7U);
    EXPECT_EQ(heard.title, std::nullopt);
    EXPECT_EQ(heard.subtitle, "");
    EXPECT_EQ(heard.bottom, "b");
    EXPECT_EQ(heard.items, (std::vector<std::string>{kScreen, ""}));

    menu.item_count = 0;
    mRelay->notifyCiMmiMenu(1, 2, QORTVAPI_CI_NFY_COND_MMI_LIST, menu);
    EXPECT_TRUE(taken<CamList>().items.empty());
    menu.item_count = 255;  // more than there is room for
    mRelay->notifyCiMmiMenu(1, 2, QORTVAPI_CI_NFY_COND_MMI_LIST, menu);
    EXPECT_EQ(taken<CamList>().items.size(), 64U);
}

TEST_F(ClientCamEvents, AnEnquirySaysHowToAnswer) {
    Listener::HIDL_CI_MMI_ENQ_T enquiry = {};
    enquiry.id = 8;
    enquiry.answer_length = 4;
    enquiry.blind_answer = true;
    enquiry.text = {'P', 'I', 'N', 0};
    mRelay->notifyCiMmiEnquiry(1, 2, QORTVAPI_CI_NFY_COND_MMI_ENQUIRY, enquiry);
    auto heard = taken<CamEnquiry>();
    EXPECT_EQ(heard.id, 8U);
    EXPECT_EQ(heard.answerLength, 4);
    EXPECT_TRUE(heard.blind);
    EXPECT_EQ(heard.text, "PIN");
    enquiry.text = Units{};
    enquiry.blind_answer = false;
    mRelay->notifyCiMmiEnquiry(1, 2, QORTVAPI_CI_NFY_COND_MMI_ENQUIRY, enquiry);
    heard = taken<CamEnquiry>();
    EXPECT_EQ(heard.text, std::nullopt);
    EXPECT_FALSE(heard.blind);
}

TEST_F(ClientCamEvents, TheRestIsNumbers) {
    using By = CamClosed::By;
    EXPECT_EQ(heard<CamClosed>(QORTVAPI_CI_NFY_COND_MMI_CLOSE, {0, 0}).by, By::kModule);
    EXPECT_EQ(heard<CamClosed>(QORTVAPI_CI_NFY_COND_MMI_CLOSE, {1, 0}).by, By::kHost);
    EXPECT_EQ(heard<CamClosed>(QORTVAPI_CI_NFY_COND_MMI_CLOSE, {2, 0}).by, By::kRemoval);
    EXPECT_TRUE(heard<CamCard>(QORTVAPI_CI_NFY_COND_CARD_INSERT, {1, 0, 0, 0}).inserted);
    EXPECT_FALSE(heard<CamCard>(QORTVAPI_CI_NFY_COND_CARD_INSERT, {0, 0, 0, 0}).inserted);
    EXPECT_EQ(heard<CamPinReply>(QORTVAPI_CI_NFY_COND_PIN_REPLY, {0, 0, 0, 0}).state,
              CamPin::kWrong);
    EXPECT_EQ(heard<CamPinReply>(QORTVAPI_CI_NFY_COND_PIN_REPLY, {1, 0, 0, 0}).state,
              CamPin::kRight);
    EXPECT_EQ(heard<CamPinReply>(QORTVAPI_CI_NFY_COND_PIN_REPLY, {2, 0, 0, 0}).state,
              CamPin::kLocked);
    EXPECT_EQ(heard<CamUpgrade>(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE, {4, 3, 2, 1}).version,
              0x01020304U);
    EXPECT_EQ(heard<CamUpgradeProgress>(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS, {99, 0})
                      .percent,
              99);
    const auto fault = heard<CamFault>(QORTVAPI_CI_NFY_COND_ERROR,
                                       {CI_ERROR_UPGRADE_BROKEN, 0, 0, 0, 40, 0, 0, 0});
    EXPECT_EQ(fault.kind, CamFault::Kind::kUpgradeBroken);
    EXPECT_EQ(fault.percent, 40U);
    EXPECT_EQ(heard<CamFault>(QORTVAPI_CI_NFY_COND_ERROR,
                              {CI_ERROR_UNUSABLE_MODULE, 0, 0, 0, 0, 0, 0, 0})
                      .kind,
              CamFault::Kind::kUnusable);
    EXPECT_TRUE(mListener.others.empty());
}

TEST_F(ClientCamEvents, FewerBytesThanExpectedAreZeros) {
    EXPECT_FALSE(heard<CamCard>(QORTVAPI_CI_NFY_COND_CARD_INSERT, {}).inserted);
    EXPECT_EQ(heard<CamUpgrade>(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE, {7}).version, 7U);
}

TEST_F(ClientCamEvents, WhatIsNoEventIsANotification) {
    mRelay->notifyCi(1, 2, 66, {3});
    mRelay->notifyCi(1, 2, QORTVAPI_CI_NFY_COND_PIN_REPLY, {99, 0, 0, 0});
    mRelay->notifyCi(1, 2, QORTVAPI_CI_NFY_COND_ERROR, {99, 0, 0, 0});
    mRelay->notifyDateTime(1, 2, 3);
    EXPECT_TRUE(mListener.events.empty());
    EXPECT_EQ(mListener.others,
              (std::vector<std::string>{"notifyCi ci=1 tag=2 condition=66 data=<03>",
                                        "notifyCi ci=1 tag=2 condition=42 data=<63000000>",
                                        "notifyCi ci=1 tag=2 condition=23 data=<63000000>",
                                        "notifyDateTime code=1 tag=2 arg1=3"}));
}

}  // namespace
}  // namespace qortv
