/** The methods of the scan interface that are no plain bridges. */
#include <atomic>
#include <cstring>
#include <functional>

#include "QorTvApiScanImpl.h"
#include "middleware/scan.h"
#include "support/domain_fixture.h"
#include "support/short_memory.h"

namespace {

std::atomic<const void*> gWatched{nullptr};  // a block, until it is freed

}  // namespace

extern "C" void __real_free(void* block);
extern "C" void __wrap_free(void* block);

void __wrap_free(void* block) {
    const void* freed = block;
    gWatched.compare_exchange_strong(freed, nullptr);
    __real_free(block);
}

namespace {

using switchboard::Switchboard;

class ServiceScan : public DomainTest<QorTvApiScanImpl> {
  protected:
    ServiceScan() : DomainTest("QorTvApiScanImpl(service)") {}

    /** The entry line of `method`, which its helper's lines follow. */
    static LogLine entryLine(const std::string& method) {
        return debugLine("QorTvApiScanImpl(service)", "a_hidl_" + method, "a_hidl_" + method);
    }
    static LogLine helperLine(const std::string& method, const std::string& text) {
        return debugLine("hh_qortvapi_scan", "hh_" + method, text);
    }
};

const auto kIgnore = [](const auto&...) {};

TEST_F(ServiceScan, isActiveOnlyWhereTheMiddlewareReturnsOne) {
    expectLines("", {}, [&] {
        for (const int32_t result : {0, 1, 2, 257, -1}) {
            tv.on<&a_qortvapi_is_scan_active>([&] { return result; });
            const bool active = impl->a_hidl_a_qortvapi_is_scan_active();
            EXPECT_EQ(active, result == 1) << result;
        }
    });
}

// Parameters.

/** `Function` receives a copy of the record that `Method` is called with, and nothing is logged. */
template <typename Record, auto Method, auto Function>
void checkParameters(QorTvApiScanImpl& impl, Switchboard& tv, const std::string& name) {
    const auto data = distinctRecord<Record>();
    tv.on<Function>([&](int32_t medium, int32_t scan_type, const auto* record) {
        EXPECT_EQ(medium, -3);
        EXPECT_EQ(scan_type, -4);
        EXPECT_EQ(bytesOf(*record), bytesOf(data));
        return -9;
    });
    Switchboard::startRecording();
    const int32_t result = (impl.*Method)(-3, -4, data);
    EXPECT_EQ(Switchboard::stopRecording(), std::vector<std::string>{name});
    EXPECT_EQ(result, -9);
}

TEST_F(ServiceScan, parametersAreCopied) {
    // clang-format off
    checkParameters<HIDL_AP_SB_ATSC_SCAN_DATA_T, &QorTvApiScanImpl::a_hidl_a_qortvapi_set_atsc_scan_param,
                    &a_qortvapi_set_atsc_scan_param>(*impl, tv, "a_qortvapi_set_atsc_scan_param");
    checkParameters<HIDL_AP_SB_ISDB_SCAN_DATA_T, &QorTvApiScanImpl::a_hidl_a_qortvapi_set_isdb_scan_param,
                    &a_qortvapi_set_isdb_scan_param>(*impl, tv, "a_qortvapi_set_isdb_scan_param");
    checkParameters<HIDL_AP_SB_NTSC_SCAN_DATA_T, &QorTvApiScanImpl::a_hidl_a_qortvapi_set_ntsc_scan_param,
                    &a_qortvapi_set_ntsc_scan_param>(*impl, tv, "a_qortvapi_set_ntsc_scan_param");
    // clang-format on
    EXPECT_TRUE(log.take().empty());
}

// Exchange of numbers.

using Numbers = std::vector<int32_t>;
using Engine = std::function<int32_t(int32_t*, uint32_t)>;
using ExchangeAnswer = std::function<void(const hidl_vec<int32_t>&, int32_t)>;

struct ExchangeRow {
    const char* function;
    bool has_helper;  // which answers a failure with no numbers
    void (*plug)(Switchboard&, const Engine&);
    void (*call)(QorTvApiScanImpl&, const hidl_vec<int32_t>&, const ExchangeAnswer&);
};

void PrintTo(const ExchangeRow& row, std::ostream* out) {
    *out << row.function;
}

// clang-format off
#define EXCHANGE_ROW(function, has_helper) \
    {#function, has_helper, \
     [](Switchboard& tv, const Engine& engine) { tv.on<&function>(engine); }, \
     [](auto& impl, const auto& data, const auto& answer) { impl.a_hidl_##function(data, answer); }}

const ExchangeRow kExchangeRows[] = {
        EXCHANGE_ROW(a_qortvapi_atsc_exchange_data, false),
        EXCHANGE_ROW(a_qortvapi_isdb_exchange_data, false),
        EXCHANGE_ROW(a_scan_ce_exchange_data, false),
        EXCHANGE_ROW(a_scan_dtmb_exchange_data, false),
        EXCHANGE_ROW(a_scan_pal_secam_exchange_data, false),
        EXCHANGE_ROW(a_scan_dvbs_exchange_data, true),
        EXCHANGE_ROW(a_scan_dvbc_exchange_data, true),
        EXCHANGE_ROW(a_scan_dvbt_exchange_data, true),
};
// clang-format on

class ServiceScanExchange : public ServiceScan, public testing::WithParamInterface<ExchangeRow> {
  protected:
    using Exchanges = Answers<Numbers, int32_t>;

    Exchanges::All exchange(const Numbers& data) const {
        return Exchanges::of([&](const auto& callback) { GetParam().call(*impl, data, callback); });
    }

    /** The engine adds 1 to each number and returns `result`. */
    void plugIncrement(int32_t result) {
        GetParam().plug(tv, [=](int32_t* numbers, uint32_t count) {
            for (uint32_t i = 0; i < count; ++i) ++numbers[i];
            return result;
        });
    }

    std::vector<LogLine> entryLines() const {
        return GetParam().has_helper ? std::vector<LogLine>{entryLine(GetParam().function)}
                                     : std::vector<LogLine>{};
    }
    LogLine resultLine(int32_t result) const {
        const std::string text = "i4_ret:" + std::to_string(result) + "\n";
        if (GetParam().has_helper) return helperLine(GetParam().function, text);
        return linesOf(std::string("a_hidl_") + GetParam().function, {text}).front();
    }
};

TEST_P(ServiceScanExchange, answersTheNumbersAsTheEngineLeavesThem) {
    GetParam().plug(tv, [](int32_t* numbers, uint32_t count) {
        EXPECT_EQ(Numbers(numbers, numbers + count), (Numbers{1, -2, 0x7fffffff}));
        numbers[0] = -5;
        numbers[2] = 6;
        return 0;
    });
    const Numbers sent = {1, -2, 0x7fffffff};
    Switchboard::startRecording();
    EXPECT_EQ(exchange(sent), (Exchanges::All{{{-5, -2, 6}, 0}}));
    EXPECT_EQ(Switchboard::stopRecording(), Texts{GetParam().function});
}

TEST_P(ServiceScanExchange, leavesWhatTheClientSentAlone) {
    plugIncrement(0);
    const hidl_vec<int32_t> sent = {1, 2};
    GetParam().call(*impl, sent, kIgnore);
    EXPECT_EQ(Numbers(sent), (Numbers{1, 2}));
}

TEST_P(ServiceScanExchange, afterAFailureHasNumbersUnlessAHelperWithholdsThem) {
    for (const int32_t result : {-3, 1}) {
        plugIncrement(result);
        const Numbers answered = GetParam().has_helper ? Numbers{} : Numbers{2, 3};
        EXPECT_EQ(exchange({1, 2}), (Exchanges::All{{answered, result}}));
    }
}

TEST_P(ServiceScanExchange, ofNoNumbersReachesTheEngine) {
    int calls = 0;
    GetParam().plug(tv, [&](int32_t* numbers, uint32_t count) {
        ++calls;
        EXPECT_NE(numbers, nullptr);
        EXPECT_EQ(count, 0u);
        return 0;
    });
    EXPECT_EQ(exchange(Numbers{}), (Exchanges::All{{Numbers{}, 0}}));
    EXPECT_EQ(calls, 1);
}

TEST_P(ServiceScanExchange, isLogged) {
    for (const int32_t result : {0, -3}) {
        plugIncrement(result);
        log.take();
        std::vector<LogLine> lines;
        const auto callback = [&](const auto&...) { lines = log.take(); };
        GetParam().call(*impl, {1}, callback);
        std::vector<LogLine> before = entryLines();
        std::vector<LogLine> after;
        // Only a helper that withholds the numbers has its line before the answer.
        (GetParam().has_helper && result != 0 ? before : after).push_back(resultLine(result));
        EXPECT_EQ(lines, before);
        EXPECT_EQ(log.take(), after);

        mTvApiDebug = 0;
        exchange({1});
        EXPECT_TRUE(log.take().empty());
        mTvApiDebug = 1;
    }
}

TEST_P(ServiceScanExchange, keepsItsNumbersUntilTheyAreAnswered) {
    for (const int32_t result : {0, -3}) {
        // DVB-C does not wait for the client to hear of a failure.
        const bool frees_first =
                result != 0 && GetParam().function == std::string("a_scan_dvbc_exchange_data");
        GetParam().plug(tv, [=](const int32_t* numbers, uint32_t) {
            gWatched = numbers;
            return result;
        });
        const auto callback = [&](const auto&...) {
            EXPECT_EQ(gWatched == nullptr, frees_first) << result;
        };
        GetParam().call(*impl, {1, 2}, callback);
        EXPECT_EQ(gWatched, nullptr);
    }
}

using ServiceScanExchangeDeathTest = ServiceScanExchange;

TEST_P(ServiceScanExchangeDeathTest, withoutMemoryEndsTheProcess) {
    plugIncrement(0);
    const int before = arraysAskedFor();
    exchange({1, 2});  // with memory all is well
    EXPECT_EQ(arraysAskedFor(), before + 1);
    const ShortMemory memory(0);
    EXPECT_DEATH(exchange({1, 2}), std::string(GetParam().has_helper ? "hh_" : "a_hidl_") +
                                           GetParam().function +
                                           ": no memory for 2 elements of 4 bytes");
}

std::string exchangeName(const testing::TestParamInfo<ExchangeRow>& row) {
    return row.param.function;
}
INSTANTIATE_TEST_SUITE_P(, ServiceScanExchange, testing::ValuesIn(kExchangeRows), exchangeName);
INSTANTIATE_TEST_SUITE_P(, ServiceScanExchangeDeathTest, testing::ValuesIn(kExchangeRows),
                         exchangeName);

// Texts.

/** Rewrites a buffer of the length that the middleware is told. */
using Rewrite = std::function<int32_t(char*, int64_t)>;
/** Text, length, result. */
using TextAnswers = Answers<std::string, int64_t, int32_t>;
using TextAnswer = std::function<void(const hidl_string&, int64_t, int32_t)>;

struct TextRow {
    const char* function;
    const char* type;  // as it begins the line of a success
    bool answers_failures;
    void (*plug)(Switchboard&, const Rewrite&);
    void (*call)(QorTvApiScanImpl&, const hidl_string&, int64_t length, const TextAnswer&);
};

void PrintTo(const TextRow& row, std::ostream* out) {
    *out << row.function;
}

const TextRow kTextRows[] = {
        {"a_qortvapi_get_user_message", "", true,
         [](Switchboard& tv, const Rewrite& rewrite) {
             tv.on<&a_qortvapi_get_user_message>(
                     [=](char* text, uint32_t length) { return rewrite(text, length); });
         },
         [](auto& impl, const auto& text, int64_t length, const auto& answer) {
             impl.a_hidl_a_qortvapi_get_user_message(text, static_cast<uint32_t>(length), answer);
         }},
        {"a_qortvapi_scan_dvbc_get_str_data", "-8, ", false,
         [](Switchboard& tv, const Rewrite& rewrite) {
             tv.on<&a_qortvapi_scan_dvbc_get_str_data>(
                     [=](int32_t type, char* text, int32_t length) {
                         EXPECT_EQ(type, -8);
                         return rewrite(text, length);
                     });
         },
         [](auto& impl, const auto& text, int64_t length, const auto& answer) {
             impl.a_hidl_a_qortvapi_scan_dvbc_get_str_data(-8, text, static_cast<int32_t>(length),
                                                           answer);
         }},
};

class ServiceScanText : public ServiceScan, public testing::WithParamInterface<TextRow> {
  protected:
    /** The log of a call is in two parts: `mLogged` until the answer, and what follows. */
    TextAnswers::All call(const hidl_string& text, int64_t length) {
        return TextAnswers::of([&](const auto& callback) {
            GetParam().call(*impl, text, length, [&](const auto&... results) {
                mLogged = log.take();
                callback(results...);
            });
        });
    }

    std::vector<LogLine> mLogged;
};

TEST_P(ServiceScanText, reachesTheMiddlewareWithTheLengthThatTheClientSays) {
    struct Text {
        std::string sent;
        int64_t length;
        std::string received;  // with all zeros behind it
    };
    using namespace std::string_literals;
    for (const Text& text :
         {Text{"abc", 3, "abc\0"s}, Text{"abc", 2, "ab\0"s}, Text{"abc", 0, "\0"s},
          Text{"", 0, "\0"s}, Text{"", 3, "\0\0\0\0"s}, Text{"abc", 4, "abc\0\0"s},
          Text{"abc", 9, "abc\0\0\0\0\0\0\0"s}, Text{"a\0c"s, 3, "a\0c\0"s}}) {
        int calls = 0;
        GetParam().plug(tv, [&](char* buffer, int64_t length) {
            ++calls;
            EXPECT_EQ(length, text.length);
            EXPECT_EQ(std::string(buffer, length + 1), text.received);
            return 0;
        });
        Switchboard::startRecording();
        EXPECT_EQ(call(text.sent, text.length),
                  (TextAnswers::All{{text.received.c_str(), text.length, 0}}));
        EXPECT_EQ(Switchboard::stopRecording(), Texts{GetParam().function});
        EXPECT_EQ(calls, 1);
    }
}

TEST_P(ServiceScanText, isAnsweredAsTheMiddlewareRewritesIt) {
    for (const std::string& rewritten :
         {std::string("xyz"), std::string("x"), std::string(5, 'z')}) {
        GetParam().plug(tv, [&](char* buffer, int64_t) {
            memcpy(buffer, rewritten.c_str(), rewritten.size() + 1);
            return 0;
        });
        EXPECT_EQ(call("abc", 5), (TextAnswers::All{{rewritten, 5, 0}}));
        EXPECT_EQ(mLogged, (std::vector<LogLine>{entryLine(GetParam().function)}));
        EXPECT_EQ(log.take(),
                  (std::vector<LogLine>{helperLine(
                          GetParam().function, GetParam().type + std::string("abc, 5, ") +
                                                       rewritten + ", " + rewritten + ", 0\n")}));
        mTvApiDebug = 0;
        call("abc", 5);
        EXPECT_TRUE(mLogged.empty());
        EXPECT_TRUE(log.take().empty());
        mTvApiDebug = 1;
    }
}

TEST_P(ServiceScanText, ofAFailureIsAlwaysLoggedBeforeAnAnswerWithoutALength) {
    // Without an answer the lines are still to be read.
    const auto logged = [&] {
        const std::vector<LogLine> rest = log.take();
        EXPECT_TRUE(!GetParam().answers_failures || rest.empty()) << "lines behind the answer";
        return GetParam().answers_failures ? mLogged : rest;
    };
    for (const int32_t result : {-3, 1}) {
        GetParam().plug(tv, [&](char* buffer, int64_t) {
            buffer[0] = 'x';
            return result;
        });
        const TextAnswers::All answered = GetParam().answers_failures
                                                  ? TextAnswers::All{{"xbc", 0, result}}
                                                  : TextAnswers::All{};
        const LogLine failure = helperLine(GetParam().function,
                                           GetParam().function + std::string(" fail, i4_ret=") +
                                                   std::to_string(result) + ", abc, 5\n");
        EXPECT_EQ(call("abc", 5), answered);
        EXPECT_EQ(logged(), (std::vector<LogLine>{entryLine(GetParam().function), failure}));
        mTvApiDebug = 0;
        EXPECT_EQ(call("abc", 5), answered);
        EXPECT_EQ(logged(), (std::vector<LogLine>{failure}));
        mTvApiDebug = 1;
    }
}

using ServiceScanTextDeathTest = ServiceScanText;

TEST_P(ServiceScanTextDeathTest, withoutMemoryEndsTheProcess) {
    const ShortMemory memory(0);
    EXPECT_DEATH(call("abc", 3), std::string("hh_") + GetParam().function +
                                         ": no memory for 4 elements of 1 bytes");
}

std::string textName(const testing::TestParamInfo<TextRow>& row) {
    return row.param.function;
}
INSTANTIATE_TEST_SUITE_P(, ServiceScanText, testing::ValuesIn(kTextRows), textName);
INSTANTIATE_TEST_SUITE_P(, ServiceScanTextDeathTest, testing::ValuesIn(kTextRows), textName);

using ServiceScanDeathTest = ServiceScan;

TEST_F(ServiceScanDeathTest, aLengthThatNoBufferHasEndsTheProcess) {
    EXPECT_DEATH(impl->a_hidl_a_qortvapi_get_user_message("abc", 0xffffffff, kIgnore),
                 "hh_a_qortvapi_get_user_message: no memory for 4294967296 elements");
    EXPECT_DEATH(impl->a_hidl_a_qortvapi_get_user_message("abc", 0xfffffffe, kIgnore),
                 "hh_a_qortvapi_get_user_message: no memory for 4294967295 elements");
    EXPECT_DEATH(impl->a_hidl_a_qortvapi_scan_dvbc_get_str_data(1, "abc", -2, kIgnore),
                 "hh_a_qortvapi_scan_dvbc_get_str_data: no memory for -1 elements");
    EXPECT_DEATH(impl->a_hidl_a_qortvapi_scan_dvbc_get_str_data(1, "abc", INT32_MIN, kIgnore),
                 "hh_a_qortvapi_scan_dvbc_get_str_data: no memory for -2147483647 elements");
}

TEST_F(ServiceScan, aTextOfMinusOneIsEmpty) {
    tv.on<&a_qortvapi_scan_dvbc_get_str_data>([](int32_t, char* text, int32_t length) {
        EXPECT_EQ(length, -1);
        EXPECT_STREQ(text, "");
        return 0;
    });
    using StringData = Answers<std::string, int32_t, int32_t>;
    EXPECT_EQ(StringData::of([&](const auto& callback) {
                  impl->a_hidl_a_qortvapi_scan_dvbc_get_str_data(1, "abc", -1, callback);
              }),
              (StringData::All{{"", -1, 0}}));
}

}  // namespace
