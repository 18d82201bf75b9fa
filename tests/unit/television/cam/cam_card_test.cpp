// The description of a Common Interface module: faults, inserting and removing by the file, CI+
// keys, secrets.
#include <atomic>

#include "support/cam_fixture.h"
#include "support/log_capture.h"
#include "support/notification_log.h"
#include "television/cam/cam_card.h"

namespace {

using nlohmann::json;
using television::parseCamCard;

constexpr int32_t kCard = QORTVAPI_CI_NFY_COND_CARD_INSERT;
constexpr int32_t kClose = QORTVAPI_CI_NFY_COND_MMI_CLOSE;
constexpr int32_t kError = QORTVAPI_CI_NFY_COND_ERROR;

/** Returns the fault of a description; empty: none. */
std::string faultOf(const std::string& description) {
    try {
        parseCamCard(description);
        return "";
    } catch (const television::CamFault& fault) {
        return fault.what();
    }
}

/** The same of a module with a menu. */
std::string faultOfMenu(const std::string& menu) {
    return faultOf(R"({"name": "x", "pin": "4711", "menu": )" + menu + "}");
}

struct Faulty {
    const char* description;
    const char* fault;
};

TEST(TelevisionCamCard, FaultsNamePlaceAndReason) {
    const Faulty all[] = {
            {"", "line 1, column 1: not JSON, or not UTF-8"},
            {"{\n  \"name\": x}", "line 2, column 11: not JSON, or not UTF-8"},
            {"{\"name\": \"\xFF\"}", "line 1, column 11: not JSON, or not UTF-8"},
            {R"({"name": "\ud800"})", "line 1, column 17: not JSON, or not UTF-8"},
            {R"({"name": "x", "pinRetries": 1e999})", "/: a number is too large"},
            {"[]", "/: must be an object"},
            {"{}", "/: needs \"name\""},
            {R"({"name": null})", "/: needs \"name\""},
            {R"({"name": 1})", "/name: must be a text"},
            {R"({"name": "a\u0000b"})", "/name: must not hold a zero character"},
            {R"({"name": "x", "id": "0123"})", "/id: must be a text of 16 hexadecimal digits"},
            {R"({"name": "x", "id": "0123456789ABCDEG"})",
             "/id: must be a text of 16 hexadecimal digits"},
            {R"({"name": "x", "language": "en"})", "/language: must be a text of three letters"},
            {R"({"name": "x", "hostId": "ABC"})", "/hostId: must be whole bytes"},
            {R"({"name": "x", "hostId": ""})",
             "/hostId: must be a text of 2 to 64 hexadecimal digits"},
            {R"({"name": "x", "pin": "47110"})", "/pin: must be a text of 4 digits"},
            {R"({"name": "x", "pin": 4711})", "/pin: must be a text of 4 digits"},
            {R"({"name": "x", "pinRetries": 0})",
             "/pinRetries: must be a whole number from 1 to 255"},
            {R"({"name": "x", "pinRetries": -1})",
             "/pinRetries: must be a whole number from 1 to 255"},
            {R"({"name": "x", "pinRetries": 1.5})",
             "/pinRetries: must be a whole number from 1 to 255"},
            {R"({"name": "x", "firmware": 3})", "/firmware: must be an object"},
            {R"({"name": "x", "firmware": {"seconds": -1}})",
             "/firmware/seconds: must be a number from 0 to 600"},
            {R"({"name": "x", "firmware": {"version": 4294967296}})",
             "/firmware/version: must be a whole number from 0 to 4294967295"},
            {R"({"name": "x", "firmwear": {}})",
             "/: has a field that is none of name, id, language, profile, hostId, pin, pinRetries, "
             "menu, firmware"},
            {R"({"name": "x", "menu": [{"text": "y", "pin": true}]})",
             "/menu/0/pin: needs the \"pin\" of the module"},
    };
    for (const Faulty& faulty : all) {
        EXPECT_EQ(faultOf(faulty.description), faulty.fault) << faulty.description;
    }
}

TEST(TelevisionCamCard, FaultsOfMenus) {
    const Faulty all[] = {
            {"3", "/menu: must be an object"},
            {R"({"title": "x"})", "/menu: needs \"items\""},
            {R"({"items": {}})", "/menu/items: must be an array"},
            {R"({"title": 1, "items": []})", "/menu/title: must be a text"},
            {R"({"items": ["a", 1]})", "/menu/items/1: must be an object"},
            {R"({"items": [], "prompt": ""})",
             "/menu: has a field that is none of title, subtitle, bottom, items"},
            {R"([{"text": "a", "list": [], "items": []}])", "/menu/0: must do one thing only"},
            {R"([{"list": ["a", {"pin": true}]}])", "/menu/0/list/1/pin: a list only informs"},
            {R"([{"list": [{"items": []}]}])", "/menu/0/list/0/items: a list only informs"},
            {R"([{"upgrade": false}])", "/menu/0/upgrade: must be true"},
            {R"([{"upgrade": 1}])", "/menu/0/upgrade: must be true or false"},
            {R"([{"info": 1}])", "/menu/0/info: must be an array"},
            {R"([{"info": ["a", 1]}])", "/menu/0/info/1: must be a text"},
            {R"([{"pin": false}])", "/menu/0/pin: must be an object"},
            {R"([{"enquiry": {}}])", "/menu/0/enquiry: needs \"length\""},
            {R"([{"enquiry": {"length": 256}}])",
             "/menu/0/enquiry/length: must be a whole number from 1 to 255"},
            {R"([{"enquiry": {"length": 2, "blind": "yes"}}])",
             "/menu/0/enquiry/blind: must be true or false"},
            {R"([{"enquiry": {"length": 2, "accept": "abc"}}])",
             "/menu/0/enquiry/accept: must have at most 2 UTF-16 units"},
            {R"([{"enquiry": {"length": 1, "accept": "😀"}}])",
             "/menu/0/enquiry/accept: must have at most 1 UTF-16 units"},
            {R"([{"enquiry": {"length": 2, "then": {"list": 5}}}])",
             "/menu/0/enquiry/then/list: must be an object"},
    };
    for (const Faulty& faulty : all) {
        EXPECT_EQ(faultOfMenu(faulty.description), faulty.fault) << faulty.description;
    }
}

TEST(TelevisionCamCard, LimitsHoldExactly) {
    const auto menuOf = [](size_t items) {
        return json{{"items", std::vector<std::string>(items, "x")}}.dump();
    };
    EXPECT_EQ(faultOfMenu(menuOf(64)), "");
    EXPECT_EQ(faultOfMenu(menuOf(65)), "/menu/items: must have at most 64 items");
    EXPECT_EQ(faultOfMenu(json{{{"info", std::vector<std::string>(65, "x")}}}.dump()),
              "/menu/0/info: must have at most 64 items");
    const auto titled = [](size_t units) {
        return json{{"title", std::string(units, 'x')}, {"items", json::array()}}.dump();
    };
    EXPECT_EQ(faultOfMenu(titled(255)), "");
    EXPECT_EQ(faultOfMenu(titled(256)), "/menu/title: must have at most 255 UTF-16 units");
    EXPECT_EQ(faultOf(json{{"name", "x"}, {"profile", std::string(99, 'p')}}.dump()), "");
    EXPECT_EQ(faultOf(json{{"name", "x"}, {"profile", std::string(100, 'p')}}.dump()),
              "/profile: must have at most 99 UTF-16 units");
    const auto deep = [](int screens) {
        json menu = json::array();
        for (int i = 1; i < screens; ++i) menu = json::array({{{"menu", menu}}});
        return menu.dump();
    };
    EXPECT_EQ(faultOfMenu(deep(16)), "");
    EXPECT_NE(faultOfMenu(deep(17)).find(": is more than 16 screens deep"), std::string::npos);
}

TEST(TelevisionCamCard, NoNestingIsTooDeepToRefuse) {
    constexpr int kDeep = 60000;
    const auto nested = [](const std::string& open, const std::string& middle,
                           const std::string& close, int times) {
        std::string text;
        for (int i = 0; i < times; ++i) text += open;
        text += middle;
        for (int i = 0; i < times; ++i) text += close;
        return text;
    };
    EXPECT_EQ(faultOfMenu(nested("[", "", "]", kDeep)), "/menu/0: must be an object");
    EXPECT_NE(faultOf(nested("[", "", "", kDeep)).find("not JSON"), std::string::npos);
    EXPECT_NE(faultOfMenu(nested(R"([{"menu":)", "[]", "}]", kDeep / 8)).find("screens deep"),
              std::string::npos);
    EXPECT_NE(faultOfMenu(nested(R"({"enquiry":{"length":1,"then":)", "[]", "}}", kDeep / 8))
                      .find("screens deep"),
              std::string::npos);
    EXPECT_NE(faultOfMenu(nested(R"({"pin":{"then":)", "[]", "}}", kDeep / 8)).find("screens deep"),
              std::string::npos);
}

// Inserting and removing the module by its file.

class TelevisionCamFile : public TelevisionCam {
  protected:
    TelevisionCamFile() {
        options.watch = true;
        options.calm = std::chrono::milliseconds(20);
    }
};

TEST_F(TelevisionCamFile, ComesChangesAndGoes) {
    start();
    listen();
    EXPECT_EQ(slotState(), CI_SLOT_STATE_EMPTY);
    write(module());
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_INSERTED});
    EXPECT_EQ(slotState(), CI_SLOT_STATE_READY);
    openMenu();
    json other = module();
    other["menu"]["title"] = "Other";
    write(other);
    EXPECT_EQ(seen.next(kClose).bytes, (std::vector<uint8_t>{CI_MMI_CLOSE_REMOVED, 0}));
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_REMOVED});
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_INSERTED});
    const CamSeen menu = openMenu();
    EXPECT_EQ(menu.title, u"Other");
    std::filesystem::remove(cardPath());
    EXPECT_EQ(seen.next(kClose).value, uint32_t{CI_MMI_CLOSE_REMOVED});
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_REMOVED});
    EXPECT_EQ(choose(menu.id, 1), TV_NOT_FOUND);
    EXPECT_EQ(moveSlot(1), TV_NOT_FOUND) << "there is none to insert";
}

TEST_F(TelevisionCamFile, ComesWithItsFolder) {
    std::filesystem::remove_all(streams());
    start();
    listen();
    std::filesystem::create_directory(streams());
    write(module());
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_INSERTED});
}

void channelList(int32_t code, void*, void*, void*, void*, void*) {
    NotificationLog::instance().add("channelList", code, {});
}

TEST_F(TelevisionCamFile, ModuleAndStreamsLeaveEachOtherAlone) {
    NotificationLog& events = NotificationLog::instance();
    events.clear();
    stream_generator::writeStreams(streams(), {stream_generator::demoPlans()[0]});
    const std::string later = folder() / "later";
    std::filesystem::create_directory(later);
    stream_generator::writeStreams(later, {stream_generator::demoPlans()[1]});
    startWith(module());
    a_qortvapi_channellist_register_callback(channelList, nullptr);
    events.wait("channelList", 1);
    const CamSeen menu = openMenu();
    json other = module();
    other["name"] = "changed";
    write(other);
    seen.next(kClose);
    seen.next(kCard);
    seen.next(kCard);
    EXPECT_EQ(events.seen("channelList").size(), 1u) << "the streams were not loaded again";
    const CamSeen again = openMenu();
    for (const auto& file : std::filesystem::directory_iterator(later)) {
        std::filesystem::rename(file, streams() + "/" + file.path().filename().string());
    }
    events.wait("channelList", 2);
    EXPECT_EQ(choose(again.id, 1), TV_OK) << "the dialogue goes on";
    seen.next(QORTVAPI_CI_NFY_COND_MMI_MENU);
    EXPECT_NE(menu.id, again.id);
    tv.reset();
    events.clear();
}

TEST_F(TelevisionCamFile, TheSameBytesAgainAreNoNewModule) {
    options.watch = false;
    startWith(module());
    const CamSeen menu = openMenu();
    write(module());
    tv->reload();
    EXPECT_EQ(choose(menu.id, 1), TV_OK);
    EXPECT_EQ(seen.next().condition, QORTVAPI_CI_NFY_COND_MMI_MENU);
}

TEST_F(TelevisionCamFile, TakenOutByCommandItStaysOut) {
    options.watch = false;
    startWith(module());
    openMenu();
    EXPECT_EQ(moveSlot(0, 7), TV_OK);
    EXPECT_EQ(seen.next(kClose).value, uint32_t{CI_MMI_CLOSE_REMOVED});
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_REMOVED});
    EXPECT_EQ(slotState(), CI_SLOT_STATE_EMPTY);
    EXPECT_EQ(enter(), TV_NOT_FOUND);
    EXPECT_EQ(moveSlot(0), TV_OK) << "it is out already";
    tv->reload();
    EXPECT_EQ(slotState(), CI_SLOT_STATE_EMPTY) << "its file is still the same";
    EXPECT_EQ(moveSlot(1), TV_OK);
    EXPECT_EQ(moveSlot(1), TV_OK) << "it is in already";
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_INSERTED});
    EXPECT_EQ(openMenu().title, u"Main");
    EXPECT_EQ(moveSlot(0), TV_OK);
    seen.next(kClose);
    seen.next(kCard);
    json other = module();
    other["name"] = "changed";
    write(other);
    tv->reload();
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_INSERTED}) << "a new card goes in";
    EXPECT_EQ(moveSlot(2), TV_INVALID_ARGUMENT);
    const uint8_t two[] = {0, 0};
    EXPECT_EQ(a_qortvapi_util_set(CI_SLOT_UTIL_NAME, 0, two, 2), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_util_set(CI_SLOT_UTIL_NAME, 0, two, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(slotState(), CI_SLOT_STATE_READY);
    restart();
    EXPECT_EQ(slotState(), CI_SLOT_STATE_READY) << "nothing was stored";
}

TEST_F(TelevisionCamFile, AFaultyFileIsNotifiedAndChangesNothing) {
    options.watch = false;
    const LogCapture log;
    write(std::string(R"({"name": "x", "pin": "98765"})"));
    start();
    listen();
    EXPECT_EQ(slotState(), CI_SLOT_STATE_EMPTY);
    EXPECT_TRUE(log.has("cannot use the CAM in", cardPath(), "/pin: must be a text of 4 digits"));
    EXPECT_EQ(moveSlot(1), TV_NOT_FOUND);
    const size_t lines = log.size();
    write(module());
    tv->reload();
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_INSERTED});
    const CamSeen menu = openMenu();
    write(std::string(R"({"name": "x")"));
    tv->reload();
    const CamSeen error = seen.next(kError);
    EXPECT_EQ(error.value, uint32_t{CI_ERROR_UNUSABLE_MODULE});
    EXPECT_EQ(choose(menu.id, 1), TV_OK) << "the one in the slot stays";
    const auto faults = [&] { return log.count("cannot use the CAM in"); };
    EXPECT_EQ(faults(), 2u);
    tv->reload();
    EXPECT_EQ(faults(), 2u) << "said once";
    EXPECT_GT(log.size(), lines);
}

TEST_F(TelevisionCamFile, WhatIsNoFileIsNoModule) {
    options.watch = false;
    const LogCapture log;
    std::filesystem::create_directory(cardPath());
    start();
    EXPECT_EQ(slotState(), CI_SLOT_STATE_EMPTY);
    EXPECT_TRUE(log.has("cannot read the CAM in", cardPath(), "Invalid argument"));
    std::filesystem::remove(cardPath());
    ASSERT_EQ(mkfifo(cardPath().c_str(), 0600), 0);
    tv->reload();  // must not wait for a writer
    std::filesystem::remove(cardPath());
    write(std::string(256 * 1024 + 1, ' '));
    tv->reload();
    EXPECT_TRUE(log.has("cannot read the CAM in", "File too large"));
    EXPECT_EQ(slotState(), CI_SLOT_STATE_EMPTY);
}

// Keys.

class TelevisionCamKeys : public TelevisionCam {
  protected:
    static std::vector<uint8_t> key(uint8_t seed) {
        std::vector<uint8_t> bytes(CI_KEY_SIZE);
        for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(seed + i * 7);
        return bytes;
    }
    /** FNV-1a, the checksum of middleware/ci.h. */
    static uint32_t checksum(const std::vector<uint8_t>& bytes) {
        uint32_t sum = 0x811C9DC5;
        for (const uint8_t byte : bytes) sum = (sum ^ byte) * 0x01000193;
        return sum;
    }
    static std::vector<CI_KEY_INFO_T> query() {
        std::vector<uint16_t> area(CI_KEY_AREA_SIZE / 2, 0xEEEE);
        EXPECT_EQ(a_qortvapi_ci_key_query(area.data()), TV_OK);
        std::vector<CI_KEY_INFO_T> all(CI_KEY_AREA_SIZE / sizeof(CI_KEY_INFO_T));
        std::memcpy(all.data(), area.data(), CI_KEY_AREA_SIZE);
        return all;
    }
    static bool exists(uint32_t number) {
        uint8_t result = 0;
        EXPECT_EQ(a_qortvapi_ci_key_query_exist_ex(number, &result), TV_OK);
        return result != 0;
    }
    static bool existsAny() {
        uint8_t result = 0;
        EXPECT_EQ(a_qortvapi_ci_key_query_exist(&result), TV_OK);
        return result != 0;
    }
    static int32_t write(const std::vector<uint8_t>& bytes) {
        return a_qortvapi_ci_key_write(bytes.data(), static_cast<uint32_t>(bytes.size()));
    }
};

TEST_F(TelevisionCamKeys, WrittenUpdatedActivatedErased) {
    start();
    EXPECT_FALSE(existsAny());
    EXPECT_EQ(a_qortvapi_ci_key_update(), TV_NOT_FOUND) << "nothing was written";
    EXPECT_EQ(a_qortvapi_ci_key_activate(), TV_NOT_FOUND);
    ASSERT_EQ(write(key(1)), TV_OK);
    EXPECT_FALSE(existsAny()) << "written only";
    ASSERT_EQ(a_qortvapi_ci_key_update(), TV_OK);
    EXPECT_EQ(a_qortvapi_ci_key_update(), TV_NOT_FOUND) << "taken in once";
    EXPECT_TRUE(exists(0));
    EXPECT_FALSE(exists(15));
    ASSERT_EQ(write(key(2)), TV_OK);
    ASSERT_EQ(a_qortvapi_ci_key_update_ex(15), TV_OK);
    EXPECT_TRUE(exists(15));
    auto all = query();
    EXPECT_EQ(all[0].b_exists, 1);
    EXPECT_EQ(all[0].b_active, 0);
    EXPECT_EQ(all[0].ui2_size, CI_KEY_SIZE);
    EXPECT_EQ(all[0].ui4_checksum, checksum(key(1)));
    EXPECT_EQ(all[1].b_exists, 0);
    EXPECT_EQ(all[1].ui4_checksum, 0u);
    EXPECT_EQ(all[15].ui4_checksum, checksum(key(2)));
    EXPECT_EQ(all.back().b_exists, 0) << "the whole area is written";
    ASSERT_EQ(a_qortvapi_ci_key_activate(), TV_OK);
    EXPECT_EQ(query()[0].b_active, 1);
    EXPECT_EQ(query()[15].b_active, 1);
    ASSERT_EQ(write(key(3)), TV_OK);
    ASSERT_EQ(a_qortvapi_ci_key_erase(), TV_OK);
    EXPECT_FALSE(existsAny());
    EXPECT_EQ(a_qortvapi_ci_key_update(), TV_NOT_FOUND) << "the written one is gone too";
}

TEST_F(TelevisionCamKeys, OutliveARestart) {
    start();
    ASSERT_EQ(write(key(9)), TV_OK);
    ASSERT_EQ(a_qortvapi_ci_key_update_ex(3), TV_OK);
    ASSERT_EQ(a_qortvapi_ci_key_activate(), TV_OK);
    ASSERT_EQ(write(key(10)), TV_OK);
    ASSERT_EQ(a_qortvapi_ci_key_update_ex(4), TV_OK);
    restart();
    EXPECT_EQ(query()[3].ui4_checksum, checksum(key(9)));
    EXPECT_EQ(query()[3].b_active, 1);
    EXPECT_EQ(query()[4].ui4_checksum, checksum(key(10)));
    EXPECT_EQ(query()[4].b_active, 0);
    ASSERT_EQ(a_qortvapi_ci_key_erase(), TV_OK);
    restart();
    EXPECT_FALSE(existsAny());
}

TEST_F(TelevisionCamKeys, FromAFile) {
    start();
    const std::string path = folder() / "key";
    EXPECT_EQ(a_qortvapi_ci_key_update_with_path(path.c_str()), TV_NOT_FOUND);
    folder().write("key", key(5));
    ASSERT_EQ(a_qortvapi_ci_key_update_with_path(path.c_str()), TV_OK);
    ASSERT_EQ(a_qortvapi_ci_key_update_with_path_ex(path.c_str(), 2), TV_OK);
    EXPECT_EQ(query()[0].ui4_checksum, checksum(key(5)));
    EXPECT_EQ(query()[2].ui4_checksum, checksum(key(5)));
    EXPECT_EQ(a_qortvapi_ci_key_update_with_path_ex(path.c_str(), 16), TV_INVALID_ARGUMENT);
    for (const size_t size : {size_t{0}, size_t{CI_KEY_SIZE - 1}, size_t{CI_KEY_SIZE + 1}}) {
        folder().write("key", std::vector<uint8_t>(size));
        EXPECT_EQ(a_qortvapi_ci_key_update_with_path(path.c_str()), TV_INVALID_ARGUMENT) << size;
    }
    EXPECT_EQ(a_qortvapi_ci_key_update_with_path(folder().path().c_str()), TV_FAILED);
    EXPECT_EQ(a_qortvapi_ci_key_update_with_path(nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionCamKeys, OnlyTheAgreedLengthIsRead) {
    start();
    const std::vector<uint8_t> bytes = key(1);
    for (const uint32_t length : {0u, 1u, 63u, 65u, 128u, 1024u, UINT32_MAX}) {
        EXPECT_EQ(a_qortvapi_ci_key_write(bytes.data(), length), TV_INVALID_ARGUMENT) << length;
    }
    EXPECT_EQ(a_qortvapi_ci_key_write(nullptr, CI_KEY_SIZE), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ci_key_update(), TV_NOT_FOUND) << "none of them was taken";
    ASSERT_EQ(write(bytes), TV_OK);
    EXPECT_EQ(a_qortvapi_ci_key_update_ex(CI_KEY_COUNT), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ci_key_update_ex(UINT32_MAX), TV_INVALID_ARGUMENT);
    uint8_t any = 0;
    EXPECT_EQ(a_qortvapi_ci_key_query_exist_ex(CI_KEY_COUNT, &any), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ci_key_query_exist_ex(0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ci_key_query_exist(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ci_key_query(nullptr), TV_INVALID_ARGUMENT);
}

// Secrets.

TEST_F(TelevisionCamKeys, NoSecretIsLogged) {
    const LogCapture log;
    const std::string secret = "9137";
    json card = module();
    card["pin"] = secret;
    card["menu"]["items"][2]["enquiry"]["accept"] = "s3cr3t";
    TelevisionCam::write(card);
    start();
    listen();
    seen.next(kCard);
    EXPECT_EQ(enterPin("8246"), TV_OK);
    EXPECT_EQ(enterPin(secret), TV_OK);
    seen.next();
    seen.next();
    CamSeen asked = openItem(4);
    EXPECT_EQ(answer(asked.id, u"9137"), TV_OK);
    seen.next();
    asked = openItem(3);
    EXPECT_EQ(answer(asked.id, u"s3cr3t" + std::u16string(1, u'\0')), TV_OK);
    seen.next();
    const std::string printable(CI_KEY_SIZE, 'K');
    EXPECT_EQ(write({printable.begin(), printable.end()}), TV_OK);
    EXPECT_EQ(a_qortvapi_ci_key_update(), TV_OK);
    EXPECT_EQ(a_qortvapi_ci_key_activate(), TV_OK);
    // Faults before, behind and in a secret.
    for (const std::string text :
         {R"({"name": "x", "pin": "9137 })", R"({"name": "x", "pin": "9137" "9137"})",
          R"({"name": "x", "pin": 9137})", R"({"name": "x", "pin": 9137e9999})",
          R"({"name": "x", "pin": 9137x})", R"({"name": "x", "9137": 1})",
          R"({"name": "x", "menu": [{"enquiry": {"length": 2, "accept": "s3cr3t"}}]})"}) {
        const size_t before = log.size();
        TelevisionCam::write(text);
        tv->reload();
        EXPECT_GT(log.size(), before) << text;
    }
    tv.reset();
    for (const char* part : {"9137", "8246", "s3cr3t", "KK", "4b4b", "4B4B", "75, 75"}) {
        EXPECT_FALSE(log.has(part)) << part;
    }
    EXPECT_TRUE(log.has("the CAM in", "is inserted")) << "the capture works";
}

}  // namespace
