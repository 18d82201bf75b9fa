/** The core methods for the set's settings that are no plain bridges. */
#include <android-base/properties.h>

#include <cstring>
#include <functional>
#include <optional>
#include <utility>

#include "middleware/av_mode.h"
#include "middleware/event_atsc.h"
#include "middleware/screenmode.h"
#include "middleware/upgrade.h"
#include "middleware/util.h"
#include "middleware/volctrl.h"
#include "support/core_fixture.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Words = std::vector<uint32_t>;
using switchboard::Switchboard;

class ServiceCoreSettings : public CoreTest {};

TEST_F(ServiceCoreSettings, reservedMethodsReachNoMiddleware) {
    Switchboard::startRecording();
    EXPECT_EQ(static_cast<int32_t>(impl->a_hidl_a_qortvapi_enter_special_mode(5)), 0);
    EXPECT_EQ(static_cast<int32_t>(impl->a_hidl_a_qortvapi_quit_special_mode(5)), 0);
    EXPECT_EQ(static_cast<int32_t>(impl->a_hidl_a_qortvapi_query_special_mode_status(5)), 0);
    EXPECT_EQ(static_cast<int32_t>(impl->a_hidl_a_rpc_close_client()), 0);
    EXPECT_TRUE(Switchboard::stopRecording().empty());
}

TEST_F(ServiceCoreSettings, aUtilityIsSetWithTheSizeThatWasSent) {
    const hidl_string name = "name";
    const hidl_vec<uint8_t> data = Bytes{1, 2, 3, 4, 5};
    uint64_t told = 0;
    std::optional<Bytes> read;
    tv.on<&a_qortvapi_util_set>(
            [&](const char* name_in, int32_t kind, const void* data_in, uint64_t size) {
                EXPECT_EQ(name_in, name.c_str());
                EXPECT_EQ(kind, -3);
                const auto* bytes = static_cast<const uint8_t*>(data_in);
                EXPECT_EQ(bytes == data.data(), size <= data.size()) << "no copy but a longer one";
                told = size;
                read.emplace(bytes, bytes + size);
                return -9;
            });
    for (const auto& [size, expected] : std::vector<std::pair<uint64_t, Bytes>>{
                 {5, {1, 2, 3, 4, 5}}, {2, {1, 2}}, {0, {}}, {7, {1, 2, 3, 4, 5, 0, 0}}}) {
        EXPECT_EQ(static_cast<int32_t>(impl->a_hidl_a_qortvapi_util_set(name, -3, data, size)), -9);
        EXPECT_EQ(told, size);
        EXPECT_EQ(read, expected);
    }
}

class ServiceCoreUtilGet : public CoreTest {
  protected:
    using Gets = Answers<uint64_t, Bytes, int32_t>;

    Gets::All get(const Bytes& data, uint64_t size) {
        return Gets::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_util_get("name", -3, data, size, callback);
        });
    }
};

TEST_F(ServiceCoreUtilGet, answersTheWholeBufferAndTheSizeBesideIt) {
    tv.on<&a_qortvapi_util_get>([](const char* name, int32_t kind, void* data, uint32_t* size) {
        EXPECT_STREQ(name, "name");
        EXPECT_EQ(kind, -3);
        EXPECT_EQ(*size, 8u);
        const uint8_t expected[8] = {1, 2, 3};
        EXPECT_EQ(memcmp(data, expected, 8), 0) << "what the client sent, then zeros";
        memcpy(data, "wxyz", 4);
        *size = 4;
        return 12;
    });
    EXPECT_EQ(get({1, 2, 3}, 8), (Gets::All{{4, {'w', 'x', 'y', 'z', 0, 0, 0, 0}, 12}}));
}

TEST_F(ServiceCoreUtilGet, countsTheLow32BitsOfTheSize) {
    tv.on<&a_qortvapi_util_get>([](const char*, int32_t, void* data, uint32_t* size) {
        EXPECT_EQ(*size, 5u);
        memset(data, 0xee, 5);
        return 0;
    });
    EXPECT_EQ(get({}, 0x700000005), (Gets::All{{5, Bytes(5, 0xee), 0}}));
}

TEST_F(ServiceCoreUtilGet, takesMoreBytesThanTheSizeThatTheClientNames) {
    tv.on<&a_qortvapi_util_get>([](const char*, int32_t, void* data, uint32_t* size) {
        EXPECT_EQ(*size, 2u);
        EXPECT_EQ(memcmp(data, "abcde", 5), 0);
        return 0;
    });
    EXPECT_EQ(get({'a', 'b', 'c', 'd', 'e'}, 2), (Gets::All{{2, {'a', 'b'}, 0}}));
}

TEST_F(ServiceCoreUtilGet, passesAFailureOn) {
    tv.on<&a_qortvapi_util_get>([](const char*, int32_t, void*, uint32_t*) { return -2; });
    EXPECT_EQ(get({1}, 3), (Gets::All{{3, {1, 0, 0}, -2}}));
    EXPECT_EQ(get({}, 0), (Gets::All{{0, {}, -2}}));
}

class ServiceCoreTunerDiagnosis : public CoreTest {
  protected:
    using Diagnoses = Answers<int32_t, Bytes, Bytes>;

    Diagnoses::All query(uint64_t size) {
        return Diagnoses::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_util_tuner_fac_query_diag(true, size, callback);
        });
    }
};

TEST_F(ServiceCoreTunerDiagnosis, answersTheResultBeforeBothBuffers) {
    tv.on<&a_qortvapi_util_tuner_fac_query_diag>(
            [](bool flag, uint8_t entries, void* names, void* values) {
                EXPECT_TRUE(flag);
                EXPECT_EQ(entries, 2);
                EXPECT_EQ(memcmp(names, Bytes(70).data(), 70), 0);
                EXPECT_EQ(memcmp(values, Bytes(70).data(), 70), 0);
                memset(names, 0xaa, 70);
                memset(values, 0xbb, 70);
                return 11;
            });
    EXPECT_EQ(query(70), (Diagnoses::All{{11, Bytes(70, 0xaa), Bytes(70, 0xbb)}}));

    tv.on<&a_qortvapi_util_tuner_fac_query_diag>([](bool, uint8_t, void*, void*) { return -3; });
    EXPECT_EQ(query(33), (Diagnoses::All{{-3, Bytes(33), Bytes(33)}}));
}

TEST_F(ServiceCoreTunerDiagnosis, tellsTheEntriesIn8Bits) {
    int told = -1;
    tv.on<&a_qortvapi_util_tuner_fac_query_diag>([&](bool, uint8_t entries, void*, void*) {
        told = entries;
        return 0;
    });
    for (const auto& [size, entries] : std::vector<std::pair<uint64_t, int>>{
                 {0, 0}, {31, 0}, {32, 1}, {8160, 255}, {8192, 0}, {8224, 1}}) {
        const auto answers = query(size);
        EXPECT_EQ(told, entries) << size;
        EXPECT_EQ(answers, (Diagnoses::All{{0, Bytes(size), Bytes(size)}}));
    }
}

class ServiceCoreScreenMode : public CoreTest {
  protected:
    using Modes = Answers<std::vector<uint16_t>, uint32_t, int32_t>;

    Modes::All modes(uint32_t count) {
        return Modes::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_screenmode_get_all_screen_mode(count, callback);
        });
    }
};

TEST_F(ServiceCoreScreenMode, allModesAreThoseThatTheMiddlewareReports) {
    uint32_t reported = 0;
    tv.on<&a_qortvapi_screenmode_get_all_screen_mode>([&](uint16_t* all, uint32_t* count) {
        EXPECT_EQ(*count, 3u);
        EXPECT_EQ(memcmp(all, Bytes(6).data(), 6), 0);
        all[0] = 0xfff1;
        all[1] = 0xfff2;
        all[2] = 0xfff3;
        *count = reported;
        return 5;
    });
    reported = 2;
    EXPECT_EQ(modes(3), (Modes::All{{{0xfff1, 0xfff2}, 2, 5}}));
    reported = 0;
    EXPECT_EQ(modes(3), (Modes::All{{{}, 0, 5}}));
    reported = 0xffffffff;
    EXPECT_EQ(modes(3), (Modes::All{{{0xfff1, 0xfff2, 0xfff3}, 0xffffffff, 5}}))
            << "the number as reported, no more modes than asked for";
}

TEST_F(ServiceCoreScreenMode, allModesAreZeroAfterAFailure) {
    tv.on<&a_qortvapi_screenmode_get_all_screen_mode>([](uint16_t*, uint32_t*) { return -6; });
    EXPECT_EQ(modes(2), (Modes::All{{{0, 0}, 2, -6}}));
    EXPECT_EQ(modes(0), (Modes::All{{{}, 0, -6}}));
}

TEST_F(ServiceCoreScreenMode, overscanIsFourValues) {
    using Overscans = Answers<Words, int32_t>;
    const auto overscan = [&] {
        return Overscans::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_screenmode_get_crnt_overscan(callback);
        });
    };
    tv.on<&a_qortvapi_screenmode_get_crnt_overscan>(
            [](uint32_t* top, uint32_t* bottom, uint32_t* left, uint32_t* right) {
                *top = 0xf0000001;
                *bottom = 2;
                *left = 3;
                *right = 4;
                return 8;
            });
    EXPECT_EQ(overscan(), (Overscans::All{{{0xf0000001, 2, 3, 4}, 8}}));
    tv.on<&a_qortvapi_screenmode_get_crnt_overscan>(
            [](uint32_t*, uint32_t*, uint32_t*, uint32_t*) { return -6; });
    EXPECT_EQ(overscan(), (Overscans::All{{{0, 0, 0, 0}, -6}}));
}

TEST_F(ServiceCoreSettings, allPictureAndSoundModesAreAsManyAsAskedFor) {
    using Modes = Answers<std::vector<uint16_t>, int32_t>;
    const auto write = [](uint16_t* modes, uint32_t count) {
        EXPECT_EQ(count, 3u);
        EXPECT_EQ(memcmp(modes, Bytes(6).data(), 6), 0);
        modes[0] = 0xfff1;
        return 1;
    };
    tv.on<&a_qortvapi_av_mode_get_all_picture_mode>(write);
    EXPECT_EQ(Modes::of([&](const auto& callback) {
                  impl->a_hidl_a_qortvapi_av_mode_get_all_picture_mode(3, callback);
              }),
              (Modes::All{{{0xfff1, 0, 0}, 1}}));
    tv.on<&a_qortvapi_av_mode_get_all_sound_effect>(write);
    EXPECT_EQ(Modes::of([&](const auto& callback) {
                  impl->a_hidl_a_qortvapi_av_mode_get_all_sound_effect(3, callback);
              }),
              (Modes::All{{{0xfff1, 0, 0}, 1}}));
}

TEST_F(ServiceCoreSettings, theSetIsMutedForAnyVolumeButZero) {
    int32_t volume = 0;
    tv.on<&a_qortvapi_volctrl_getVolume>([&] { return volume; });
    Switchboard::startRecording();
    EXPECT_FALSE(static_cast<bool>(impl->a_hidl_a_qortvapi_volctrl_getMute()));
    EXPECT_EQ(Switchboard::stopRecording(),
              std::vector<std::string>{"a_qortvapi_volctrl_getVolume"});
    for (const int32_t other : {1, 100, 256, 65536, -1}) {
        volume = other;
        EXPECT_TRUE(static_cast<bool>(impl->a_hidl_a_qortvapi_volctrl_getMute())) << other;
    }
}

TEST_F(ServiceCoreSettings, aBoolIsTrueForAnyNumberButZero) {
    int32_t number = 0;
    tv.on<&a_qortvapi_zoom_is_enable>([&] { return number; });
    tv.on<&a_qortvapi_volctrl_getMute_by_type>([&](int32_t) { return number; });
    tv.on<&a_qortvapi_event_atsc_check_block>([&](uint32_t, uint32_t) { return number; });
    for (const int32_t each : {0, 1, 2, 256, 65536, -1}) {
        number = each;
        EXPECT_EQ(static_cast<bool>(impl->a_hidl_a_qortvapi_zoom_is_enable()), each != 0);
        EXPECT_EQ(static_cast<bool>(impl->a_hidl_a_qortvapi_volctrl_getMute_by_type(1)), each != 0);
        EXPECT_EQ(static_cast<bool>(impl->a_hidl_a_qortvapi_event_atsc_check_block(1, 2)),
                  each != 0);
    }
}

/** A text in a field of a record, filled to its last byte. */
template <size_t Size>
std::string fill(char (&field)[Size], char character) {
    memset(field, character, Size);
    return std::string(Size, character);
}

TEST_F(ServiceCoreSettings, theFirmwareRecordReachesTheClientFieldByField) {
    using Infos = Answers<HIDL_QORTVAPI_UPGRADE_FW_INFO_T, int32_t>;
    const auto info = [&] {
        return Infos::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_upgrade_get_firmware_info(callback);
        });
    };
    tv.on<&a_qortvapi_upgrade_get_firmware_info>([](QORTVAPI_UPGRADE_FW_INFO_T* record) {
        *record = {0xf0000001, 0xf0000002, 0xf0000003, 0xf0000004, "1.2", "set 3", "what is new"};
        return 6;
    });
    const HIDL_QORTVAPI_UPGRADE_FW_INFO_T expected = {
            0xf0000001, 0xf0000002, 0xf0000003, 0xf0000004, "1.2", "set 3", "what is new"};
    EXPECT_EQ(info(), (Infos::All{{expected, 6}}));

    HIDL_QORTVAPI_UPGRADE_FW_INFO_T full{};
    tv.on<&a_qortvapi_upgrade_get_firmware_info>([&](QORTVAPI_UPGRADE_FW_INFO_T* record) {
        full.version_text = fill(record->s_version_text, 'v');
        full.model = fill(record->s_model, 'm');
        full.description = fill(record->s_description, 'd');
        return 0;
    });
    const auto answers = info();
    EXPECT_EQ(answers, (Infos::All{{full, 0}}));
    EXPECT_EQ(std::get<0>(answers.at(0)).description.size(), 144u);

    tv.on<&a_qortvapi_upgrade_get_firmware_info>([](QORTVAPI_UPGRADE_FW_INFO_T*) { return -6; });
    EXPECT_EQ(info(), (Infos::All{{HIDL_QORTVAPI_UPGRADE_FW_INFO_T{}, -6}}));
}

TEST_F(ServiceCoreSettings, theItemRecordReachesTheClientFieldByField) {
    using Items = Answers<HIDL_QORTVAPI_UPGRADE_ITEM_T, int32_t>;
    const auto item = [&] {
        return Items::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_upgrade_get_item_info(0xf0000009, callback);
        });
    };
    tv.on<&a_qortvapi_upgrade_get_item_info>([](uint32_t index, QORTVAPI_UPGRADE_ITEM_T* record) {
        EXPECT_EQ(index, 0xf0000009);
        *record = {0xf0000001, 0xf0000002, 0xf0000003, "kernel", "/tmp/kernel"};
        return 6;
    });
    const HIDL_QORTVAPI_UPGRADE_ITEM_T expected = {0xf0000001, 0xf0000002, 0xf0000003, "kernel",
                                                   "/tmp/kernel"};
    EXPECT_EQ(item(), (Items::All{{expected, 6}}));

    HIDL_QORTVAPI_UPGRADE_ITEM_T full{};
    tv.on<&a_qortvapi_upgrade_get_item_info>([&](uint32_t, QORTVAPI_UPGRADE_ITEM_T* record) {
        full.name = fill(record->s_name, 'n');
        full.path = fill(record->s_path, 'p');
        return 0;
    });
    EXPECT_EQ(item(), (Items::All{{full, 0}}));

    tv.on<&a_qortvapi_upgrade_get_item_info>([](uint32_t, QORTVAPI_UPGRADE_ITEM_T*) { return -6; });
    EXPECT_EQ(item(), (Items::All{{HIDL_QORTVAPI_UPGRADE_ITEM_T{}, -6}}));
}

TEST_F(ServiceCoreSettings, anUpgradeIsSetWithTheCountThatWasSent) {
    const hidl_vec<uint32_t> ids = Words{1, 2, 3};
    const hidl_vec<uint32_t> values = Words{4, 5};
    std::optional<std::pair<Words, Words>> read;
    tv.on<&a_qortvapi_upgrade_set>([&](QORTVAPI_UPGRADE_SET_TYPE_T type, const uint32_t* ids_in,
                                       uint32_t count, const uint32_t* values_in) {
        EXPECT_EQ(type, 0xf0000007);
        EXPECT_EQ(ids_in == ids.data(), count <= ids.size());
        EXPECT_EQ(values_in == values.data(), count <= values.size());
        read.emplace(Words(ids_in, ids_in + count), Words(values_in, values_in + count));
        return -8;
    });
    const auto type = static_cast<HIDL_QORTVAPI_UPGRADE_SET_TYPE_T>(0xf0000007);
    for (const auto& [count, expected] : std::vector<std::pair<uint32_t, std::pair<Words, Words>>>{
                 {0, {{}, {}}},
                 {2, {{1, 2}, {4, 5}}},
                 {3, {{1, 2, 3}, {4, 5, 0}}},
                 {5, {{1, 2, 3, 0, 0}, {4, 5, 0, 0, 0}}}}) {
        EXPECT_EQ(
                static_cast<int32_t>(impl->a_hidl_a_qortvapi_upgrade_set(type, ids, count, values)),
                -8);
        EXPECT_EQ(read, expected) << count;
    }
}

TEST_F(ServiceCoreSettings, aPropertyIsSetOnThePlatform) {
    Switchboard::startRecording();
    EXPECT_EQ(static_cast<int32_t>(impl->a_hidl_tvapi_set_property("vendor.tv.mode", "shop")), 0);
    EXPECT_EQ(android::base::GetProperty("vendor.tv.mode", ""), "shop");
    EXPECT_EQ(static_cast<int32_t>(impl->a_hidl_tvapi_set_property("", "shop")), -1);
    EXPECT_TRUE(Switchboard::stopRecording().empty());
}

}  // namespace
