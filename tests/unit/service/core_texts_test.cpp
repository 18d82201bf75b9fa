/** The core methods that answer with a text. */
#include <cstring>
#include <functional>
#include <ostream>

#include "middleware/audio_info.h"
#include "middleware/banner.h"
#include "middleware/dfmngr.h"
#include "middleware/event_atsc.h"
#include "middleware/mds.h"
#include "middleware/oad.h"
#include "middleware/parser.h"
#include "middleware/util.h"
#include "support/core_fixture.h"

namespace {

/** What the middleware does to the buffer and to the size that it receives. */
using Writer = std::function<int32_t(char*, int64_t)>;
using TextAnswer = std::function<void(const hidl_string&, int32_t)>;

constexpr char kTag[] = "QorTvApiImpl(service)";
constexpr uint32_t kFirst = 0xfffffffd;  // of the numbers that must arrive as they were sent
constexpr uint16_t kSecond = 0xfffe;
constexpr int64_t kNoSize = -1;

struct TextRow {
    const char* function;
    size_t capacity;
    std::function<void(switchboard::Switchboard&, const Writer&)> plug;
    std::function<void(QorTvApiImpl&, uint32_t length, const TextAnswer&)> call;
};

void PrintTo(const TextRow& row, std::ostream* out) {
    *out << row.function;
}

/** What is asked for of the methods whose client says the size. */
constexpr size_t kLength = 12;

const hidl_string kFile = "file.ini";
const hidl_string kKey = "section:key";

const TextRow kFixedRows[] = {
        {"a_qortvapi_util_get_sys_version", 100,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_util_get_sys_version>([write](int32_t kind, char* text) {
                 EXPECT_EQ(kind, -3);
                 return write(text, kNoSize);
             });
         },
         [](auto& impl, uint32_t, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_util_get_sys_version(-3, answer);
         }},
        {"a_qortvapi_load_ch_logo", 256,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_load_ch_logo>(
                     [write](uint16_t network, uint16_t service, uint32_t frequency, char* path) {
                         EXPECT_EQ(network, kSecond);
                         EXPECT_EQ(service, 0xfffc);
                         EXPECT_EQ(frequency, kFirst);
                         return write(path, kNoSize);
                     });
         },
         [](auto& impl, uint32_t, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_load_ch_logo(kSecond, 0xfffc, kFirst, answer);
         }},
        {"a_qortvapi_oad_get_scheduleinfo", 200,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_oad_get_scheduleinfo>(
                     [write](char* text, uint32_t size) { return write(text, size); });
         },
         [](auto& impl, uint32_t, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_oad_get_scheduleinfo(answer);
         }},
        {"a_qortvapi_oad_get_datainfo", 200,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_oad_get_datainfo>(
                     [write](int32_t item, char* text, uint32_t size) {
                         EXPECT_EQ(item, -3);
                         return write(text, size);
                     });
         },
         [](auto& impl, uint32_t, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_oad_get_datainfo(-3, answer);
         }},
        {"a_qortvapi_mds_getValue", 5120,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_mds_getValue>(
                     [write](const char* message, int32_t item, char* value) {
                         EXPECT_EQ(message, kKey.c_str());
                         EXPECT_EQ(item, -3);
                         return write(value, kNoSize);
                     });
         },
         [](auto& impl, uint32_t, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_mds_getValue(kKey, -3, answer);
         }},
        {"a_qortvapi_parser_get_string", 256,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_parser_get_string>(
                     [write](const char* key, char* value, uint32_t* length) {
                         EXPECT_EQ(key, kKey.c_str());
                         EXPECT_EQ(*length, 0u);
                         const int32_t result = write(value, kNoSize);
                         if (result >= 0) *length = 0xfffffff0;
                         return result;
                     });
         },
         [](auto& impl, uint32_t, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_parser_get_string(
                     kKey, [&](const hidl_string& value, uint32_t length, int32_t result) {
                         EXPECT_EQ(length, result >= 0 ? 0xfffffff0 : 0);
                         answer(value, result);
                     });
         }},
};

const TextRow kCallerSizedRows[] = {
        {"a_qortvapi_banner_get_item_content", kLength,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_banner_get_item_content>(
                     [write](int32_t item, int32_t index, char* content, uint32_t length) {
                         EXPECT_EQ(item, -3);
                         EXPECT_EQ(index, -4);
                         return write(content, length);
                     });
         },
         [](auto& impl, uint32_t length, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_banner_get_item_content(-3, -4, length, answer);
         }},
        {"a_qortvapi_get_base_config_file_path", kLength,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_get_base_config_file_path>(
                     [write](char* path, int16_t length) { return write(path, length); });
         },
         [](auto& impl, uint32_t length, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_get_base_config_file_path(static_cast<int16_t>(length), answer);
         }},
        {"a_qortvapi_parser_get_string_config_data", kLength,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_parser_get_string_config_data>(
                     [write](const char* file, const char* key, char* value, int16_t length) {
                         EXPECT_EQ(file, kFile.c_str());
                         EXPECT_EQ(key, kKey.c_str());
                         return write(value, length);
                     });
         },
         [](auto& impl, uint32_t length, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_parser_get_string_config_data(
                     kFile, kKey, static_cast<int16_t>(length), answer);
         }},
        {"a_qortvapi_audio_info_get_current_lanuage", kLength,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_audio_info_get_current_lanuage>(
                     [write](char* language, uint32_t length) { return write(language, length); });
         },
         [](auto& impl, uint32_t length, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_audio_info_get_current_lanuage(length, answer);
         }},
        {"a_qortvapi_event_atsc_get_detail_info_by_index", kLength,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_event_atsc_get_detail_info_by_index>(
                     [write](uint32_t list, uint16_t index, char* details, uint32_t length) {
                         EXPECT_EQ(list, kFirst);
                         EXPECT_EQ(index, kSecond);
                         return write(details, length);
                     });
         },
         [](auto& impl, uint32_t length, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_event_atsc_get_detail_info_by_index(kFirst, kSecond, length,
                                                                        answer);
         }},
        {"a_qortvapi_event_atsc_get_details_info", kLength,
         [](auto& tv, const Writer& write) {
             tv.template on<&a_qortvapi_event_atsc_get_details_info>(
                     [write](uint32_t event, char* details, uint32_t size) {
                         EXPECT_EQ(event, kFirst);
                         return write(details, size);
                     });
         },
         [](auto& impl, uint32_t size, const TextAnswer& answer) {
             impl.a_hidl_a_qortvapi_event_atsc_get_details_info(kFirst, size, answer);
         }},
};

class ServiceCoreText : public CoreTest, public testing::WithParamInterface<TextRow> {
  protected:
    using Texts = Answers<std::string, int32_t>;

    /** What the client receives where the middleware does `write`, the only call that it gets. */
    Texts::All answersTo(const Writer& write, size_t length = kLength) {
        row.plug(tv, write);
        switchboard::Switchboard::startRecording();
        auto answers = Texts::of([&](const auto& callback) {
            row.call(*impl, static_cast<uint32_t>(length), callback);
        });
        EXPECT_EQ(switchboard::Switchboard::stopRecording(),
                  std::vector<std::string>{row.function});
        return answers;
    }

    const TextRow& row = GetParam();
};

TEST_P(ServiceCoreText, endsAtItsFirstNul) {
    EXPECT_EQ(answersTo([](char* buffer, int64_t) {
                  memcpy(buffer, "some\0more", 10);
                  return 7;
              }),
              (Texts::All{{"some", 7}}));
}

TEST_P(ServiceCoreText, mayFillItsBuffer) {
    EXPECT_EQ(answersTo([&](char* buffer, int64_t size) {
                  if (size != kNoSize) {
                      EXPECT_EQ(size, static_cast<int64_t>(row.capacity));
                  }
                  EXPECT_EQ(std::string(buffer, row.capacity), std::string(row.capacity, '\0'))
                          << "zeroed before the call";
                  memset(buffer, 'x', row.capacity);
                  return 0;
              }),
              (Texts::All{{std::string(row.capacity, 'x'), 0}}));
}

TEST_P(ServiceCoreText, isEmptyAfterAFailure) {
    EXPECT_EQ(answersTo([](char*, int64_t) { return -6; }), (Texts::All{{"", -6}}));
}

using ServiceCoreCallerSizedText = ServiceCoreText;

TEST_P(ServiceCoreCallerSizedText, isEmptyWhereNoLengthIsAskedFor) {
    EXPECT_EQ(answersTo(
                      [](char* buffer, int64_t size) {
                          EXPECT_NE(buffer, nullptr);
                          EXPECT_EQ(size, 0);
                          return 3;
                      },
                      0),
              (Texts::All{{"", 3}}));
}

std::string nameOf(const testing::TestParamInfo<TextRow>& row) {
    return row.param.function;
}

INSTANTIATE_TEST_SUITE_P(Fixed, ServiceCoreText, testing::ValuesIn(kFixedRows), nameOf);
INSTANTIATE_TEST_SUITE_P(CallerSized, ServiceCoreText, testing::ValuesIn(kCallerSizedRows), nameOf);
INSTANTIATE_TEST_SUITE_P(, ServiceCoreCallerSizedText, testing::ValuesIn(kCallerSizedRows), nameOf);

class ServiceCoreTextLines : public CoreTest {
  protected:
    /** `call` writes `lines` while debugging is on, and nothing while it is off. */
    template <typename Call>
    void expectDebugLines(const std::vector<LogLine>& lines, const Call& call) {
        call();
        EXPECT_EQ(log.take(), lines);
        mTvApiDebug = 0;
        call();
        EXPECT_TRUE(log.take().empty());
    }
};

TEST_F(ServiceCoreTextLines, ofTheChannelLogoNameTheFile) {
    tv.on<&a_qortvapi_load_ch_logo>([](uint16_t, uint16_t, uint32_t, char* path) {
        strcpy(path, "/logo/1.png");
        return 4;
    });
    const auto module = [](const char* text) {
        return debugLine("hh_qortvapi_dfmngr", "hh_a_qortvapi_load_ch_logo", text);
    };
    const std::string method = "a_hidl_a_qortvapi_load_ch_logo";
    expectDebugLines(
            {debugLine(kTag, method, method), module("onid:65534,svcid:5,freq:474000000\n"),
             module("file_path:/logo/1.png,i4_ret = 4\n")},
            [&] {
                impl->a_hidl_a_qortvapi_load_ch_logo(65534, 5, 474000000,
                                                     [](const auto&, int32_t) {});
            });
}

TEST_F(ServiceCoreTextLines, ofAConfigurationTextNameFileAndKey) {
    const std::string method = "a_hidl_a_qortvapi_parser_get_string_config_data";
    expectDebugLines(
            {debugLine(kTag, method,
                       "Enter.a_hidl_a_qortvapi_parser_get_string_config_data,s_file_path:file.ini,"
                       "s_key_name:section:key")},
            [&] {
                impl->a_hidl_a_qortvapi_parser_get_string_config_data(kFile, kKey, 4,
                                                                      [](const auto&, int32_t) {});
            });
}

TEST_F(ServiceCoreTextLines, ofTheMetadataNameMessageAndValue) {
    tv.on<&a_qortvapi_mds_getValue>([](const char*, int32_t, char* value) {
        strcpy(value, "the value");
        return -2;
    });
    const std::string method = "a_hidl_a_qortvapi_mds_getValue";
    expectDebugLines({debugLine(kTag, method,
                                "Enter a_hidl_a_qortvapi_mds_getValue ,s_msg_data :the message"),
                      debugLine(kTag, method, "s_getValue = the value, i4_ret = -2\n")},
                     [&] {
                         impl->a_hidl_a_qortvapi_mds_getValue("the message", 1,
                                                              [](const auto&, int32_t) {});
                     });
}

}  // namespace
