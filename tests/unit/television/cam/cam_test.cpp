// The Common Interface module: its dialogues, its PIN, upgrades, its properties, handlers.
#include <thread>

#include "support/cam_fixture.h"
#include "support/log_capture.h"

namespace {

constexpr int32_t kEnquiry = QORTVAPI_CI_NFY_COND_MMI_ENQUIRY;
constexpr int32_t kMenu = QORTVAPI_CI_NFY_COND_MMI_MENU;
constexpr int32_t kList = QORTVAPI_CI_NFY_COND_MMI_LIST;
constexpr int32_t kClose = QORTVAPI_CI_NFY_COND_MMI_CLOSE;
constexpr int32_t kCard = QORTVAPI_CI_NFY_COND_CARD_INSERT;
constexpr int32_t kPinReply = QORTVAPI_CI_NFY_COND_PIN_REPLY;

// Dialogues.

TEST_F(TelevisionCam, MainMenuHasItsTextsAndItems) {
    startWith(module());
    const CamSeen menu = openMenu();
    EXPECT_EQ(menu.condition, kMenu);
    EXPECT_GT(menu.id, 0u);
    EXPECT_EQ(menu.title, u"Main");
    EXPECT_EQ(menu.subtitle, u"") << "an empty text is one";
    EXPECT_EQ(menu.bottom, std::nullopt) << "a missing text is none";
    const std::vector<CamSeenText> items = {u"Sub",     u"About", u"Code",   u"PIN",
                                            u"Upgrade", u"Name",  u"Serial", u"Nothing"};
    EXPECT_EQ(menu.items, items);
    EXPECT_EQ(menu.beyond, 0u);
}

TEST_F(TelevisionCam, SubmenuAndBackUntilItCloses) {
    startWith(module());
    const CamSeen main = openMenu();
    ASSERT_EQ(choose(main.id, 1), TV_OK);
    const CamSeen sub = seen.next(kMenu);
    EXPECT_EQ(sub.items, (std::vector<CamSeenText>{u"a", u"b"}));
    EXPECT_NE(sub.id, main.id);
    ASSERT_EQ(choose(sub.id, CI_MMI_MENU_BACK), TV_OK);
    const CamSeen again = seen.next(kMenu);
    EXPECT_EQ(again.title, u"Main");
    EXPECT_NE(again.id, main.id) << "shown anew, asked anew";
    ASSERT_EQ(choose(again.id, CI_MMI_MENU_BACK), TV_OK);
    EXPECT_EQ(seen.next(kClose).bytes, (std::vector<uint8_t>{CI_MMI_CLOSE_BY_MODULE, 0}));
    EXPECT_EQ(choose(again.id, 1), TV_NOT_FOUND);
}

TEST_F(TelevisionCam, AnItemThatDoesNothingShowsTheMenuAgain) {
    startWith(module());
    const CamSeen main = openMenu();
    ASSERT_EQ(choose(main.id, 8), TV_OK);
    const CamSeen again = seen.next(kMenu);
    EXPECT_EQ(again.items, main.items);
    EXPECT_EQ(choose(main.id, 8), TV_NOT_FOUND);
    EXPECT_EQ(choose(again.id, 1), TV_OK);
}

TEST_F(TelevisionCam, ListsInformAndEveryAnswerLeadsBack) {
    startWith(module());
    CamSeen list = openItem(2);
    EXPECT_EQ(list.condition, kList);
    EXPECT_EQ(list.title, u"Über");
    EXPECT_EQ(list.subtitle, std::nullopt);
    EXPECT_EQ(list.bottom, u"OK");
    EXPECT_EQ(list.items, (std::vector<CamSeenText>{u"1", u"2"}));
    ASSERT_EQ(choose(list.id, 2), TV_OK);
    CamSeen main = seen.next(kMenu);
    ASSERT_EQ(choose(main.id, 2), TV_OK);
    list = seen.next(kList);
    EXPECT_EQ(choose(list.id, 3), TV_INVALID_ARGUMENT);
    ASSERT_EQ(choose(list.id, CI_MMI_MENU_BACK), TV_OK);
    main = seen.next(kMenu);
    ASSERT_EQ(choose(main.id, 7), TV_OK);
    list = seen.next(kList);
    EXPECT_EQ(list.title, u"Serial");
    EXPECT_EQ(list.items, (std::vector<CamSeenText>{u"12 34"}));
}

TEST_F(TelevisionCam, AnEnquiryTakesOnlyTheRightAnswer) {
    startWith(module());
    const CamSeen enquiry = openItem(3);
    EXPECT_EQ(enquiry.condition, kEnquiry);
    EXPECT_EQ(enquiry.title, u"Which?");
    EXPECT_EQ(enquiry.length, 8);
    EXPECT_FALSE(enquiry.blind);
    for (const std::u16string wrong : {u"abd", u"x", u"abcd", u"ab\0c"}) {
        CI_MMI_STATE_T state = {};
        uint32_t length = sizeof(state);
        ASSERT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_MMI_STATE, 0, &state, &length), TV_OK);
        EXPECT_EQ(state.ui1_kind, CI_MMI_KIND_ENQUIRY);
        ASSERT_EQ(answer(state.ui4_id, wrong + u'\0'), TV_OK);
        const CamSeen notice = seen.next(kList);
        EXPECT_EQ(notice.title, u"wrong answer");
        ASSERT_EQ(choose(notice.id, CI_MMI_MENU_BACK), TV_OK);
        EXPECT_EQ(seen.next(kEnquiry).title, u"Which?") << "it is asked again";
    }
    const CamSeen inner = [&] {
        CI_MMI_STATE_T state = {};
        uint32_t length = sizeof(state);
        EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_MMI_STATE, 0, &state, &length), TV_OK);
        EXPECT_EQ(answer(state.ui4_id, std::u16string(u"abc\0zz", 6)), TV_OK);
        return seen.next(kMenu);
    }();
    EXPECT_EQ(inner.title, u"Inner");
    ASSERT_EQ(choose(inner.id, CI_MMI_MENU_BACK), TV_OK);
    EXPECT_EQ(seen.next(kMenu).title, u"Main") << "not back to what was answered";
}

TEST_F(TelevisionCam, AnEnquiryWithoutARightAnswerTakesAnyAndLeadsBack) {
    startWith(module());
    const CamSeen enquiry = openItem(6);
    EXPECT_EQ(enquiry.title, std::nullopt);
    EXPECT_TRUE(enquiry.blind);
    EXPECT_EQ(answer(enquiry.id, u"x", 2), TV_INVALID_ARGUMENT) << "neither answered nor not";
    ASSERT_EQ(answer(enquiry.id, u"x"), TV_OK);
    EXPECT_EQ(seen.next(kMenu).title, u"Main");
}

TEST_F(TelevisionCam, ACancelledEnquiryLeadsBack) {
    startWith(module());
    const CamSeen enquiry = openItem(3);
    ASSERT_EQ(answer(enquiry.id, u"abc", CI_MMI_ENQ_CANCELLED), TV_OK);
    EXPECT_EQ(seen.next(kMenu).title, u"Main");
}

TEST_F(TelevisionCam, AnEnquiryMayBeTheMainMenu) {
    startWithMenu(R"({"enquiry": {"prompt": "Hi", "length": 255}})");
    const CamSeen enquiry = openMenu();
    EXPECT_EQ(enquiry.condition, kEnquiry);
    EXPECT_EQ(enquiry.length, 255);
    ASSERT_EQ(answer(enquiry.id, u""), TV_OK);
    seen.next(kClose);
}

// Under the address sanitizer this fails when one unit too many is read.
TEST_F(TelevisionCam, AnswersAreReadNoFurtherThanTheyMayReach) {
    startWithMenu(R"([{"enquiry": {"length": 4, "accept": "ab", "then": ["ok"]}},
                      {"enquiry": {"length": 4, "accept": "abcd", "then": ["ok"]}},
                      {"enquiry": {"length": 4, "accept": "", "then": ["ok"]}},
                      {"enquiry": {"length": 4}}, {"pin": true}])");
    const auto gets = [&](uint8_t item, const std::u16string& text) {
        const CamSeen enquiry = openItem(item);
        EXPECT_EQ(enquiry.condition, kEnquiry);
        EXPECT_EQ(answer(enquiry.id, text), TV_OK);
        return seen.next().condition;
    };
    EXPECT_EQ(gets(2, u"abcd"), kMenu) << "as long as asked for: no terminator needed";
    EXPECT_EQ(gets(2, u"abcx"), kList);
    EXPECT_EQ(gets(2, u"x"), kList) << "the first unit decides";
    EXPECT_EQ(gets(2, u"abcde"), kMenu) << "nothing behind the asked length counts";
    EXPECT_EQ(gets(1, std::u16string(u"ab\0", 3)), kMenu);
    EXPECT_EQ(gets(1, u"abc"), kList);
    EXPECT_EQ(gets(1, std::u16string(u"a\0", 2)), kList);
    EXPECT_EQ(gets(1, u""), kList) << "no text at all";
    EXPECT_EQ(gets(3, u""), kMenu);
    EXPECT_EQ(gets(3, u"a"), kList);
    EXPECT_EQ(gets(4, u"a"), kMenu) << "what does not matter is not read";
    EXPECT_EQ(gets(5, u"4711"), kList) << "PIN correct";
    EXPECT_EQ(gets(5, u"9"), kList);
}

TEST_F(TelevisionCam, AnswersToAnythingButTheOpenQuestionAreRefused) {
    startWith(module());
    EXPECT_EQ(choose(0, 0), TV_NOT_FOUND) << "no dialogue";
    EXPECT_EQ(answer(0, u"x"), TV_NOT_FOUND);
    EXPECT_EQ(leave(), TV_NOT_FOUND);
    const CamSeen main = openMenu();
    EXPECT_EQ(answer(main.id, u"x"), TV_NOT_FOUND) << "an enquiry's answer to a menu";
    EXPECT_EQ(choose(main.id + 1, 1), TV_NOT_FOUND);
    EXPECT_EQ(choose(main.id, 9), TV_INVALID_ARGUMENT);
    EXPECT_EQ(choose(main.id, 255), TV_INVALID_ARGUMENT);
    ASSERT_EQ(choose(main.id, 3), TV_OK);
    const CamSeen enquiry = seen.next(kEnquiry);
    EXPECT_EQ(choose(enquiry.id, 0), TV_NOT_FOUND) << "a menu's answer to an enquiry";
    EXPECT_EQ(choose(main.id, 1), TV_NOT_FOUND) << "stale";
    EXPECT_EQ(answer(main.id, u"abc"), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_ci_set(QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS, 0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ci_set(QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS, 0, nullptr),
              TV_INVALID_ARGUMENT);
    ASSERT_EQ(leave(), TV_OK);
    EXPECT_EQ(seen.next(kClose).value, uint32_t{CI_MMI_CLOSE_BY_HOST}) << "nothing came before";
    EXPECT_EQ(answer(enquiry.id, u"abc\0"), TV_NOT_FOUND);
    EXPECT_EQ(seen.untaken(), 0u);
}

TEST_F(TelevisionCam, EnteringAgainStartsAtTheMainMenu) {
    startWith(module());
    const CamSeen sub = openItem(1);
    const CamSeen main = openMenu();
    EXPECT_EQ(main.title, u"Main");
    EXPECT_EQ(choose(sub.id, 0), TV_NOT_FOUND);
    ASSERT_EQ(choose(main.id, CI_MMI_MENU_BACK), TV_OK);
    seen.next(kClose);
}

TEST_F(TelevisionCam, StateOfTheDialogue) {
    const auto state = [] {
        CI_MMI_STATE_T result = {};
        uint32_t length = sizeof(result);
        EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_MMI_STATE, 0, &result, &length), TV_OK);
        EXPECT_EQ(length, sizeof(result));
        return result;
    };
    startWith(module());
    EXPECT_EQ(state().ui4_id, 0u);
    EXPECT_EQ(state().ui1_kind, CI_MMI_KIND_NONE);
    const CamSeen main = openMenu();
    EXPECT_EQ(state().ui4_id, main.id);
    EXPECT_EQ(state().ui1_kind, CI_MMI_KIND_MENU);
    EXPECT_EQ(state().ui1_item_count, 8);
    EXPECT_EQ(openItem(2).id, state().ui4_id);
    EXPECT_EQ(state().ui1_kind, CI_MMI_KIND_LIST);
    openItem(6);
    EXPECT_EQ(state().ui1_kind, CI_MMI_KIND_ENQUIRY);
    EXPECT_EQ(state().ui1_answer_length, 3);
    EXPECT_EQ(state().b_blind_answer, 1);
    EXPECT_EQ(leave(), TV_OK);
    EXPECT_EQ(state().ui1_kind, CI_MMI_KIND_NONE);
    uint32_t small = sizeof(CI_MMI_STATE_T) - 1;
    CI_MMI_STATE_T none;
    EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_MMI_STATE, 0, &none, &small),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionCam, MenusOfSixtyFourItemsAndOfNone) {
    nlohmann::json items = nlohmann::json::array();
    for (int i = 0; i < 64; ++i) items.push_back("item " + std::to_string(i));
    items[63] = {{"text", "empty"}, {"items", nlohmann::json::array()}};
    startWithMenu(nlohmann::json{{"items", items}}.dump());
    const CamSeen main = openMenu();
    ASSERT_EQ(main.items.size(), 64u);
    EXPECT_EQ(main.items[62], u"item 62");
    EXPECT_EQ(main.title, std::nullopt);
    ASSERT_EQ(choose(main.id, 64), TV_OK);
    const CamSeen empty = seen.next(kMenu);
    EXPECT_EQ(empty.items.size(), 0u);
    EXPECT_EQ(empty.beyond, 0u);
    EXPECT_EQ(choose(empty.id, 1), TV_INVALID_ARGUMENT);
    ASSERT_EQ(choose(empty.id, 0), TV_OK);
    EXPECT_EQ(seen.next(kMenu).items.size(), 64u);
}

TEST_F(TelevisionCam, TextsOfAllPlanes) {
    startWithMenu(R"({"title": "😀", "subtitle": "\ud83d\ude00é€\uffff", "bottom": "",
                      "items": ["𝄞a", "", {}]})");
    const CamSeen menu = openMenu();
    EXPECT_EQ(menu.title, u"\xD83D\xDE00");
    EXPECT_EQ(menu.subtitle, u"\xD83D\xDE00\x00E9\x20AC\xFFFF");
    EXPECT_EQ(menu.bottom, u"");
    EXPECT_EQ(menu.items, (std::vector<CamSeenText>{u"\xD834\xDD1E\x0061", u"", std::nullopt}));
}

// The PIN.

TEST_F(TelevisionCam, PinByDialogueOpensWhatIsBehind) {
    startWith(module());
    const CamSeen enquiry = openItem(4);
    EXPECT_EQ(enquiry.condition, kEnquiry);
    EXPECT_EQ(enquiry.title, u"PIN?");
    EXPECT_EQ(enquiry.length, 4);
    EXPECT_TRUE(enquiry.blind);
    ASSERT_EQ(answer(enquiry.id, u"4711"), TV_OK);
    const CamSeen behind = seen.next(kList);
    EXPECT_EQ(behind.items, (std::vector<CamSeenText>{u"in"}));
    ASSERT_EQ(choose(behind.id, 0), TV_OK);
    EXPECT_EQ(seen.next(kMenu).title, u"Main");
}

TEST_F(TelevisionCam, PinByDialogueHasItsTries) {
    startWith(module());
    CamSeen enquiry = openItem(4);
    ASSERT_EQ(answer(enquiry.id, u"0000"), TV_OK);
    CamSeen notice = seen.next(kList);
    EXPECT_EQ(notice.title, u"wrong PIN, 1 try left");
    ASSERT_EQ(choose(notice.id, 0), TV_OK);
    enquiry = seen.next(kEnquiry);
    ASSERT_EQ(answer(enquiry.id, std::u16string(u"471\0", 4)), TV_OK);
    notice = seen.next(kList);
    EXPECT_EQ(notice.title, u"PIN locked");
    ASSERT_EQ(choose(notice.id, 0), TV_OK);
    const CamSeen main = seen.next(kMenu);
    ASSERT_EQ(choose(main.id, 4), TV_OK);
    EXPECT_EQ(seen.next(kList).title, u"PIN locked") << "it is not even asked";
    EXPECT_EQ(enterPin(kPin), TV_OK);
    EXPECT_EQ(seen.next(kPinReply).value, uint32_t{CI_PIN_STATE_LOCKED}) << "one lock for both";
}

TEST_F(TelevisionCam, PinByCommandHasItsTriesToo) {
    nlohmann::json card = module();
    card["pinRetries"] = 3;
    startWith(card);
    const auto tries = [] {
        uint8_t left = 0xEE;
        uint32_t length = 1;
        EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_PIN_TRIES, 0, &left, &length), TV_OK);
        return left;
    };
    EXPECT_EQ(tries(), 3);
    // The same PIN twice: two equal replies have to come.
    EXPECT_EQ(enterPin("1234"), TV_OK);
    EXPECT_EQ(enterPin("47111"), TV_OK);
    EXPECT_EQ(seen.next(kPinReply).value, uint32_t{CI_PIN_STATE_WRONG});
    EXPECT_EQ(seen.next(kPinReply).value, uint32_t{CI_PIN_STATE_WRONG});
    EXPECT_EQ(tries(), 1);
    EXPECT_EQ(enterPin(kPin), TV_OK);
    EXPECT_EQ(seen.next(kPinReply).value, uint32_t{CI_PIN_STATE_RIGHT});
    EXPECT_EQ(tries(), 3) << "the right one forgives";
    for (const uint32_t state :
         {CI_PIN_STATE_WRONG, CI_PIN_STATE_WRONG, CI_PIN_STATE_LOCKED, CI_PIN_STATE_LOCKED}) {
        EXPECT_EQ(enterPin("0000"), TV_OK);
        EXPECT_EQ(seen.next(kPinReply).value, state);
    }
    EXPECT_EQ(tries(), 0);
    EXPECT_EQ(enterPin(kPin), TV_OK);
    EXPECT_EQ(seen.next(kPinReply).value, uint32_t{CI_PIN_STATE_LOCKED});
    EXPECT_EQ(moveSlot(0), TV_OK);
    EXPECT_EQ(moveSlot(1), TV_OK);
    EXPECT_EQ(tries(), 3) << "inserted anew, unlocked";
}

TEST_F(TelevisionCam, WhatIsNoPinUsesNoTry) {
    startWith(module());
    for (const char* text : {"", "47a1", " 4711", "-1", "00000000000000000000000000000000"}) {
        EXPECT_EQ(enterPin(text), TV_INVALID_ARGUMENT) << text;
    }
    EXPECT_EQ(a_qortvapi_ci_set(QORTVAPI_CI_SET_TYPE_PIN_CMD, 0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(seen.untaken(), 0u);
    EXPECT_EQ(enterPin(kPin), TV_OK);
    EXPECT_EQ(seen.next(kPinReply).value, uint32_t{CI_PIN_STATE_RIGHT});
}

TEST_F(TelevisionCam, PinCanBeReadOnlyOnceItWasEntered) {
    startWith(module());
    uint8_t valid = 0;
    uint16_t digits[5] = {'0', '0', '0', '0', 0xBEEF};
    const auto read = [&](uint32_t length = 8) {
        CI_CAM_PIN_CODE_T query = {&valid, digits};
        return a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_PIN_CODE, 0, &query, &length);
    };
    EXPECT_EQ(read(), TV_OK);
    EXPECT_EQ(valid, 0);
    EXPECT_EQ(digits[0], '0') << "left alone";
    EXPECT_EQ(enterPin("1111"), TV_OK);
    EXPECT_EQ(read(), TV_OK);
    EXPECT_EQ(valid, 0);
    EXPECT_EQ(enterPin(kPin), TV_OK);
    EXPECT_EQ(read(7), TV_INVALID_ARGUMENT);
    EXPECT_EQ(valid, 0);
    EXPECT_EQ(read(), TV_OK);
    EXPECT_EQ(valid, 1);
    EXPECT_EQ(std::u16string(digits, digits + 4), u"4711");
    EXPECT_EQ(digits[4], 0xBEEF);
    valid = 0;
    digits[0] = '0';
    EXPECT_EQ(moveSlot(0), TV_OK);
    EXPECT_EQ(read(), TV_NOT_FOUND);
    EXPECT_EQ(moveSlot(1), TV_OK);
    EXPECT_EQ(read(), TV_OK);
    EXPECT_EQ(valid, 0) << "another insertion";
    EXPECT_EQ(digits[0], '0');
    CI_CAM_PIN_CODE_T query = {nullptr, digits};
    uint32_t length = 8;
    EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_PIN_CODE, 0, &query, &length),
              TV_INVALID_ARGUMENT);
}

// Upgrades.

TEST_F(TelevisionCam, AnUpgradeNotifiesItsVersionAndProgress) {
    startWith(module());
    ASSERT_EQ(choose(openMenu().id, 5), TV_OK);
    EXPECT_EQ(seen.next(kClose).value, uint32_t{CI_MMI_CLOSE_BY_MODULE});
    EXPECT_EQ(seen.next(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE).value, 7u);
    for (uint32_t percent = 10; percent <= 100; percent += 10) {
        EXPECT_EQ(seen.next(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS).value, percent);
    }
    EXPECT_EQ(slotState(), CI_SLOT_STATE_READY);
    EXPECT_EQ(openMenu().condition, kMenu);
}

TEST_F(TelevisionCam, ARemovalBreaksAnUpgrade) {
    nlohmann::json card = module();
    card["firmware"]["seconds"] = 600;
    startWith(card);
    ASSERT_EQ(choose(openMenu().id, 5), TV_OK);
    seen.next(kClose);
    seen.next(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE);
    EXPECT_EQ(slotState(), CI_SLOT_STATE_UPGRADING);
    EXPECT_EQ(enter(), TV_BUSY);
    EXPECT_EQ(moveSlot(0), TV_OK);
    const CamSeen error = seen.next(QORTVAPI_CI_NFY_COND_ERROR);
    EXPECT_EQ(error.value, uint32_t{CI_ERROR_UPGRADE_BROKEN});
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_REMOVED});
    EXPECT_EQ(moveSlot(1), TV_OK);
    EXPECT_EQ(seen.next(kCard).value, uint32_t{CI_CARD_INSERTED});
    EXPECT_EQ(openMenu().condition, kMenu) << "nothing of the upgrade is left";
}

// Properties of the module.

TEST_F(TelevisionCam, NameByItsLength) {
    startWith(module());
    uint32_t length = 0;
    ASSERT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_NAME, 0, nullptr, &length), TV_OK);
    EXPECT_EQ(length, 8u) << "units, with the zero";
    std::vector<uint16_t> name(length);
    ASSERT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_NAME, 0, name.data(), &length), TV_OK);
    EXPECT_EQ(length, 8u);
    EXPECT_EQ(std::u16string(name.begin(), name.end()), std::u16string(u"Tele \xD83D\xDE00\0", 8));
    const auto cut = [](uint32_t room) {
        std::vector<uint16_t> units(room);
        EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_NAME, 0, units.data(), &room), TV_OK);
        return std::u16string(units.begin(), units.begin() + room);
    };
    EXPECT_EQ(cut(1), std::u16string(1, u'\0'));
    EXPECT_EQ(cut(3), std::u16string(u"Te\0", 3));
    EXPECT_EQ(cut(7), std::u16string(u"Tele \0", 6)) << "no half of a pair";
    EXPECT_EQ(cut(100).size(), 8u);
}

TEST_F(TelevisionCam, FixedValuesAndTheirRoom) {
    startWith(module());
    uint8_t id[9] = {};
    id[8] = 0xEE;
    uint32_t length = 8;
    ASSERT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_ID, 0, id, &length), TV_OK);
    EXPECT_EQ(length, 8u);
    EXPECT_EQ(std::vector<uint8_t>(id, id + 9),
              (std::vector<uint8_t>{0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0xEE}));
    length = 7;
    EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_ID, 0, id, &length), TV_INVALID_ARGUMENT);
    EXPECT_EQ(length, 0u);
    char language[4] = {};
    length = 3;
    ASSERT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_LANG_CODE, 0, language, &length), TV_OK);
    EXPECT_EQ(length, 3u);
    EXPECT_STREQ(language, "deu");
    uint32_t value = 9;
    for (const uint32_t type : {7u, 8u, 10u, 16u, 17u, 19u, 26u, 27u, 28u, 30u, 31u, 32u, 999u}) {
        length = 4;
        EXPECT_EQ(a_qortvapi_ci_get(type, 0, &value, &length), TV_NOT_SUPPORTED) << type;
        EXPECT_EQ(length, 0u);
        EXPECT_EQ(value, 9u);
    }
    EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_ID, 0, id, nullptr), TV_INVALID_ARGUMENT);
    length = 8;
    EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_CAM_ID, 0, nullptr, &length),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionCam, ProfileNameKeepsToAHundredUnits) {
    nlohmann::json card = module();
    card["profile"] = std::string(99, 'p');
    startWith(card);
    uint16_t profile[101];
    profile[100] = 0xBEEF;
    uint32_t length = 200;
    ASSERT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_PROFILE_NAME, 0, profile, &length), TV_OK);
    EXPECT_EQ(length, 100u);
    EXPECT_EQ(profile[98], 'p');
    EXPECT_EQ(profile[99], 0);
    EXPECT_EQ(profile[100], 0xBEEF);
}

TEST_F(TelevisionCam, DefaultsOfAModuleWithANameOnly) {
    startWith({{"name", ""}});
    uint16_t text[4] = {9, 9, 9, 9};
    uint32_t length = 200;
    ASSERT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_PROFILE_NAME, 0, text, &length), TV_OK);
    EXPECT_EQ(length, 1u);
    EXPECT_EQ(text[0], 0);
    char language[4] = {};
    length = 3;
    ASSERT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_LANG_CODE, 0, language, &length), TV_OK);
    EXPECT_STREQ(language, "eng");
    EXPECT_EQ(enter(), TV_NOT_SUPPORTED) << "it has no menu";
    EXPECT_EQ(enterPin(kPin), TV_NOT_SUPPORTED) << "nor a PIN";
    uint8_t id[16] = {};
    uint8_t size = sizeof(id);
    EXPECT_EQ(a_qortvapi_ci_key_get_host_id(id, &size), TV_OK);
    EXPECT_EQ(size, 8);
}

TEST_F(TelevisionCam, HostIdIsTheModulesWordWhileItIsIn) {
    startWith(module());
    uint8_t id[255] = {};
    uint8_t size = 255;
    ASSERT_EQ(a_qortvapi_ci_key_get_host_id(id, &size), TV_OK);
    ASSERT_EQ(size, 3);
    EXPECT_EQ(std::vector<uint8_t>(id, id + 4), (std::vector<uint8_t>{0xC0, 0xFF, 0xEE, 0}));
    for (const uint8_t small : {0, 2}) {
        uint8_t few[2] = {7, 7};
        size = small;
        EXPECT_EQ(a_qortvapi_ci_key_get_host_id(few, &size), TV_INVALID_ARGUMENT);
        EXPECT_EQ(size, 3) << "what it needs";
        EXPECT_EQ(few[0], 7);
    }
    EXPECT_EQ(moveSlot(0), TV_OK);
    size = 255;
    ASSERT_EQ(a_qortvapi_ci_key_get_host_id(id, &size), TV_OK);
    EXPECT_EQ(size, 8);
    EXPECT_EQ(a_qortvapi_ci_key_get_host_id(id, nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionCam, VirtualChannelWritesOneByte) {
    startWith(module());
    const auto text = std::make_unique<char>('x');  // the smallest buffer there is
    uint32_t value = 9;
    EXPECT_EQ(a_qortvapi_ci_get_virtual_channel_info(text.get(), &value), TV_OK);
    EXPECT_EQ(*text, '\0');
    EXPECT_EQ(value, 1u);
    EXPECT_EQ(moveSlot(0), TV_OK);
    EXPECT_EQ(a_qortvapi_ci_get_virtual_channel_info(text.get(), &value), TV_NOT_FOUND);
    EXPECT_EQ(value, 0u);
    EXPECT_EQ(a_qortvapi_ci_get_virtual_channel_info(nullptr, &value), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionCam, AnEmptySlotHasOnlyItsState) {
    start();
    listen();
    EXPECT_EQ(slotState(), CI_SLOT_STATE_EMPTY);
    uint16_t text[100] = {};
    for (const uint32_t type :
         {QORTVAPI_CI_GET_TYPE_CAM_NAME, QORTVAPI_CI_GET_TYPE_PIN_TRIES,
          QORTVAPI_CI_GET_TYPE_PROFILE_NAME, QORTVAPI_CI_GET_TYPE_CAM_ID,
          QORTVAPI_CI_GET_TYPE_LANG_CODE, QORTVAPI_CI_GET_TYPE_CAM_PIN_CODE}) {
        uint32_t length = 100;
        EXPECT_EQ(a_qortvapi_ci_get(type, 0, text, &length), TV_NOT_FOUND) << type;
        EXPECT_EQ(length, 0u);
    }
    EXPECT_EQ(enter(), TV_NOT_FOUND);
    EXPECT_EQ(leave(), TV_NOT_FOUND);
    EXPECT_EQ(choose(1, 1), TV_NOT_FOUND);
    EXPECT_EQ(answer(1, u"1"), TV_NOT_FOUND);
    EXPECT_EQ(enterPin(kPin), TV_NOT_FOUND);
    EXPECT_EQ(seen.untaken(), 0u);
}

TEST_F(TelevisionCam, WhatItDoesNotKnowIsNotTouched) {
    startWith(module());
    // The data of these types is a value and no pointer.
    const auto* flag = reinterpret_cast<const void*>(uintptr_t{1});
    for (const uint32_t type : {6u, 24u, 40u, 47u, 80u, 81u, 999u}) {
        EXPECT_EQ(a_qortvapi_ci_set(type, 0, flag), TV_NOT_SUPPORTED) << type;
    }
}

// Handlers.

TEST_F(TelevisionCam, EachRegistrationHasItsHandleAndTag) {
    write(module());
    start();
    const uint32_t first = listen(1, 11);
    EXPECT_GT(first, 0u);
    CamSeen notified = seen.next(kCard);
    EXPECT_EQ(notified.value, uint32_t{CI_CARD_INSERTED});
    EXPECT_EQ(notified.handle, first);
    EXPECT_EQ(notified.tag, 11u);
    uint32_t second = 0;
    ASSERT_EQ(a_qortvapi_ci_reg_cb(&second, 1, 22, CamLog::otherHandler), TV_OK);
    EXPECT_NE(second, first);
    notified = seen.next(kCard);
    EXPECT_EQ(notified.handle, second) << "only the new handler is notified";
    EXPECT_EQ(notified.tag, 22u);
    EXPECT_EQ(listen(1, 33), first) << "the same handler and number";
    EXPECT_EQ(seen.next(kCard).tag, 33u);
    EXPECT_NE(listen(2, 44), first);
    EXPECT_EQ(seen.next(kCard).tag, 44u);
    ASSERT_EQ(enter(), TV_OK);
    std::vector<std::pair<uint32_t, uintptr_t>> receivers;
    for (int i = 0; i < 3; ++i) {
        const CamSeen menu = seen.next(kMenu);
        receivers.emplace_back(menu.handle, menu.tag);
    }
    EXPECT_EQ(receivers[0], (std::pair<uint32_t, uintptr_t>{first, 33}));
    EXPECT_EQ(receivers[1], (std::pair<uint32_t, uintptr_t>{second, 22}));
    EXPECT_EQ(receivers[2].second, 44u);
    EXPECT_EQ(a_qortvapi_ci_reg_cb(nullptr, 0, 0, CamLog::handler), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_ci_reg_cb(&second, 0, 0, nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionCam, AHandlerMayAnswerAtOnce) {
    startWith(module());
    // The handler answers on the notifier's thread, before it returns.
    const auto handler = [](uint32_t, void*, int32_t condition, void* data) {
        if (condition != kMenu) return;
        EXPECT_EQ(choose(static_cast<CI_MMI_MENU_T*>(data)->ui4_id, 0), TV_OK);
    };
    uint32_t handle = 0;
    ASSERT_EQ(a_qortvapi_ci_reg_cb(&handle, 0, 0, handler), TV_OK);
    ASSERT_EQ(enter(), TV_OK);
    seen.next(kMenu);
    EXPECT_EQ(seen.next(kClose).value, uint32_t{CI_MMI_CLOSE_BY_MODULE});
}

TEST_F(TelevisionCam, ManyThreadsTalkWhileItGoesInAndOut) {
    startWith(module());
    std::vector<std::thread> talkers;
    for (int i = 0; i < 3; ++i) {
        talkers.emplace_back([i] {
            for (int round = 0; round < 100; ++round) {
                const int32_t entered = enter();
                EXPECT_TRUE(entered == TV_OK || entered == TV_NOT_FOUND) << entered;
                CI_MMI_STATE_T state = {};
                uint32_t length = sizeof(state);
                EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_MMI_STATE, 0, &state, &length),
                          TV_OK);
                choose(state.ui4_id, 4);
                answer(state.ui4_id + 1, u"4711");
                enterPin("0000");
                if (i == 0) {
                    EXPECT_EQ(moveSlot(round % 2), TV_OK);
                }
            }
        });
    }
    for (std::thread& talker : talkers) talker.join();
    EXPECT_EQ(moveSlot(1), TV_OK);
    EXPECT_EQ(slotState(), CI_SLOT_STATE_READY);
}

}  // namespace
