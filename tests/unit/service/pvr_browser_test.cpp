/** The texts of the PVR browser, and its numbers that are widened for the client. */
#include <cstdint>
#include <functional>
#include <type_traits>

#include "QorTvApiPvrbrowserImpl.h"
#include "middleware/mmp.h"
#include "support/core_fixture.h"

namespace {

/** Has the middleware's function write into the output that it is handed, and return a result. */
template <typename Written>
using Middleware = std::function<int32_t(Written*)>;

/** Calls `Method` for one recording; `Function` alone is to be called, for the same one. */
template <auto Method, auto Function, typename Answer, typename Recording, typename Written>
typename Answer::All ask(int32_t (*)(Recording, Written*), const Middleware<Written>& middleware) {
    using switchboard::Switchboard;
    constexpr bool kByPath = std::is_same_v<Recording, const char*>;
    const std::conditional_t<kByPath, hidl_string, int32_t> recording{[] {
        if constexpr (kByPath) {
            return "/media/disk/a recording.ts";
        } else {
            return -7;
        }
    }()};
    int calls = 0;
    Switchboard tv;
    tv.on<Function>([&](Recording its_recording, Written* output) {
        ++calls;
        if constexpr (kByPath) {
            EXPECT_EQ(its_recording, recording.c_str()) << "a text is not copied";
        } else {
            EXPECT_EQ(its_recording, recording);
        }
        return middleware(output);
    });
    const sp<QorTvApiPvrbrowserImpl> impl = new QorTvApiPvrbrowserImpl();
    Switchboard::startRecording();
    typename Answer::All answers =
            Answer::of([&](const auto& callback) { (*impl.*Method)(recording, callback); });
    EXPECT_EQ(Switchboard::stopRecording().size(), 1u);
    EXPECT_EQ(calls, 1);
    return answers;
}

using Text = Answers<std::string, int32_t>;
using Wide = Answers<uint64_t, int32_t>;

template <auto Method, auto Function>
Text::All askText(const Middleware<char>& middleware) {
    return ask<Method, Function, Text>(Function, middleware);
}

template <auto Method, auto Function>
Wide::All askWide(const Middleware<int32_t>& middleware) {
    return ask<Method, Function, Wide>(Function, middleware);
}

struct TextRow {
    const char* method;
    Text::All (*ask)(const Middleware<char>&);
    size_t size;  // bytes that the middleware may write
};

struct WideRow {
    const char* method;
    Wide::All (*ask)(const Middleware<int32_t>&);
};

// clang-format off
#define ROW_OF(ask, method, function) \
    #method, &ask<&QorTvApiPvrbrowserImpl::a_hidl_a_qortvapi_mmp_get_pvr_browser_##method, \
                  &a_qortvapi_mmp_get_pvr_browser_##function>
#define TEXT(name, size) {ROW_OF(askText, name, name), size}
#define WIDE(method, function) {ROW_OF(askWide, method, function)}

const TextRow kTexts[] = {
    TEXT(channelname_by_path, 257),
    TEXT(programname_by_path, 257),
    TEXT(item_path_by_index, 257),
    TEXT(channelname_by_index, 257),
    TEXT(programname_by_index, 257),
    TEXT(date_by_index, 16),
    TEXT(time_by_index, 16),
    TEXT(week_by_index, 6),
    TEXT(recording_file_name, 257),
    TEXT(date_by_path, 257),
    TEXT(week_by_path, 257),
    TEXT(time_by_path, 257),
};

const WideRow kWide[] = {
    WIDE(channelid_by_path, channelid_by_path),
    WIDE(start_time_by_path, start_time_by_path),
    WIDE(duration_by_index, duration_by_index),
    WIDE(stop_reason_by_index, stop_reason_by_index),
    WIDE(start_time_by_index, start_time_by_index),
    WIDE(channelid_by_index, channelid_by_index),
    WIDE(first_rating_by_index, first_rating_by_index),
    WIDE(retention_by_path, first_rating_by_path),  // there is no function of the method's name
    WIDE(retention_by_index, retention_by_index),
};
// clang-format on

/** The methods write no line, but for the constructor's. */
template <typename Row>
class PvrBrowserTest : public ServiceTest, public testing::WithParamInterface<Row> {
  protected:
    ~PvrBrowserTest() override {
        const LogLine constructed = debugLine("QorTvApiPvrbrowserImpl(service)",
                                              "QorTvApiPvrbrowserImpl", "QorTvApiPvrbrowserImpl");
        for (const LogLine& line : log.take()) EXPECT_EQ(line, constructed);
    }
};

class ServicePvrBrowserText : public PvrBrowserTest<TextRow> {};

TEST_P(ServicePvrBrowserText, isReadUpToItsFirstNul) {
    const TextRow& row = GetParam();
    const auto written = [&](const std::string& text) {
        return row.ask([&](char* buffer) {
            EXPECT_EQ(std::string(buffer, row.size), std::string(row.size, '\0'));
            text.copy(buffer, text.size());
            return static_cast<int32_t>(text.size());
        });
    };
    EXPECT_EQ(written(""), (Text::All{{"", 0}}));
    EXPECT_EQ(written("Sat"), (Text::All{{"Sat", 3}}));
    EXPECT_EQ(written({'S', 0, 'a', 't'}), (Text::All{{"S", 4}}));
    const std::string longest(row.size - 1, 'x');
    const auto room = static_cast<int32_t>(row.size);
    EXPECT_EQ(written(longest), (Text::All{{longest, room - 1}}));
    EXPECT_EQ(written(longest + "y"), (Text::All{{longest, room}})) << "full, without a NUL";
}

TEST_P(ServicePvrBrowserText, isEmptyWhereNothingIsWritten) {
    EXPECT_EQ(GetParam().ask([](char*) { return -5; }), (Text::All{{"", -5}}));
}

class ServicePvrBrowserNumber : public PvrBrowserTest<WideRow> {};

TEST_P(ServicePvrBrowserNumber, isWidenedWithItsSign) {
    const auto written = [&](int32_t number) {
        return GetParam().ask([&](int32_t* output) {
            EXPECT_EQ(*output, 0);
            *output = number;
            return 3;
        });
    };
    EXPECT_EQ(written(0), (Wide::All{{0, 3}}));
    EXPECT_EQ(written(INT32_MAX), (Wide::All{{0x7fffffff, 3}}));
    EXPECT_EQ(written(-1), (Wide::All{{0xffffffffffffffff, 3}}));
    EXPECT_EQ(written(INT32_MIN), (Wide::All{{0xffffffff80000000, 3}}));
}

TEST_P(ServicePvrBrowserNumber, isZeroWhereNothingIsWritten) {
    EXPECT_EQ(GetParam().ask([](int32_t*) { return -5; }), (Wide::All{{0, -5}}));
}

INSTANTIATE_TEST_SUITE_P(, ServicePvrBrowserText, testing::ValuesIn(kTexts),
                         [](const auto& row) { return std::string(row.param.method); });
INSTANTIATE_TEST_SUITE_P(, ServicePvrBrowserNumber, testing::ValuesIn(kWide),
                         [](const auto& row) { return std::string(row.param.method); });

}  // namespace
