/** The methods of the broadcast interface that are no plain bridges. */
#include <cstring>
#include <functional>

#include "QorTvApiBroadcastImpl.h"
#include "middleware/broadcast.h"
#include "support/domain_fixture.h"

namespace {

using switchboard::Switchboard;

class ServiceBroadcast : public DomainTest<QorTvApiBroadcastImpl> {
  protected:
    ServiceBroadcast() : DomainTest("QorTvApiBroadcastImpl(service)") {}
};

// Service contexts.

using NameCheck = std::function<void(const char*)>;

struct ContextRow {
    const char* function;
    const char* entry;  // null for none
    // The flag is the argument of the methods that have one.
    void (*plug)(Switchboard&, const NameCheck&, bool flag);
    void (*call)(QorTvApiBroadcastImpl&, const hidl_string&, bool flag);

    std::string name() const { return std::string("a_qortvapi_broadcast_") + function; }
};

void PrintTo(const ContextRow& row, std::ostream* out) {
    *out << row.function;
}

const ContextRow kContextRows[] = {
        {"sync_stop", nullptr,
         [](Switchboard& tv, const NameCheck& check, bool flag) {
             tv.on<&a_qortvapi_broadcast_sync_stop>([=](const char* context, bool block) {
                 check(context);
                 EXPECT_EQ(block, flag);
                 return -9;
             });
         },
         [](auto& impl, const hidl_string& context, bool flag) {
             const int32_t result = impl.a_hidl_a_qortvapi_broadcast_sync_stop(context, flag);
             EXPECT_EQ(result, -9);
         }},
        {"strm_is_orig_scramble", "Enter.",
         [](Switchboard& tv, const NameCheck& check, bool) {
             tv.on<&a_qortvapi_broadcast_strm_is_orig_scramble>(
                     [=](const char* context, uint32_t type, uint8_t* scrambled) {
                         check(context);
                         EXPECT_EQ(type, 0xfedcba98);
                         EXPECT_EQ(*scrambled, 0);
                         *scrambled = 2;
                         return -9;
                     });
         },
         [](auto& impl, const hidl_string& context, bool) {
             using Flags = Answers<bool, int32_t>;
             EXPECT_EQ(Flags::of([&](const auto& callback) {
                           impl.a_hidl_a_qortvapi_broadcast_strm_is_orig_scramble(
                                   context, static_cast<HIDL_QORTVAPI_STREAM_TYPE_T>(0xfedcba98),
                                   callback);
                       }),
                       (Flags::All{{true, -9}}));
         }},
        {"change_freq", "Enter.",
         [](Switchboard& tv, const NameCheck& check, bool) {
             tv.on<&a_qortvapi_broadcast_change_freq>(
                     [=](const char* context, const QORTVAPI_FREQ_INFO_T* frequency) {
                         check(context);
                         EXPECT_EQ(bytesOf(*frequency),
                                   bytesOf(distinctRecord<HIDL_QORTVAPI_FREQ_INFO_T>()));
                         return -9;
                     });
         },
         [](auto& impl, const hidl_string& context, bool) {
             const int32_t result = impl.a_hidl_a_qortvapi_broadcast_change_freq(
                     context, distinctRecord<HIDL_QORTVAPI_FREQ_INFO_T>());
             EXPECT_EQ(result, -9);
         }},
        {"ana_channel_fine_tune", "Enter.",
         [](Switchboard& tv, const NameCheck& check, bool flag) {
             tv.on<&a_qortvapi_broadcast_ana_channel_fine_tune>(
                     [=](const char* context, int32_t offset, bool tune_now) {
                         check(context);
                         EXPECT_EQ(offset, -62);
                         EXPECT_EQ(tune_now, flag);
                         return -9;
                     });
         },
         [](auto& impl, const hidl_string& context, bool flag) {
             const int32_t result =
                     impl.a_hidl_a_qortvapi_broadcast_ana_channel_fine_tune(context, -62, flag);
             EXPECT_EQ(result, -9);
         }},
        {"get_connect_attr", "Enter.",
         [](Switchboard& tv, const NameCheck& check, bool) {
             tv.on<&a_qortvapi_broadcast_get_connect_attr>(
                     [=](const char* context, int32_t attribute, int32_t* value) {
                         check(context);
                         EXPECT_EQ(attribute, -3);
                         EXPECT_EQ(*value, -1);
                         *value = 0;
                         return -9;
                     });
         },
         [](auto& impl, const hidl_string& context, bool) {
             using Values = Answers<int32_t, int32_t>;
             EXPECT_EQ(Values::of([&](const auto& callback) {
                           impl.a_hidl_a_qortvapi_broadcast_get_connect_attr(context, -3, callback);
                       }),
                       (Values::All{{0, -9}}));
         }},
};

class ServiceBroadcastContext : public ServiceBroadcast,
                                public testing::WithParamInterface<ContextRow> {};

TEST_P(ServiceBroadcastContext, isNamedByFiveCharactersAtMost) {
    const ContextRow& row = GetParam();
    struct Name {
        std::string sent;
        std::string received;
    };
    for (const Name& name : {Name{"", ""}, Name{"main", "main"}, Name{"main5", "main5"},
                             Name{"main56", "main5"}, Name{std::string(100000, 'x'), "xxxxx"}}) {
        for (const bool flag : {true, false}) {
            int calls = 0;
            const auto check = [&](const char* context) {
                ++calls;
                ASSERT_EQ(context, name.received);
            };
            row.plug(tv, check, flag);
            Switchboard::startRecording();
            row.call(*impl, name.sent, flag);
            EXPECT_EQ(Switchboard::stopRecording(), Texts{row.name()});
            EXPECT_EQ(calls, 1);
        }
    }
}

TEST_P(ServiceBroadcastContext, hasTheEntryLineOfItsMethod) {
    const ContextRow& row = GetParam();
    const auto ignore = [](const char*) {};
    row.plug(tv, ignore, true);
    expectBridge(row.name(), row.entry == nullptr ? Texts{} : Texts{row.entry},
                 [&] { row.call(*impl, "main", true); });
}

INSTANTIATE_TEST_SUITE_P(, ServiceBroadcastContext, testing::ValuesIn(kContextRows),
                         [](const auto& row) { return std::string(row.param.function); });

TEST_F(ServiceBroadcast, aConnectionAttributeThatNobodyWritesIsMinusOne) {
    tv.on<&a_qortvapi_broadcast_get_connect_attr>(
            [](const char*, int32_t, int32_t*) { return -4; });
    using Values = Answers<int32_t, int32_t>;
    EXPECT_EQ(Values::of([&](const auto& callback) {
                  impl->a_hidl_a_qortvapi_broadcast_get_connect_attr("main", 0, callback);
              }),
              (Values::All{{-1, -4}}));
}

TEST_F(ServiceBroadcast, aStreamThatIsNotScrambledIsFalse) {
    tv.on<&a_qortvapi_broadcast_strm_is_orig_scramble>(
            [](const char*, uint32_t, uint8_t*) { return -4; });
    using Flags = Answers<bool, int32_t>;
    EXPECT_EQ(Flags::of([&](const auto& callback) {
                  impl->a_hidl_a_qortvapi_broadcast_strm_is_orig_scramble(
                          "main", HIDL_QORTVAPI_STREAM_TYPE_T::QORTVAPI_STREAM_TYPE_VIDEO,
                          callback);
              }),
              (Flags::All{{false, -4}}));
}

// Regions.

class ServiceBroadcastRegions : public ServiceBroadcast {
  protected:
    /** Depth, the three codes, name, result. */
    using Regions = Answers<int, int, int, int, std::string, int32_t>;

    Regions::All get() const {
        Regions::All regions;
        impl->a_hidl_a_qortvapi_broadcast_get_target_regions(
                0xf001, 0xf002, 0xf003,
                [&](const HIDL_QORTVAPI_SB_DVB_REGION_T& region, int32_t result) {
                    regions.emplace_back(region.depth, region.primary, region.secondary,
                                         region.tertiary, region.name, result);
                });
        return regions;
    }

    /** The middleware writes `record` and returns `result`. */
    void write(const QORTVAPI_SB_DVB_REGION_T& record, int32_t result) {
        tv.on<&a_qortvapi_broadcast_get_target_regions>([=](uint16_t level, uint16_t parent,
                                                            uint16_t index,
                                                            QORTVAPI_SB_DVB_REGION_T* region) {
            EXPECT_EQ(level, 0xf001);
            EXPECT_EQ(parent, 0xf002);
            EXPECT_EQ(index, 0xf003);
            EXPECT_EQ(bytesOf(*region), std::vector<uint8_t>(42));
            *region = record;
            return result;
        });
    }
};

TEST_F(ServiceBroadcastRegions, areConvertedWhateverTheResult) {
    for (const int32_t result : {0, -7}) {
        write({0xf4, 0xf005, 0xf006, 0xf007, "South"}, result);
        expectBridge("a_qortvapi_broadcast_get_target_regions", {"Enter."}, [&] {
            EXPECT_EQ(get(), (Regions::All{{0xf4, 0xf005, 0xf006, 0xf007, "South", result}}));
        });
    }
}

TEST_F(ServiceBroadcastRegions, areZeroWhereNothingIsWritten) {
    write({}, -7);
    EXPECT_EQ(get(), (Regions::All{{0, 0, 0, 0, "", -7}}));
}

TEST_F(ServiceBroadcastRegions, haveNoLongerNameThanTheirRecord) {
    QORTVAPI_SB_DVB_REGION_T record{};
    memset(record.s_name, 'x', sizeof(record.s_name));
    write(record, 0);
    EXPECT_EQ(get(), (Regions::All{{0, 0, 0, 0, std::string(34, 'x'), 0}}));
}

// The CAM's operator.

class ServiceBroadcastOperator : public ServiceBroadcast {
  protected:
    using Names = Answers<std::string, int32_t>;

    Names::All get(uint32_t length) const {
        return Names::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_broadcast_get_cam_operator_name(length, callback);
        });
    }
};

TEST_F(ServiceBroadcastOperator, isAskedForSixtyFourCharactersAtMost) {
    struct Length {
        uint32_t sent;
        uint32_t told;
        std::string printed;  // in the line about a cut; empty for none
    };
    for (const Length& length :
         {Length{0, 0, ""}, Length{1, 1, ""}, Length{64, 64, ""}, Length{65, 64, "65"},
          Length{1000, 64, "1000"}, Length{0xffffffff, 64, "-1"}}) {
        tv.on<&a_qortvapi_broadcast_get_cam_operator_name>([&](uint32_t told, char* name) {
            EXPECT_EQ(told, length.told);
            EXPECT_EQ(std::string(name, 65), std::string(65, '\0'));
            memset(name, 'x', told);
            return -9;
        });
        Texts always;
        if (!length.printed.empty()) {
            always = {"ui4_length=" + length.printed + " > 64, cut!!\n"};
        }
        Texts texts = {"Enter."};
        texts.insert(texts.end(), always.begin(), always.end());
        expectBridge(
                "a_qortvapi_broadcast_get_cam_operator_name", texts,
                [&] {
                    EXPECT_EQ(get(length.sent), (Names::All{{std::string(length.told, 'x'), -9}}));
                },
                always);
    }
}

TEST_F(ServiceBroadcastOperator, isEmptyWhereNothingIsWritten) {
    tv.on<&a_qortvapi_broadcast_get_cam_operator_name>([](uint32_t, char*) { return -4; });
    EXPECT_EQ(get(64), (Names::All{{"", -4}}));
}

TEST_F(ServiceBroadcastOperator, endsAtTheFirstNul) {
    tv.on<&a_qortvapi_broadcast_get_cam_operator_name>([](uint32_t, char* name) {
        memcpy(name, "one\0two", 8);
        return 0;
    });
    EXPECT_EQ(get(64), (Names::All{{"one", 0}}));
}

// The rest.

TEST_F(ServiceBroadcast, signalIsLostUnlessTheMiddlewareReturnsZero) {
    for (const int32_t result : {0, 1, 2, 256, -1}) {
        tv.on<&a_qortvapi_broadcast_is_signal_loss>([&] { return result; });
        const bool lost = impl->a_hidl_a_qortvapi_broadcast_is_signal_loss();
        EXPECT_EQ(lost, result != 0) << result;
    }
}

TEST_F(ServiceBroadcast, theStatusOfAnApplicationHasNothingInItsGap) {
    tv.on<&a_qortvapi_broadcast_transfer_external_ui_status>([](const QORTVAPI_EXTERNAL_UI_STATUS_T*
                                                                        status) {
        EXPECT_EQ(bytesOf(*status), (std::vector<uint8_t>{0x98, 0xba, 0xdc, 0xfe, 0xf1, 0, 0, 0}));
        return -9;
    });
    auto status = distinctRecord<HIDL_QORTVAPI_EXTERNAL_UI_STATUS_T>();
    status.ui_id = 0xfedcba98;
    status.visible = 0xf1;
    expectBridge("a_qortvapi_broadcast_transfer_external_ui_status", {"Enter."}, [&] {
        const int32_t result =
                impl->a_hidl_a_qortvapi_broadcast_transfer_external_ui_status(status);
        EXPECT_EQ(result, -9);
    });
}

}  // namespace
