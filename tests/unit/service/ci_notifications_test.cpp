/** The notifications of the CI module, and the registration of their one handler. */
#include <unistd.h>

#include <cstddef>
#include <thread>
#include <tuple>

#include "QorTvApiCIImpl.h"
#include "middleware/ci.h"
#include "support/core_fixture.h"
#include "support/fan_out_check.h"

namespace {

using Texts = std::vector<std::string>;
using Units = std::vector<uint16_t>;
using switchboard::Switchboard;

constexpr char kTag[] = "hh_qortvapi_ci";
constexpr char kHandler[] = "_ci_nfy_fct";
constexpr uint32_t kHandle = 0xfedcba98;
// The call of a client with that handle and the lower half of opaquePointer(9), to be followed by
// condition and data.
constexpr char kCallFront[] = "(4275878552, 1985229321, ";

/** The handler, which the service hands over once in the life of the process. */
a_qortvapi_ci_nfy_fct registeredOnce() {
    static const a_qortvapi_ci_nfy_fct handler = [] {
        a_qortvapi_ci_nfy_fct found = nullptr;
        Switchboard tv;
        tv.on<&a_qortvapi_ci_reg_cb>(
                [&](uint32_t*, uint32_t, uint32_t, a_qortvapi_ci_nfy_fct its_handler) {
                    found = its_handler;
                    return 0;
                });
        const sp<QorTvApiCIImpl> impl = new QorTvApiCIImpl();
        impl->a_hidl_a_qortvapi_ci_reg_callback(1, 2, [](uint32_t, int32_t) {});
        return found;
    }();
    return handler;
}

/** Keeps the dialogues that it receives, and the addresses of their texts. */
class DialogueClient : public RecordingClient {
  public:
    std::vector<HIDL_CI_MMI_ENQ_T> enquiries;
    std::vector<HIDL_CI_MMI_MENU_T> menus;
    std::vector<const uint16_t*> places;

    Return<void> notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                                    const HIDL_CI_MMI_ENQ_T& enquiry) override {
        enquiries.push_back(enquiry);
        places = {enquiry.text.data()};
        return RecordingClient::notifyCiMmiEnquiry(ci, tag, condition, enquiry);
    }
    Return<void> notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                                 const HIDL_CI_MMI_MENU_T& menu) override {
        menus.push_back(menu);
        places = {menu.title.data(), menu.subtitle.data(), menu.bottom.data(),
                  menu.items[0].data()};
        return RecordingClient::notifyCiMmiMenu(ci, tag, condition, menu);
    }
};

class ServiceCiNotifications : public ServiceTest {
  protected:
    ServiceCiNotifications() { log.take(); }

    void expectBytes(int32_t condition, const std::string& bytes, const Texts& names, void* data) {
        SCOPED_TRACE(condition);
        const std::string number = std::to_string(condition);
        ExpectedFanOut expected = {
                kHandler,
                kTag,
                std::string("notifyCi") + kCallFront + number + ", <" + bytes + ">)",
                {"e_nfy_cond = " + number + "\n"},
                {}};
        for (const std::string& name : names) {
            expected.debug_lines.push_back(std::string(kHandler) + " " + name);
        }
        checkFanOut(expected, log, [&] { handler(kHandle, opaquePointer(9), condition, data); });
    }

    /** Shows `record` to two clients, of which the first fails. `sizes` are the lengths of its
     * texts as they are logged, -1 for a null one. Returns the client that did not fail. */
    sp<DialogueClient> show(const std::string& method, int32_t condition, const std::string& name,
                            void* record, uint32_t id, const std::vector<int>& sizes) {
        const std::string number = std::to_string(condition);
        std::vector<LogLine> lines = {
                debugLine(kTag, kHandler, "e_nfy_cond = " + number + "\n"),
                debugLine(kTag, kHandler, std::string(kHandler) + " " + name)};
        for (const int size : sizes) {
            lines.push_back(debugLine(
                    kTag, "_getStrSize",
                    size < 0 ? "_getStrSize" : "_getStrSize size:" + std::to_string(size)));
        }
        const sp<DialogueClient> failing = new DialogueClient();
        failing->status = Status::fromStatusT(::android::DEAD_OBJECT);
        lines.push_back(debugLine(kTag, kHandler, failing->status.description()));
        const sp<DialogueClient> client = new DialogueClient();
        QorTvApiImpl::getCallbackHandlers() = {{1, failing}, {2, client}};
        log.take();
        handler(kHandle, opaquePointer(9), condition, record);
        EXPECT_EQ(log.take(), lines);
        const Texts calls = {method + kCallFront + number + ", " + std::to_string(id) + ")"};
        EXPECT_EQ(failing->calls(), calls);
        EXPECT_EQ(client->calls(), calls);

        mTvApiDebug = 0;
        QorTvApiImpl::getCallbackHandlers().erase(1);
        handler(kHandle, opaquePointer(9), condition, record);
        EXPECT_TRUE(log.take().empty());
        mTvApiDebug = 1;
        return client;
    }

    sp<DialogueClient> showMenu(CI_MMI_MENU_T& menu, const std::vector<int>& sizes,
                                int32_t condition = 4) {
        return show("notifyCiMmiMenu", condition, "QORTVAPI_CI_NFY_COND_MMI_MENU/LIST", &menu,
                    menu.ui4_id, sizes);
    }

    const a_qortvapi_ci_nfy_fct handler = registeredOnce();
};

TEST_F(ServiceCiNotifications, ofAValueCarryTheDataArgument) {
    void* const data = opaquePointer(0x81);  // 0xfedcba9876543281: the lower half is the value
    const std::string bytes = "81325476";
    for (const int32_t condition : {1, 2, 17, 21, 22, 30, 31, 32, 57, 58, 59, 60}) {
        expectBytes(condition, bytes, {}, data);
    }
    expectBytes(0, bytes, {"QORTVAPI_CI_NFY_COND_CARD_INSERT", "no CI_IGNORE_CAM_INSERT_BOOTUP"},
                data);
    expectBytes(42, bytes, {"QORTVAPI_CI_NFY_COND_PIN_REPLY, pin_code_status:1985229441"}, data);
    expectBytes(66, bytes, {"QORTVAPI_CI_NFY_COND_HDS_REQUEST, hds_cmd:1985229441"}, data);
    expectBytes(2, "00000000", {}, nullptr);
}

TEST_F(ServiceCiNotifications, ofARecordCarryItsFirstBytes) {
    uint8_t data[20];
    std::string bytes;
    for (uint8_t i = 0; i < sizeof(data); ++i) {
        data[i] = 0xa0 + i;
        bytes += (i < 16 ? "a" : "b") + std::string(1, "0123456789abcdef"[i % 16]);
    }
    expectBytes(6, bytes.substr(0, 4),
                {"QORTVAPI_CI_NFY_COND_MMI_CLOSE", "sizeof(CI_MMI_ENQ_CLOSE_T):2"}, data);
    expectBytes(15, bytes.substr(0, 8), {"QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE"}, data);
    expectBytes(16, bytes.substr(0, 4), {"QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS"}, data);
    expectBytes(23, bytes.substr(0, 16), {"QORTVAPI_CI_NFY_COND_ERROR"}, data);
    expectBytes(29, bytes, {}, data);
}

TEST_F(ServiceCiNotifications, ofARecordAreNotCopied) {
    const sp<RecordingClient> client = new RecordingClient();
    QorTvApiImpl::getCallbackHandlers() = {{1, client}};
    uint8_t data[20] = {};
    for (const int32_t condition : {6, 15, 16, 23, 29}) {
        client->lastData = nullptr;
        handler(kHandle, nullptr, condition, data);
        EXPECT_EQ(client->lastData, data) << condition;
    }
}

TEST_F(ServiceCiNotifications, beforeAServiceChangeAreEmpty) {
    expectBytes(61, "", {"QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE_SILENTLY"}, opaquePointer(1));
    expectBytes(62, "", {"QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE"}, opaquePointer(1));
}

TEST_F(ServiceCiNotifications, ofOtherConditionsReachNobody) {
    const sp<RecordingClient> client = new RecordingClient();
    QorTvApiImpl::getCallbackHandlers() = {{1, client}};
    std::vector<int32_t> conditions = {-1, INT32_MIN, 67, INT32_MAX};
    for (const auto& [first, last] :
         {std::pair{7, 14}, {18, 20}, {24, 28}, {33, 41}, {43, 56}, {63, 65}}) {
        for (int32_t condition = first; condition <= last; ++condition) {
            conditions.push_back(condition);
        }
    }
    for (const int32_t condition : conditions) {
        const std::string number = std::to_string(condition);
        handler(kHandle, opaquePointer(9), condition, nullptr);
        EXPECT_EQ(log.take(),
                  (std::vector<LogLine>{debugLine(kTag, kHandler, "e_nfy_cond = " + number + "\n"),
                                        debugLine(kTag, kHandler,
                                                  "_ci_nfy_fct doesn't notify this msg(nfy_cond:" +
                                                          number + ")")}));
    }
    EXPECT_TRUE(client->calls().empty());
}

TEST_F(ServiceCiNotifications, holdTheRegistryWhileTheyCall) {
    const sp<RecordingClient> client = new RecordingClient();
    bool was_free = true;
    client->onCall = [&] {
        std::thread([&] {
            was_free = QorTvApiImpl::getCallbackMutex().try_lock();
            if (was_free) QorTvApiImpl::getCallbackMutex().unlock();
        }).join();
    };
    QorTvApiImpl::getCallbackHandlers() = {{1, client}};
    handler(kHandle, nullptr, 1, nullptr);
    EXPECT_EQ(client->calls().size(), 1u);
    EXPECT_FALSE(was_free);
    ASSERT_TRUE(QorTvApiImpl::getCallbackMutex().try_lock()) << "free again behind it";
    QorTvApiImpl::getCallbackMutex().unlock();
}

TEST_F(ServiceCiNotifications, areLoggedOnceTheRegistryIsTheirs) {
    CI_MMI_MENU_T menu = {};
    CI_MMI_ENQ_T enquiry = {};
    for (const auto& [condition, record] : std::vector<std::pair<int32_t, void*>>{
                 {0, nullptr}, {3, &enquiry}, {4, &menu}, {7, nullptr}}) {
        SCOPED_TRACE(condition);
        const sp<RecordingClient> client = new RecordingClient();
        QorTvApiImpl::getCallbackHandlers() = {{1, client}};
        expectToWaitForTheRegistry(
                [&, code = condition, data = record] { handler(kHandle, nullptr, code, data); },
                [&] {
                    EXPECT_EQ(log.take(), std::vector<LogLine>());
                    EXPECT_TRUE(client->calls().empty());
                });
        EXPECT_FALSE(log.take().empty());
    }
}

// Dialogues.

TEST_F(ServiceCiNotifications, anEnquiryIsRebuilt) {
    const uint16_t text[] = {'P', 0xd83d, 0xde00, 0};  // with a surrogate pair
    for (const bool first_flag : {true, false}) {
        CI_MMI_ENQ_T enquiry = {};
        enquiry.ui4_id = 0x12345678;
        enquiry.ui1_answer_length = 0xfe;
        enquiry.b_blind_answer = first_flag ? 0x80 : 0;
        enquiry.w2s_text = text;
        enquiry.b_path_valid = first_flag ? 0 : 2;
        enquiry.ui1_path_id = 0xfd;
        const sp<DialogueClient> client =
                show("notifyCiMmiEnquiry", 3, "QORTVAPI_CI_NFY_COND_MMI_ENQUIRY", &enquiry,
                     0x12345678, {4});
        ASSERT_EQ(client->enquiries.size(), 2u);
        const HIDL_CI_MMI_ENQ_T& shown = client->enquiries[0];
        EXPECT_EQ(shown.answer_length, 0xfe);
        EXPECT_EQ(shown.blind_answer, first_flag);
        EXPECT_EQ(Units(shown.text), Units(std::begin(text), std::end(text)));
        EXPECT_EQ(shown.path_valid, !first_flag);
        EXPECT_EQ(shown.path_id, 0xfd);
        EXPECT_EQ(client->places, std::vector<const uint16_t*>{text}) << "not copied";
    }
}

TEST_F(ServiceCiNotifications, anEnquiryMayHaveAnEmptyTextOrNone) {
    const uint16_t empty[] = {0};
    CI_MMI_ENQ_T enquiry = {};
    enquiry.w2s_text = empty;
    const auto shown = [&](int size) {
        return Units(show("notifyCiMmiEnquiry", 3, "QORTVAPI_CI_NFY_COND_MMI_ENQUIRY", &enquiry, 0,
                          {size})
                             ->enquiries.at(0)
                             .text);
    };
    EXPECT_EQ(shown(1), Units{0});
    enquiry.w2s_text = nullptr;
    EXPECT_EQ(shown(-1), Units{});
}

TEST_F(ServiceCiNotifications, aMenuIsRebuilt) {
    const uint16_t title[] = {'t', 0xfedc, 0};
    const uint16_t subtitle[] = {0};
    const uint16_t bottom[] = {'b', 'o', 't', 0};
    const uint16_t items[][3] = {{'1', 0, 0}, {0xd83d, 0xde00, 0}, {0, 0, 0}};
    for (const int32_t condition : {4, 5}) {
        CI_MMI_MENU_T menu = {};
        menu.ui4_id = 0xfedcba98;
        menu.w2s_title = title;
        menu.w2s_subtitle = subtitle;
        menu.w2s_bottom = bottom;
        menu.ui1_item_count = 3;
        for (int i = 0; i < 3; ++i) menu.aw2s_items[i] = items[i];
        menu.aw2s_items[3] = title;  // beyond the count
        menu.b_path_valid = 0x80;
        menu.ui1_path_id = 0xfd;
        const sp<DialogueClient> client = showMenu(menu, {3, 1, 4, 2, 3, 1}, condition);
        ASSERT_EQ(client->menus.size(), 2u);
        const HIDL_CI_MMI_MENU_T& shown = client->menus[0];
        EXPECT_EQ(Units(shown.title), (Units{'t', 0xfedc, 0}));
        EXPECT_EQ(Units(shown.subtitle), Units{0});
        EXPECT_EQ(Units(shown.bottom), (Units{'b', 'o', 't', 0}));
        EXPECT_EQ(shown.item_count, 3);
        EXPECT_EQ(Units(shown.items[0]), (Units{'1', 0}));
        EXPECT_EQ(Units(shown.items[1]), (Units{0xd83d, 0xde00, 0}));
        EXPECT_EQ(Units(shown.items[2]), Units{0});
        for (int i = 3; i < 64; ++i) EXPECT_EQ(shown.items[i].size(), 0u) << i;
        EXPECT_TRUE(shown.path_valid);
        EXPECT_EQ(shown.path_id, 0xfd);
        EXPECT_EQ(client->places, (std::vector<const uint16_t*>{title, subtitle, bottom, items[0]}))
                << "not copied";
    }
}

TEST_F(ServiceCiNotifications, aMenuMayHaveNoTextsAndNoItems) {
    CI_MMI_MENU_T menu = {};
    const HIDL_CI_MMI_MENU_T shown = showMenu(menu, {-1, -1, -1})->menus.at(0);
    EXPECT_EQ(shown.title.size(), 0u);
    EXPECT_EQ(shown.subtitle.size(), 0u);
    EXPECT_EQ(shown.bottom.size(), 0u);
    EXPECT_EQ(shown.item_count, 0);
    for (int i = 0; i < 64; ++i) EXPECT_EQ(shown.items[i].size(), 0u) << i;
    EXPECT_FALSE(shown.path_valid);
}

TEST_F(ServiceCiNotifications, aMenuHasAtMost64Items) {
    uint16_t items[64][2] = {};
    CI_MMI_MENU_T menu = {};
    std::vector<int> sizes(3, -1);
    for (uint16_t i = 0; i < 64; ++i) {
        items[i][0] = 0x100 + i;
        menu.aw2s_items[i] = items[i];
        sizes.push_back(2);
    }
    for (const uint8_t count : {64, 65, 255}) {
        menu.ui1_item_count = count;
        const HIDL_CI_MMI_MENU_T shown = showMenu(menu, sizes)->menus.at(0);
        EXPECT_EQ(shown.item_count, count) << "as the middleware says";
        for (uint16_t i = 0; i < 64; ++i) {
            EXPECT_EQ(Units(shown.items[i]), (Units{static_cast<uint16_t>(0x100 + i), 0}));
        }
    }
}

// Registration.

using Registrations = Answers<uint32_t, int32_t>;

class ServiceCiRegistrationDeathTest : public ServiceTest {
  protected:
    ServiceCiRegistrationDeathTest() {
        // The registration belongs to a process: each test registers in one of its own.
        GTEST_FLAG_SET(death_test_style, "threadsafe");
    }

    Registrations::All registerOnce() const {
        return Registrations::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_ci_reg_callback(0xfedcba98, 0x8765abcd, callback);
        });
    }

    /** Registers twice; the middleware answers `result`. */
    bool onlyTheFirstRegisters(int32_t result) {
        int calls = 0;
        a_qortvapi_ci_nfy_fct handler = nullptr;
        tv.on<&a_qortvapi_ci_reg_cb>([&](uint32_t* h_ci, uint32_t number, uint32_t tag,
                                         a_qortvapi_ci_nfy_fct its_handler) {
            if (*h_ci == 0 && number == 0xfedcba98 && tag == 0x8765abcd) ++calls;
            handler = its_handler;
            *h_ci = 0xfedc1234;
            return result;
        });
        const bool first = registerOnce() == Registrations::All{{0xfedc1234, result}};
        const bool second = registerOnce() == Registrations::All{{0, 0}};
        const std::vector<LogLine> lines(
                2, debugLine(kTag, "hh_a_qortvapi_ci_reg_callback",
                             "hh_a_qortvapi_ci_reg_callback ui4_nfy_category_tag:8765abcd"));
        return first && second && calls == 1 && handler != nullptr && log.take() == lines;
    }

    /** Notifications reach clients before and after the registration is taken back. */
    bool staysAfterItIsTakenBack() {
        a_qortvapi_ci_nfy_fct handler = nullptr;
        tv.on<&a_qortvapi_ci_reg_cb>(
                [&](uint32_t*, uint32_t, uint32_t, a_qortvapi_ci_nfy_fct its_handler) {
                    handler = its_handler;
                    return 0;
                });
        registerOnce();
        log.take();
        Switchboard::startRecording();
        const int32_t result = impl->a_hidl_a_qortvapi_ci_unreg_callback(0x12345678);
        const bool logged =
                log.take() ==
                std::vector<LogLine>{debugLine(kTag, "hh_a_qortvapi_ci_unreg_callback",
                                               "hh_a_qortvapi_ci_unreg_callback h_ci:305419896")};
        registerOnce();
        const bool nothing_called = Switchboard::stopRecording().empty();
        const sp<RecordingClient> client = new RecordingClient();
        QorTvApiImpl::getCallbackHandlers() = {{1, client}};
        handler(1, nullptr, 61, nullptr);
        return result == 0 && logged && nothing_called && client->calls().size() == 1;
    }

    static void exitWith(bool as_expected) { _exit(as_expected ? 0 : 1); }

    const sp<QorTvApiCIImpl> impl = new QorTvApiCIImpl();
};

TEST_F(ServiceCiRegistrationDeathTest, happensOnce) {
    EXPECT_EXIT(exitWith(onlyTheFirstRegisters(5)), testing::ExitedWithCode(0), "");
}

TEST_F(ServiceCiRegistrationDeathTest, happensOnceAlsoWhereItFails) {
    EXPECT_EXIT(exitWith(onlyTheFirstRegisters(-5)), testing::ExitedWithCode(0), "");
}

TEST_F(ServiceCiRegistrationDeathTest, staysWhenItIsTakenBack) {
    EXPECT_EXIT(exitWith(staysAfterItIsTakenBack()), testing::ExitedWithCode(0), "");
}

TEST_F(ServiceCiRegistrationDeathTest, isNotLoggedWithoutDebugging) {
    registeredOnce();  // in this process, which the other tests need it in
    log.take();
    mTvApiDebug = 0;
    registerOnce();
    impl->a_hidl_a_qortvapi_ci_unreg_callback(1);
    EXPECT_TRUE(log.take().empty());
}

/** The offsets of each record's fields for pointers of four and of eight bytes. */
TEST(ServiceCiRecords, haveTheModulesLayout) {
    struct Offset {
        size_t here, four, eight;
    };
#define OFFSET(record, field, four, eight) \
    { offsetof(record, field), four, eight }
    const Offset offsets[] = {
            OFFSET(CI_MMI_ENQ_ANS_T, ui4_id, 0, 0),
            OFFSET(CI_MMI_ENQ_ANS_T, ui1_answer, 4, 4),
            OFFSET(CI_MMI_ENQ_ANS_T, w2s_text, 8, 8),
            OFFSET(CI_CAM_PIN_CODE_T, pui1_valid, 0, 0),
            OFFSET(CI_CAM_PIN_CODE_T, pui2_pin_code, 4, 8),
            OFFSET(CI_MMI_ENQ_T, ui4_id, 0, 0),
            OFFSET(CI_MMI_ENQ_T, ui1_answer_length, 4, 4),
            OFFSET(CI_MMI_ENQ_T, b_blind_answer, 5, 5),
            OFFSET(CI_MMI_ENQ_T, w2s_text, 8, 8),
            OFFSET(CI_MMI_ENQ_T, b_path_valid, 12, 16),
            OFFSET(CI_MMI_ENQ_T, ui1_path_id, 13, 17),
            OFFSET(CI_MMI_MENU_T, ui4_id, 0, 0),
            OFFSET(CI_MMI_MENU_T, w2s_title, 4, 8),
            OFFSET(CI_MMI_MENU_T, w2s_subtitle, 8, 16),
            OFFSET(CI_MMI_MENU_T, w2s_bottom, 12, 24),
            OFFSET(CI_MMI_MENU_T, ui1_item_count, 16, 32),
            OFFSET(CI_MMI_MENU_T, aw2s_items, 20, 40),
            OFFSET(CI_MMI_MENU_T, b_path_valid, 280, 556),
            OFFSET(CI_MMI_MENU_T, ui1_path_id, 281, 557),
    };
#undef OFFSET
    for (const Offset& offset : offsets) {
        EXPECT_EQ(offset.here, sizeof(void*) == 4 ? offset.four : offset.eight);
    }
}

}  // namespace
