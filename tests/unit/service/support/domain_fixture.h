/** The fixture of the tests of the domain interfaces: an implementation whose constructor's line is
 * no longer in the log, and the lines that a call writes with debugging on and off. */
#pragma once

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "support/core_fixture.h"

template <typename Implementation>
class DomainTest : public ServiceTest {
  protected:
    using Texts = std::vector<std::string>;

    explicit DomainTest(const char* tag) : mTag(tag) { log.take(); }

    std::vector<LogLine> linesOf(const std::string& method, const Texts& texts) const {
        std::vector<LogLine> lines;
        for (const std::string& text : texts) lines.push_back(debugLine(mTag, method, text));
        return lines;
    }

    /** `call` writes `texts` while debugging is on; `always` remains of them when it is off. */
    void expectLines(const std::string& method, const Texts& texts,
                     const std::function<void()>& call, const Texts& always = {}) {
        log.take();
        call();
        EXPECT_EQ(log.take(), linesOf(method, texts));
        mTvApiDebug = 0;
        call();
        EXPECT_EQ(log.take(), linesOf(method, always));
        mTvApiDebug = 1;
    }

    /** As above for the method of the middleware's `function`, each `call` of which calls that
     * function once and no other. */
    void expectBridge(const std::string& function, const Texts& texts,
                      const std::function<void()>& call, const Texts& always = {}) {
        expectLines(
                "a_hidl_" + function, texts,
                [&] {
                    switchboard::Switchboard::startRecording();
                    call();
                    EXPECT_EQ(switchboard::Switchboard::stopRecording(), Texts{function});
                },
                always);
    }

    const sp<Implementation> impl = new Implementation();

  private:
    const char* const mTag;
};

/** The bytes of a record. */
template <typename Record>
std::vector<uint8_t> bytesOf(const Record& record) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&record);
    return std::vector<uint8_t>(bytes, bytes + sizeof(record));
}

/** A record of bytes that all differ. */
template <typename Record>
Record distinctRecord() {
    Record record;
    uint8_t bytes[sizeof(Record)];
    for (size_t i = 0; i < sizeof(Record); ++i) bytes[i] = static_cast<uint8_t>(0xf1 - 3 * i);
    memcpy(&record, bytes, sizeof(Record));
    return record;
}
