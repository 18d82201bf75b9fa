/** A television with a Common Interface module, and short functions to talk to the module. */
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

#include "middleware/util.h"
#include "support/cam_log.h"
#include "support/television_test.h"

class TelevisionCam : public TelevisionTest {
  protected:
    static constexpr char kPin[] = "4711";

    TelevisionCam() { seen.clear(); }
    ~TelevisionCam() override {
        tv.reset();
        seen.clear();
    }

    /** The description of a module with every kind of menu item. */
    static nlohmann::json module() {
        return nlohmann::json::parse(R"({
            "name": "Tele 😀", "id": "0123456789ABCDEF", "language": "deu", "profile": "Profil",
            "hostId": "C0FFEE", "pin": "4711", "pinRetries": 2,
            "menu": {"title": "Main", "subtitle": "", "items": [
                {"text": "Sub", "items": ["a", {"text": "b"}]},
                {"text": "About", "list": {"title": "Über", "bottom": "OK", "items": ["1", "2"]}},
                {"text": "Code", "enquiry": {"prompt": "Which?", "length": 8, "accept": "abc",
                                             "then": {"title": "Inner", "items": ["x"]}}},
                {"text": "PIN", "pin": {"prompt": "PIN?", "then": {"list": ["in"]}}},
                {"text": "Upgrade", "upgrade": true},
                {"text": "Name", "enquiry": {"length": 3, "blind": true}},
                {"text": "Serial", "info": "12 34"},
                "Nothing"
            ]},
            "firmware": {"version": 7, "seconds": 0}
        })");
    }

    std::string cardPath() const { return streams() + "/cam.json"; }
    /** Replaces the module's description at once, as an editor does that saves. */
    void write(const std::string& text) const {
        const std::string path = cardPath();
        std::ofstream(path + ".new") << text;
        std::filesystem::rename(path + ".new", path);
    }
    void write(const nlohmann::json& card) const { write(card.dump()); }

    /** Registers the log's handler. Returns the handle of the registration. */
    uint32_t listen(uint32_t number = 0, uint32_t tag = 5) {
        uint32_t handle = 0;
        EXPECT_EQ(a_qortvapi_ci_reg_cb(&handle, number, tag, CamLog::handler), TV_OK);
        return handle;
    }
    /** Starts the television with that module, and waits until the handler is notified of it. */
    void startWith(const nlohmann::json& card) {
        write(card);
        start();
        listen();
        EXPECT_EQ(seen.next(QORTVAPI_CI_NFY_COND_CARD_INSERT).value, uint32_t{CI_CARD_INSERTED});
    }
    /** The same with a module that has that menu only. */
    void startWithMenu(const std::string& menu) {
        startWith({{"name", "x"}, {"pin", kPin}, {"menu", nlohmann::json::parse(menu)}});
    }

    static int32_t enter() { return a_qortvapi_ci_set(QORTVAPI_CI_SET_TYPE_MMI_ENTER, 0, nullptr); }
    static int32_t leave() { return a_qortvapi_ci_set(QORTVAPI_CI_SET_TYPE_MMI_CLOSE, 0, nullptr); }
    static int32_t choose(uint32_t id, uint8_t item) {
        const CI_MMI_MENU_ANS_T answer = {id, item, {}};
        return a_qortvapi_ci_set(QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS, 0, &answer);
    }
    /** Answers an enquiry with exactly the units of `text`, without a terminator unless it has one.
     */
    static int32_t answer(uint32_t id, const std::u16string& text,
                          uint8_t kind = CI_MMI_ENQ_ANSWERED) {
        // Memory of its own, so that a read beyond its end is caught.
        const std::vector<uint16_t> units(text.begin(), text.end());
        const CI_MMI_ENQ_ANS_T record = {id, kind, units.empty() ? nullptr : units.data()};
        return a_qortvapi_ci_set(QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS, 0, &record);
    }
    static int32_t enterPin(const std::string& digits) {
        return a_qortvapi_ci_set(QORTVAPI_CI_SET_TYPE_PIN_CMD, 0, digits.c_str());
    }
    static int32_t moveSlot(uint8_t in, int32_t kind = 0) {
        return a_qortvapi_util_set(CI_SLOT_UTIL_NAME, kind, &in, 1);
    }

    CamSeen openMenu() {
        EXPECT_EQ(enter(), TV_OK);
        return seen.next();
    }
    /** Opens the main menu and chooses one item. */
    CamSeen openItem(uint8_t item) {
        EXPECT_EQ(choose(openMenu().id, item), TV_OK);
        return seen.next();
    }

    static uint8_t slotState() {
        uint8_t state = 0xEE;
        uint32_t length = 1;
        EXPECT_EQ(a_qortvapi_ci_get(QORTVAPI_CI_GET_TYPE_SLOT_STATE, 0, &state, &length), TV_OK);
        EXPECT_EQ(length, 1u);
        return state;
    }

    CamLog& seen = CamLog::instance();
};
