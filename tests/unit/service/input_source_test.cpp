/** The methods of the input source and multiview interfaces that are no plain bridges. */
#include <cstring>
#include <functional>

#include "QorTvApiInputSrcImpl.h"
#include "QorTvApiMultiviewImpl.h"
#include "middleware/inputsource.h"
#include "middleware/multiview.h"
#include "support/domain_fixture.h"

namespace {

using switchboard::Switchboard;

class ServiceInputSource : public DomainTest<QorTvApiInputSrcImpl> {
  protected:
    ServiceInputSource() : DomainTest("QorTvApiInputSrcImpl(service)") {}
};

TEST_F(ServiceInputSource, theirNumberIsTheLowByte) {
    for (const int32_t result : {0, 7, 0xff, 0x100, 0x1fe, -1}) {
        tv.on<&a_qortvapi_inputsource_get_sourcetotalnum>([&] { return result; });
        const uint8_t count = impl->a_hidl_a_qortvapi_inputsource_get_sourcetotalnum();
        EXPECT_EQ(count, result & 0xff);
    }
}

TEST_F(ServiceInputSource, numbersAreNotFlags) {
    tv.on<&a_qortvapi_inputsource_get_mhl_port_num>([](uint8_t* count) {
        *count = 2;
        return 0;
    });
    tv.on<&a_qortvapi_inputsource_check_menu_tv_block>([](uint8_t* blocked) {
        *blocked = 2;
        return 0;
    });
    using Numbers = Answers<int, int32_t>;
    EXPECT_EQ(Numbers::of([&](const auto& callback) {
                  impl->a_hidl_a_qortvapi_inputsource_get_mhl_port_num(callback);
              }),
              (Numbers::All{{2, 0}}));
    EXPECT_EQ(Numbers::of([&](const auto& callback) {
                  impl->a_hidl_a_qortvapi_inputsource_check_menu_tv_block(callback);
              }),
              (Numbers::All{{1, 0}}));
}

TEST_F(ServiceInputSource, aSharedPlugHasTwoSources) {
    using Plugs = Answers<int, int, int32_t>;
    for (const int32_t result : {0, -7}) {
        tv.on<&a_qortvapi_inputsource_get_sharepinrec_byidx>(
                [&](int32_t index, QORTVAPI_INPUT_SHARE_PIN_RECORD_T* record) {
                    EXPECT_EQ(index, -3);
                    EXPECT_EQ(bytesOf(*record), std::vector<uint8_t>(2));
                    if (result == 0) *record = {0xf1, 0xf2};
                    return result;
                });
        const std::string function = "a_qortvapi_inputsource_get_sharepinrec_byidx";
        expectBridge(function, {"a_hidl_" + function}, [&] {
            Plugs::All plugs;
            impl->a_hidl_a_qortvapi_inputsource_get_sharepinrec_byidx(
                    -3, [&](const HIDL_QORTVAPI_INPUT_SHARE_PIN_RECORD_T& plug, int32_t code) {
                        plugs.emplace_back(plug.source_id, plug.other_source_id, code);
                    });
            EXPECT_EQ(plugs,
                      result == 0 ? (Plugs::All{{0xf1, 0xf2, 0}}) : (Plugs::All{{0, 0, -7}}));
        });
    }
}

// Records of sources.

class ServiceInputSourceRecord : public ServiceInputSource {
  protected:
    /** Id, device type, index, name, flags, connected, result. */
    using Sources = Answers<int, int, int, std::string, uint32_t, int, int32_t>;

    Sources::All get() const {
        Sources::All sources;
        impl->a_hidl_a_qortvapi_inputsource_get_sourcerec_byidx(
                -3, [&](const HIDL_QORTVAPI_INPUT_SOURCE_RECORD_T& source, int32_t result) {
                    sources.emplace_back(source.source_id, source.device_type,
                                         source.internal_index, source.name, source.flags,
                                         source.connected, result);
                });
        return sources;
    }

    /** The middleware writes `record` and returns `result`. */
    void write(const QORTVAPI_INPUT_SOURCE_RECORD_T& record, int32_t result) {
        tv.on<&a_qortvapi_inputsource_get_sourcerec_byidx>(
                [=](int32_t index, QORTVAPI_INPUT_SOURCE_RECORD_T* source) {
                    EXPECT_EQ(index, -3);
                    EXPECT_EQ(bytesOf(*source), std::vector<uint8_t>(44));
                    *source = record;
                    return result;
                });
    }
};

TEST_F(ServiceInputSourceRecord, isConvertedWhateverTheResult) {
    const std::string function = "a_qortvapi_inputsource_get_sourcerec_byidx";
    for (const int32_t result : {0, -7}) {
        write({0xf1, 0xf2, 0xf3, "HDMI 1", 0xfedcba98, 0xf4}, result);
        expectBridge(function, {"a_hidl_" + function}, [&] {
            EXPECT_EQ(get(),
                      (Sources::All{{0xf1, 0xf2, 0xf3, "HDMI 1", 0xfedcba98, 0xf4, result}}));
        });
    }
}

TEST_F(ServiceInputSourceRecord, isZeroWhereNothingIsWritten) {
    write({}, -7);
    EXPECT_EQ(get(), (Sources::All{{0, 0, 0, "", 0, 0, -7}}));
}

TEST_F(ServiceInputSourceRecord, hasNoLongerNameThanThereIsRoomFor) {
    QORTVAPI_INPUT_SOURCE_RECORD_T record{};
    memset(record.s_name, 'x', sizeof(record.s_name));
    record.ui4_flags = 0xfedcba98;  // right behind the name
    write(record, 0);
    EXPECT_EQ(get(), (Sources::All{{0, 0, 0, std::string(33, 'x'), 0xfedcba98, 0, 0}}));
}

// Names.

/** What the middleware makes of the buffer and of the length that it is told. */
using WriteName = std::function<int32_t(char*, uint32_t)>;
using NameAnswer = std::function<void(const hidl_string&, int32_t)>;

struct NameRow {
    const char* function;
    void (*plug)(Switchboard&, const WriteName&);
    void (*call)(QorTvApiInputSrcImpl&, uint32_t length, const NameAnswer&);
};

void PrintTo(const NameRow& row, std::ostream* out) {
    *out << row.function;
}

const hidl_string kPath = "a path of any length";

const NameRow kNameRows[] = {
        {"get_currentsourcename",
         [](Switchboard& tv, const WriteName& write) {
             tv.on<&a_qortvapi_inputsource_get_currentsourcename>(write);
         },
         [](auto& impl, uint32_t length, const NameAnswer& answer) {
             impl.a_hidl_a_qortvapi_inputsource_get_currentsourcename(length, answer);
         }},
        {"get_currentsourcename_bypath",
         [](Switchboard& tv, const WriteName& write) {
             tv.on<&a_qortvapi_inputsource_get_currentsourcename_bypath>(
                     [=](char* name, uint32_t length, const char* path) {
                         EXPECT_EQ(path, kPath.c_str()) << "a text is not copied";
                         return write(name, length);
                     });
         },
         [](auto& impl, uint32_t length, const NameAnswer& answer) {
             impl.a_hidl_a_qortvapi_inputsource_get_currentsourcename_bypath(length, kPath, answer);
         }},
        {"get_sourcename_bysourceid",
         [](Switchboard& tv, const WriteName& write) {
             tv.on<&a_qortvapi_inputsource_get_sourcename_bysourceid>(
                     [=](int32_t source_id, char* name, uint32_t length) {
                         EXPECT_EQ(source_id, -3);
                         return write(name, length);
                     });
         },
         [](auto& impl, uint32_t length, const NameAnswer& answer) {
             impl.a_hidl_a_qortvapi_inputsource_get_sourcename_bysourceid(-3, length, answer);
         }},
        {"get_userdefname_bysourceid",
         [](Switchboard& tv, const WriteName& write) {
             tv.on<&a_qortvapi_inputsource_get_userdefname_bysourceid>(
                     [=](int32_t source_id, char* name, uint32_t length) {
                         EXPECT_EQ(source_id, -4);
                         return write(name, length);
                     });
         },
         [](auto& impl, uint32_t length, const NameAnswer& answer) {
             impl.a_hidl_a_qortvapi_inputsource_get_userdefname_bysourceid(-4, length, answer);
         }},
};

class ServiceInputSourceName : public ServiceInputSource,
                               public testing::WithParamInterface<NameRow> {
  protected:
    using Names = Answers<std::string, int32_t>;

    static std::string method() {
        return std::string("a_hidl_a_qortvapi_inputsource_") + GetParam().function;
    }
    Names::All get(uint32_t length) const {
        return Names::of([&](const auto& callback) { GetParam().call(*impl, length, callback); });
    }
};

TEST_P(ServiceInputSourceName, isReadIntoTwoHundredAndFiftySixBytes) {
    for (const uint32_t length : {0u, 1u, 256u, 257u, 0xffffffffu}) {
        for (const std::string& name : {std::string("HDMI 1"), std::string(256, 'x')}) {
            GetParam().plug(tv, [&](char* buffer, uint32_t told) {
                EXPECT_EQ(told, length);
                EXPECT_EQ(std::string(buffer, 256), std::string(256, '\0'));
                memcpy(buffer, name.data(), name.size());
                return -9;
            });
            Switchboard::startRecording();
            EXPECT_EQ(get(length), (Names::All{{name, -9}}));
            EXPECT_EQ(Switchboard::stopRecording(),
                      Texts{std::string("a_qortvapi_inputsource_") + GetParam().function});
        }
    }
}

TEST_P(ServiceInputSourceName, isEmptyWhereNothingIsWritten) {
    GetParam().plug(tv, [](char*, uint32_t) { return -4; });
    EXPECT_EQ(get(10), (Names::All{{"", -4}}));
}

TEST_P(ServiceInputSourceName, isLoggedBehindTheAnswer) {
    GetParam().plug(tv, [](char* buffer, uint32_t) {
        memcpy(buffer, "HDMI 1", 7);
        return 0;
    });
    std::vector<LogLine> before;
    GetParam().call(*impl, 10, [&](const hidl_string&, int32_t) { before = log.take(); });
    EXPECT_EQ(before, linesOf(method(), {method()}));
    EXPECT_EQ(log.take(), linesOf(method(), {method() + ",name:HDMI 1"}));
    expectLines(method(), {method(), method() + ",name:HDMI 1"}, [&] { get(10); });
}

INSTANTIATE_TEST_SUITE_P(, ServiceInputSourceName, testing::ValuesIn(kNameRows),
                         [](const auto& row) { return std::string(row.param.function); });

// Picture-and-picture.

class ServiceMultiview : public DomainTest<QorTvApiMultiviewImpl> {
  protected:
    ServiceMultiview() : DomainTest("QorTvApiMultiviewImpl(service)") {}

    /** `Function`, named `function`, receives the source and the region of its method. */
    template <auto Method, auto Function>
    void checkRegion(const std::string& function) {
        const auto region = distinctRecord<HIDL_QORTVAPI_MULTIVIEW_REGION_T>();
        tv.on<Function>([&](uint8_t source_id, const QORTVAPI_MULTIVIEW_REGION_T* record) {
            EXPECT_EQ(source_id, 0xf1);
            EXPECT_EQ(bytesOf(*record), bytesOf(region));
            return -9;
        });
        expectBridge(function, {"ARG=[241]."}, [&] {
            const int32_t result = ((*impl).*Method)(0xf1, region);
            EXPECT_EQ(result, -9);
        });
    }
};

TEST_F(ServiceMultiview, aVideoStartsInItsRegion) {
    checkRegion<&QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_startMainVideo,
                &a_qortvapi_multiview_startMainVideo>("a_qortvapi_multiview_startMainVideo");
    checkRegion<&QorTvApiMultiviewImpl::a_hidl_a_qortvapi_multiview_startSubVideo,
                &a_qortvapi_multiview_startSubVideo>("a_qortvapi_multiview_startSubVideo");
}

}  // namespace
