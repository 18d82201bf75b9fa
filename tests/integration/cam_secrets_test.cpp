// What is secret about a CAM and its keys is written nowhere, whatever carries it over the real
// socket.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiChannelList.h>

#include "cam_fixture.h"
#include "middleware/channellist.h"
#include "middleware/ci.h"
#include "middleware/records.h"
#include "qortv/cam.h"

namespace integration {
namespace {

using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiChannelList;
using Bytes = std::vector<uint8_t>;

std::string joined(const std::vector<std::string>& parts, const std::string& separator) {
    std::string text;
    for (const auto& part : parts) text += (text.empty() ? "" : separator) + part;
    return text;
}

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

/** The ways in which bytes may be written into a log, in lower case, and the bytes themselves. */
std::vector<std::string> spellings(const Bytes& bytes) {
    std::vector<std::string> hex;
    std::vector<std::string> prefixed;
    std::vector<std::string> decimal;
    for (const uint8_t byte : bytes) {
        char text[8];
        std::snprintf(text, sizeof text, "%02x", byte);
        hex.emplace_back(text);
        prefixed.push_back("0x" + hex.back());
        decimal.push_back(std::to_string(byte));
    }
    std::vector<std::string> all = {std::string(bytes.begin(), bytes.end()), joined(hex, ""),
                                    joined({hex.rbegin(), hex.rend()}, "")};
    for (const char* separator : {" ", ":", "-", ",", ", "}) {
        all.push_back(joined(hex, separator));
        all.push_back(joined(prefixed, separator));
        all.push_back(joined(decimal, separator));
    }
    return all;
}

/** Every four neighbours among `bytes`, in all spellings. */
std::vector<std::string> spellingsOfParts(const Bytes& bytes) {
    std::vector<std::string> all;
    for (size_t i = 0; i + 4 <= bytes.size(); ++i) {
        const Bytes part(bytes.begin() + static_cast<long>(i),
                         bytes.begin() + static_cast<long>(i) + 4);
        const auto some = spellings(part);
        all.insert(all.end(), some.begin(), some.end());
        uint32_t number = 0;
        std::memcpy(&number, part.data(), sizeof number);
        all.push_back(std::to_string(number));
        all.push_back(std::to_string(__builtin_bswap32(number)));
    }
    return all;
}

/** A text in all spellings, as its characters and as UTF-16. */
std::vector<std::string> spellingsOfText(const std::string& text) {
    Bytes wide;
    for (const char c : text) wide.insert(wide.end(), {static_cast<uint8_t>(c), 0});
    auto all = spellings({text.begin(), text.end()});
    const auto more = spellings(wide);
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

/** Whether `secret` stands in `text`; four digits only where they are a number of their own. */
bool standsIn(const std::string& secret, const std::string& text) {
    const auto isDigit = [&](size_t at) { return at < text.size() && std::isdigit(text[at]) != 0; };
    const bool isShort =
            secret.size() == 4 && std::all_of(secret.begin(), secret.end(),
                                              [](unsigned char c) { return std::isdigit(c) != 0; });
    for (size_t at = text.find(secret); at != std::string::npos; at = text.find(secret, at + 1)) {
        if (!isShort || !(isDigit(at - 1) || isDigit(at + secret.size()))) return true;
    }
    return false;
}

/** The first of `secrets` that stands in `text`, raw or whatever the letter case. */
std::string found(const std::vector<std::string>& secrets, const std::string& text) {
    const std::string lowered = lower(text);
    for (const auto& secret : secrets) {
        if (standsIn(secret, text) || standsIn(secret, lowered)) return secret;
    }
    return "";
}

/** What stands behind date, process and tag in a line of the service's log. */
std::string messageOf(const std::string& line) {
    const size_t colon = line.find(": ");
    return colon == std::string::npos ? line : line.substr(colon + 2);
}

/** The debug lines that tell the units of a text, as the service is meant to write them. */
std::vector<std::string> unitLines(const std::string& what, const std::string& text) {
    std::vector<std::string> lines;
    for (size_t i = 0; i < text.size(); ++i) {
        lines.push_back("QorTvApiCIImpl, " + what + " t_enq_ans[" + std::to_string(i) +
                        "]:" + std::to_string(text[i]));
    }
    return lines;
}

/** A record with a BISS key, as it crosses the interface. */
Bytes bissImage(const Bytes& key, uint16_t id) {
    BSL_REC_T record = {};
    record.t_header.ui4_frequency_khz = 11000000;
    record.ui2_bsl_rec_id = id;
    record.ui1_key_length = sizeof record.aui1_key;
    std::copy(key.begin(), key.end(), record.aui1_key);
    Bytes image(sizeof record);
    std::memcpy(image.data(), &record, sizeof record);
    return image;
}

/**
 * Every method that carries BISS keys carries this one, and then the one that takes its place.
 * `hearUpdate` is called after each change and returns once a client has heard of it: of equal
 * updates that wait at the same time the television sends one.
 */
void carryBissKeys(const Bytes& key, const Bytes& changed,
                   const std::function<void()>& hearUpdate) {
    const auto lists = qortv::connect<IQorTvApiChannelList>();
    uint32_t handle = 0;
    qortv::check(lists->a_hidl_a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(
                         BSL_ID_MAIN, [&](uint32_t list, int32_t) { handle = list; }),
                 "get_bsl_handle_by_bsl_id");
    uint16_t id = 0;
    const auto set = [&](uint32_t operation, const Bytes& its_key) {
        int32_t result = -1;
        qortv::check(lists->a_hidl_a_qortvapi_bisskey_set_bsl_rec_info(
                             handle, operation, bissImage(its_key, id),
                             [&](uint32_t written, int32_t code) {
                                 id = static_cast<uint16_t>(written);
                                 result = code;
                             }),
                     "set_bsl_rec_info");
        EXPECT_EQ(result, 0) << operation;
        hearUpdate();
    };
    Bytes read;
    const auto keep = [&](const auto& image, uint32_t, int32_t) { read = image; };
    set(BISSKEY_ADD, key);
    qortv::check(lists->a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id(handle, id, keep),
                 "get_bsl_rec_by_bsl_rec_id");
    EXPECT_EQ(read, bissImage(key, id));
    set(BISSKEY_MODIFY, changed);
    qortv::check(lists->a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_idx(handle, 0, keep),
                 "get_bsl_rec_by_idx");
    EXPECT_EQ(read, bissImage(changed, id));
    read.clear();
    const Bytes every_header(sizeof(BSL_HEADER_T));
    qortv::check(
            lists->a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_header(handle, every_header, 0, keep),
            "get_bsl_rec_by_header");
    EXPECT_EQ(read, bissImage(changed, id));
    const auto same = [&](const Bytes& other) {
        return qortv::valueOf(lists->a_hidl_a_qortvapi_bisskey_is_same_record(read, other),
                              "is_same_record");
    };
    EXPECT_EQ(same(bissImage(changed, id)), 1);
    EXPECT_EQ(same(bissImage(key, id)), 0);
    set(BISSKEY_DELETE, changed);
}

/** The host takes in a key, and tells what it tells of itself, its keys and the module. */
void carryHostKey(const Bytes& key) {
    const auto ci = qortv::connect<qortv::Cam::Interface>();
    const auto size = static_cast<uint32_t>(key.size());
    EXPECT_EQ(qortv::valueOf(ci->a_hidl_a_qortvapi_ci_key_write(key, size), "ci_key_write"), 0);
    EXPECT_EQ(qortv::valueOf(ci->a_hidl_a_qortvapi_ci_key_update(), "ci_key_update"), 0);
    CI_KEY_INFO_T info = {};
    qortv::check(ci->a_hidl_a_qortvapi_ci_key_query([&](const auto& area, int32_t) {
        std::memcpy(&info, area.data(), sizeof info);
    }),
                 "ci_key_query");
    EXPECT_EQ(info.ui2_size, CI_KEY_SIZE);
    int32_t result = -1;
    qortv::check(ci->a_hidl_a_qortvapi_ci_key_get_host_id(
                         8, [&](const auto&, uint8_t, int32_t code) { result = code; }),
                 "ci_key_get_host_id");
    EXPECT_EQ(result, 0);
    uint32_t has_menu = 0;
    qortv::check(ci->a_hidl_a_qortvapi_ci_get_virtual_channel_info(
                         1, [&](const auto&, uint32_t value, int32_t) { has_menu = value; }),
                 "ci_get_virtual_channel_info");
    EXPECT_EQ(has_menu, 1U);
}

/** The module tells its PIN, which was entered before. */
void readPin() {
    uint8_t valid = 0;
    std::vector<uint16_t> digits;
    qortv::check(qortv::connect<qortv::Cam::Interface>()->a_hidl_a_qortvapi_ci_get_cam_pin_code(
                         QORTVAPI_CI_GET_TYPE_CAM_PIN_CODE, 0,
                         [&](const auto& code, int32_t) {
                             valid = code.ui1_valid;
                             digits = code.w2s_pin_code;
                         }),
                 "ci_get_cam_pin_code");
    EXPECT_EQ(valid, 1);
    EXPECT_EQ(digits, std::vector<uint16_t>(kPin, kPin + std::strlen(kPin)));
}

TEST(IntegrationCamSecrets, TheSearchFindsEverySpelling) {
    const Bytes bytes = {0xA7, 0x5C, 0xE9, 0x3B, 0xD1};
    const auto parts = spellingsOfParts(bytes);
    for (const char* text : {"key A75CE93B", "a7 5c e9 3b d1", "xx 5c:e9:3b:d1",
                             "{0xA7, 0x5C, 0xE9, 0x3B}", "167,92,233,59", "92 233 59 209",
                             "3be95ca7", "1005149351", "2807884091", "\xA7\x5C\xE9\x3B"}) {
        EXPECT_NE(found(parts, text), "") << text;
    }
    EXPECT_EQ(found(spellingsOfText(kPin), "1795297530"), "");
    EXPECT_EQ(found(parts, "a7 5c e9 xx 3b d1 167"), "");
    for (const char* text : {"pin=9753", "39373533", "39 37 35 33", "57 55 53 51",
                             "3900370035003300", "0033003500370039"}) {
        EXPECT_NE(found(spellingsOfText(kPin), text), "") << text;
    }
    EXPECT_NE(found(spellingsOfText(kPin), std::string("9\0007\0005\0003\0", 8)), "");
}

TEST_F(IntegrationCam, NoSecretIsWrittenAnywhereElse) {
    const auto watch = listener();
    const auto script = menu();
    script->expect("menu");
    script->say(kSecret);
    script->expect("enquiry");
    script->say(kPhrase);
    script->expect("list");
    script->say("");
    script->expect("menu");
    script->say(kPinItem);
    script->expect("enquiry");
    script->say(kPin);
    EXPECT_EQ(script->expect("list")["title"], "PIN correct");
    script->end();
    script->expect("closed");
    EXPECT_EQ(script->process().wait(), 0);
    const auto pin = ctlReading(kPin, {"cam", "pin"});
    EXPECT_EQ(pin.status, 0);
    const auto malformed = ctlReading(std::string(kPin) + "x", {"cam", "pin"});
    EXPECT_EQ(malformed.status, 1);

    readPin();
    const Bytes key = {0xA7, 0x5C, 0xE9, 0x3B, 0xD1, 0x68, 0xF2, 0x94};
    const Bytes changed = {0xB6, 0x4D, 0xFA, 0x2C, 0xC0, 0x79, 0xE3, 0x85};
    size_t updates = 0;
    carryBissKeys(key, changed, [&] {
        ++updates;
        EXPECT_TRUE(eventually(
                [&] { return countOf("notifyBisskeyUpdate", watch->out()) >= updates; }));
    });
    EXPECT_EQ(updates, 3U);
    Bytes host_key(CI_KEY_SIZE);
    for (size_t i = 0; i < host_key.size(); ++i) host_key[i] = 0x80 | (11 + 37 * i);
    carryHostKey(host_key);

    std::multiset<std::string> units;  // that are meant to be told, each once
    for (const auto& lines : {unitLines("with QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS", kPhrase),
                              unitLines("with QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS", kPin),
                              unitLines("a_hidl_a_qortvapi_ci_get_cam_pin_code", kPin)}) {
        units.insert(lines.begin(), lines.end());
    }
    std::string log;
    for (const auto& line : linesOf(mStation.log())) {
        const std::string message = messageOf(line);
        const size_t place = message.find("> ");  // the end of "<function:line> "
        const auto unit = units.find(place == std::string::npos ? "" : message.substr(place + 2));
        if (unit != units.end()) {
            units.erase(unit);
        } else {
            log += message + "\n";
        }
    }
    EXPECT_TRUE(units.empty()) << "the service was not debugged: " << *units.begin();
    EXPECT_EQ(countOf("t_enq_ans[", log), 0U) << "of no text that was given";
    for (const char* written :
         {"a_hidl_cam_pin_code.ui1_valid:1!", "a_hidl_a_qortvapi_bisskey_set_bsl_rec_info",
          "a_hidl_a_qortvapi_bisskey_is_same_record", "pui1_key_buffer.size() = 64"}) {
        EXPECT_GT(countOf(written, log), 0U) << written;
    }
    const std::map<std::string, std::string> written = {
            {"the service's log", log},
            {"the dialogue's output", script->process().out() + script->process().err()},
            {"the listener's output", watch->out() + watch->err()},
            {"the output of pin", pin.out + pin.err + malformed.out + malformed.err}};
    for (const auto& [where, text] : written) {
        for (const Bytes& secret : {key, changed, host_key}) {
            EXPECT_EQ(found(spellingsOfParts(secret), text), "") << where;
        }
        EXPECT_EQ(found(spellingsOfText(kPhrase), text), "") << where;
        EXPECT_EQ(found(spellingsOfText(kPin), text), "") << where;
    }
}

}  // namespace
}  // namespace integration
