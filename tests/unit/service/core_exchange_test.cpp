/** The exchange of messages with the HbbTV engine and the HTML agent. */
#include <cstring>
#include <functional>

#include "middleware/hbbtv.h"
#include "middleware/html_agent.h"
#include "support/core_fixture.h"

namespace {

using Engine = std::function<int32_t(uint32_t*, uint32_t)>;
using Exchange = Return<void> (QorTvApiImpl::*)(
        const hidl_vec<uint8_t>&, std::function<void(const hidl_vec<uint8_t>&, int32_t)>);

struct Row {
    const char* name;
    size_t size;  // of the buffer, in bytes
    Exchange method;
    void (*plug)(switchboard::Switchboard&, Engine);
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

template <auto Function>
void plug(switchboard::Switchboard& tv, Engine engine) {
    tv.on<Function>(std::move(engine));
}

const Row kRows[] = {
        {"a_qortvapi_hbbtv_exchange_data", 5632,
         &QorTvApiImpl::a_hidl_a_qortvapi_hbbtv_exchange_data,
         &plug<&a_qortvapi_hbbtv_exchange_data>},
        {"a_qortvapi_html_agent_exchange_data", 400,
         &QorTvApiImpl::a_hidl_a_qortvapi_html_agent_exchange_data,
         &plug<&a_qortvapi_html_agent_exchange_data>},
};

std::vector<uint8_t> message(size_t length) {
    std::vector<uint8_t> bytes(length);
    for (size_t i = 0; i < length; ++i) bytes[i] = static_cast<uint8_t>(i % 251 + 1);
    return bytes;
}

class ServiceCoreExchange : public CoreTest, public testing::WithParamInterface<Row> {
  protected:
    const Row& row = GetParam();
    const std::string method = std::string("a_hidl_") + row.name;
    const std::string handler = std::string("hh_") + row.name;
};

TEST_P(ServiceCoreExchange, givesWholeWordsAndReturnsWhatTheClientSent) {
    for (const size_t length :
         {size_t{0}, size_t{3}, size_t{4}, size_t{10}, row.size - 1, row.size}) {
        SCOPED_TRACE(length);
        const std::vector<uint8_t> sent = message(length);
        std::vector<uint8_t> left;  // the buffer after the engine has been there
        row.plug(tv, [&](uint32_t* data, uint32_t words) {
            EXPECT_EQ(words, length / 4);
            std::vector<uint8_t> expected = sent;
            expected.resize(row.size);
            EXPECT_EQ(memcmp(data, expected.data(), row.size), 0) << "zeros behind the message";
            auto* bytes = reinterpret_cast<uint8_t*>(data);
            for (size_t i = 0; i < row.size; ++i) bytes[i] ^= 0x5a;
            left.assign(bytes, bytes + row.size);
            return -77;
        });
        int answers = 0;
        const Return<void> status =
                (*impl.*row.method)(sent, [&](const hidl_vec<uint8_t>& data, int32_t result) {
                    ++answers;
                    EXPECT_EQ(result, -77);
                    ASSERT_EQ(data.size(), length);
                    EXPECT_TRUE(std::equal(data.begin(), data.end(), left.begin()));
                });
        EXPECT_TRUE(status.isOk());
        EXPECT_EQ(answers, 1);
        EXPECT_EQ(log.take(),
                  std::vector<LogLine>{debugLine("QorTvApiImpl(service)", method, method)});
    }
    row.plug(tv, [](uint32_t*, uint32_t) { return 0; });
    mTvApiDebug = 0;
    (*impl.*row.method)(message(8), [](const auto&...) {});
    EXPECT_TRUE(log.take().empty());
}

TEST_P(ServiceCoreExchange, doesNotAnswerAMessageThatIsTooLong) {
    mTvApiDebug = 0;  // the line does not ask
    switchboard::Switchboard::startRecording();
    for (const size_t length : {row.size + 4, row.size + 7, row.size + 8, size_t{100'000}}) {
        const Return<void> status = (*impl.*row.method)(
                message(length), [](const auto&...) { ADD_FAILURE() << "an answer"; });
        EXPECT_TRUE(status.isOk());
        EXPECT_EQ(log.take(), std::vector<LogLine>{debugLine(
                                      "hh_sm", handler,
                                      "ui4_data_len = " + std::to_string(length / 4) + "\n")});
    }
    EXPECT_TRUE(switchboard::Switchboard::stopRecording().empty());
}

using ServiceCoreExchangeDeathTest = ServiceCoreExchange;

TEST_P(ServiceCoreExchangeDeathTest, endsTheProcessWithinAWordOfTheBuffer) {
    for (const size_t length : {row.size + 1, row.size + 2, row.size + 3}) {
        EXPECT_DEATH((*impl.*row.method)(message(length), [](const auto&...) {}),
                     handler + ": bounded copy of " + std::to_string(length) +
                             " bytes into a block of " + std::to_string(row.size));
    }
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreExchange, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(, ServiceCoreExchangeDeathTest, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
