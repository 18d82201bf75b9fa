/** The configuration interface: texts, lists, numbers, and the log lines about them. */
#include <cstring>

#include "QorTvApiConfigImpl.h"
#include "middleware/config.h"
#include "support/core_fixture.h"
#include "support/forwarding.h"

namespace {

using switchboard::Switchboard;
using Names = std::vector<std::string>;

constexpr char kTag[] = "QorTvApiImpl(service)";  // of the core interface

class ServiceConfig : public ServiceTest {
  protected:
    ServiceConfig() { log.take(); }

    /** `call` writes `texts` of `method` while debugging is on, and nothing while it is off. */
    template <typename Call>
    void expectLines(const std::string& method, const Names& texts, const Call& call) {
        std::vector<LogLine> lines;
        for (const std::string& text : texts) lines.push_back(debugLine(kTag, method, text));
        log.take();
        call();
        EXPECT_EQ(log.take(), lines);
        mTvApiDebug = 0;
        call();
        EXPECT_TRUE(log.take().empty());
        mTvApiDebug = 1;
    }

    const sp<QorTvApiConfigImpl> impl = new QorTvApiConfigImpl();
};

// Texts.

const std::string kGetText = "a_hidl_a_qortvapi_config_get_str_value";
const std::string kGetItems = "a_hidl_a_qortvapi_config_get_items_enabled";
const hidl_string kKey = "g_misc__text";

class ServiceConfigText : public ServiceConfig {
  protected:
    using Texts = Answers<std::string, uint32_t, int32_t>;
    Texts::All text() const {
        return Texts::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_config_get_str_value(kKey, callback);
        });
    }

    /** The middleware writes `written` and a length of `length`. */
    void writeText(const std::string& written, uint32_t length, int32_t result) {
        tv.on<&a_qortvapi_config_get_str_value>(
                [=](const char* key, char* value, uint32_t* value_length) {
                    EXPECT_EQ(key, kKey.c_str()) << "a text is not copied";
                    EXPECT_EQ(*value_length, 256u);
                    EXPECT_EQ(std::string(value, 256), std::string(256, '\0'));
                    memcpy(value, written.data(), written.size());
                    *value_length = length;
                    return result;
                });
    }
};

TEST_F(ServiceConfigText, isAnsweredUpToItsFirstNulWithTheLengthOfTheMiddleware) {
    const std::string full(256, 'x');
    struct Row {
        std::string written;
        uint32_t length;
        int32_t result;
        std::string text;
    };
    for (const Row& row : {Row{"abc", 3, 0, "abc"}, Row{{"ab\0c", 4}, 4, -7, "ab"},
                           Row{"", 0xffffffff, -1, ""}, Row{full, 0xfffffffe, 8, full}}) {
        SCOPED_TRACE(row.text);
        writeText(row.written, row.length, row.result);
        expectLines(kGetText, {kGetText, kGetText + ",value:" + row.text}, [&] {
            Switchboard::startRecording();
            EXPECT_EQ(text(), (Texts::All{{row.text, row.length, row.result}}));
            EXPECT_EQ(Switchboard::stopRecording(), Names{"a_qortvapi_config_get_str_value"});
        });
    }
}

TEST_F(ServiceConfigText, isEmptyOfLength256WhereTheMiddlewareWritesNothing) {
    tv.on<&a_qortvapi_config_get_str_value>([](const char*, char*, uint32_t*) { return -7; });
    EXPECT_EQ(text(), (Texts::All{{"", 256, -7}}));
}

TEST_F(ServiceConfigText, isLoggedBehindTheAnswer) {
    writeText("abc", 3, 0);
    int answers = 0;
    impl->a_hidl_a_qortvapi_config_get_str_value(kKey, [&](const auto&...) {
        ++answers;
        EXPECT_EQ(log.take(), (std::vector<LogLine>{debugLine(kTag, kGetText, kGetText)}));
    });
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{debugLine(kTag, kGetText, kGetText + ",value:abc")}));
}

class ServiceConfigItems : public ServiceConfig {
  protected:
    using Items = Answers<std::string, uint32_t, int32_t, int32_t>;
    Items::All items() const {
        return Items::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_config_get_items_enabled(-3, kKey, callback);
        });
    }
};

TEST_F(ServiceConfigItems, areAnsweredWithTheCountBeforeTheLength) {
    const std::string full(256, 'x');
    struct Row {
        std::string written;
        uint32_t length;
        uint32_t count;
        int32_t result;
        std::string items;
        int32_t answered_length;
    };
    for (const Row& row : {Row{"1,2,3", 12, 3, 0, "1,2,3", 12},
                           Row{{"1\0,2", 4}, 0xfffffffe, 0xfedcba98, -7, "1", -2},
                           Row{full, 256, 0, 8, full, 256}}) {
        SCOPED_TRACE(row.items);
        tv.on<&a_qortvapi_config_get_items_enabled>(
                [&](int16_t group, const char* key, char* text, uint32_t* length, uint32_t* count) {
                    EXPECT_EQ(group, -3);
                    EXPECT_EQ(key, kKey.c_str()) << "a text is not copied";
                    EXPECT_EQ(std::string(text, 256), std::string(256, '\0'));
                    EXPECT_EQ(*length, 256u);
                    EXPECT_EQ(*count, 0u);
                    memcpy(text, row.written.data(), row.written.size());
                    *length = row.length;
                    *count = row.count;
                    return row.result;
                });
        expectLines(kGetItems, {kGetItems, kGetItems + ",value:" + row.items}, [&] {
            Switchboard::startRecording();
            EXPECT_EQ(items(),
                      (Items::All{{row.items, row.count, row.answered_length, row.result}}));
            EXPECT_EQ(Switchboard::stopRecording(), Names{"a_qortvapi_config_get_items_enabled"});
        });
    }
}

TEST_F(ServiceConfigItems, areNoneOfLength256WhereTheMiddlewareWritesNothing) {
    tv.on<&a_qortvapi_config_get_items_enabled>(
            [](int16_t, const char*, char*, uint32_t*, uint32_t*) { return -7; });
    EXPECT_EQ(items(), (Items::All{{"", 0, 256, -7}}));
}

TEST_F(ServiceConfigItems, areLoggedBehindTheAnswer) {
    int answers = 0;
    impl->a_hidl_a_qortvapi_config_get_items_enabled(1, kKey, [&](const auto&...) {
        ++answers;
        EXPECT_EQ(log.take(), (std::vector<LogLine>{debugLine(kTag, kGetItems, kGetItems)}));
    });
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(log.take(),
              (std::vector<LogLine>{debugLine(kTag, kGetItems, kGetItems + ",value:")}));
}

// Numbers that are written.

#define BRIDGE(function)                                                                       \
    forwarding::bridge<QorTvApiConfigImpl, &QorTvApiConfigImpl::a_hidl_##function, &function>( \
            #function)

TEST_F(ServiceConfig, passesNumbersOn) {
    forwarding::checkNew<QorTvApiConfigImpl>(BRIDGE(a_qortvapi_config_set_value));
    forwarding::checkNew<QorTvApiConfigImpl>(BRIDGE(a_qortvapi_config_set_value_for_all_elems));
}

TEST_F(ServiceConfig, logsNumbersThatAreWritten) {
    const std::string set = "a_hidl_a_qortvapi_config_set_value";
    expectLines(set, {set + ",str:g_misc__text,val=-2147483648,update_flag=-2"},
                [&] { impl->a_hidl_a_qortvapi_config_set_value(1, kKey, INT32_MIN, -2); });
    const std::string set_all = "a_hidl_a_qortvapi_config_set_value_for_all_elems";
    expectLines(set_all, {set_all + ",str:,val=7,update_flag=32767"}, [&] {
        impl->a_hidl_a_qortvapi_config_set_value_for_all_elems(1, "", 7, INT16_MAX);
    });
}

}  // namespace
