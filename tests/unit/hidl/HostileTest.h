// A service process that one client attacks while another uses it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "RawClient.h"
#include "ServiceProcess.h"

namespace qortv::test {

constexpr char kToken[] = "qortv.test@1.0::IEcho";
// Code of IEcho::number(): codes are given by the order in IEcho.hal.
constexpr uint32_t kNumber = 2;

class HostileTest : public ServiceTest {
  protected:
    void SetUp() override {
        startService();
        mEcho = echo();
        ASSERT_NE(mEcho, nullptr);
        ASSERT_TRUE(mEcho->nothing().isOk());
        mDescriptors = mEcho->openDescriptors().withDefault(-1);
    }

    // Expects that the service still serves others, has closed all descriptors of the hostile
    // client, and has logged `lines` lines since the test began.
    void expectUnharmed(size_t lines) {
        EXPECT_EQ(mEcho->number().withDefault(0), 42);
        int32_t descriptors = 0;
        eventually([&] {
            descriptors = mEcho->openDescriptors().withDefault(-1);
            return descriptors == mDescriptors;
        });
        EXPECT_EQ(descriptors, mDescriptors);
        expectLines(lines);
    }

    void expectLines(size_t lines) {
        EXPECT_TRUE(eventually([&] { return serviceLog().size() >= lines; }));
        EXPECT_EQ(serviceLog().size(), lines) << ::testing::PrintToString(serviceLog());
    }

    // Gives the client a session and a connection for calls, and looks up the object's number.
    void open(RawClient* client) {
        ASSERT_TRUE(client->openSession());
        ASSERT_TRUE(client->openCalls());
        mTarget = client->lookUp();
        ASSERT_NE(mTarget, 0u);
    }

    // Sends the bytes on a new connection for calls. Expects that the session ends, and that the
    // log line with the reason contains `words`.
    void expectSessionEnds(const Bytes& bytes, const std::string& words,
                           const std::vector<int>& fds = {}) {
        const size_t before = serviceLog().size();
        RawClient client(mFolder + "/run");
        open(&client);
        ASSERT_TRUE(RawClient::send(client.calls(), bytes, fds));
        EXPECT_TRUE(RawClient::isClosed(client.calls())) << words;
        EXPECT_TRUE(RawClient::isClosed(client.notices())) << words;
        client.closeAll();
        expectUnharmed(before + 1);
        ASSERT_EQ(serviceLog().size(), before + 1) << words;
        EXPECT_NE(serviceLog().back().find(words), std::string::npos) << serviceLog().back();
        EXPECT_NE(serviceLog().back().find(std::to_string(getpid())), std::string::npos);
    }

    // Returns a sound call of IEcho::number().
    RawFrame number() { return RawFrame::call(mTarget, kNumber, kToken); }

    sp<IEcho> mEcho;           // the service, as an innocent client sees it
    uint64_t mTarget = 1;      // number of its object for the hostile client
    int32_t mDescriptors = 0;  // that the service has open without the hostile client
};

}  // namespace qortv::test
