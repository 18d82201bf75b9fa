// integration_client: an application for the tests. `stress` makes calls from many threads until it
// has heard the notification that it waits for; `block` never returns from the first notification
// it hears; `lives` is many applications, one after another.
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "middleware/records.h"
#include "qortv/channel_list.h"
#include "qortv/subscription.h"

namespace {

using qortv::Channel;
using qortv::ChannelList;

/** How long to wait for the service: as long as the tests wait for anything. */
constexpr std::chrono::seconds kPatience{120};

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

/** Counts the notifications whose text contains one text, until one of them contains another. Says
 * the count as it grows, so that a test sees that it goes on. */
class Counter : public qortv::Listener {
  public:
    Counter(std::string counted, std::string last)
        : mCounted(std::move(counted)), mLast(std::move(last)) {}

    void onNotification(const qortv::Notification& notification) override {
        const std::string text = toString(notification);
        if (mDone || text.find(mCounted) == std::string::npos) return;
        say("heard " + std::to_string(++mCount));
        if (text.find(mLast) != std::string::npos) mDone = true;
    }

    bool done() const { return mDone; }

  private:
    const std::string mCounted;
    const std::string mLast;
    std::atomic<int> mCount{0};
    std::atomic<bool> mDone{false};
};

/** Calls of all kinds, each answer checked; what went wrong, and how much went well. */
class Caller {
  public:
    Caller(android::sp<ChannelList::Interface> proxy, std::vector<Channel> channels)
        : mProxy(std::move(proxy)), mChannels(std::move(channels)) {}

    /** One round of calls. Any thread, with a list of its own. */
    void round(unsigned number, ChannelList& list) {
        try {
            const Channel& channel = mChannels[number % mChannels.size()];
            expect(qortv::valueOf(
                           mProxy->a_hidl_a_qortvapi_channellist_get_channel_number(channel.id),
                           "get_channel_number") == channel.number,
                   "a channel number");
            qortv::check(mProxy->a_hidl_a_qortvapi_channellist_get_channel_by_id(
                                 channel.id, channel.list,
                                 [&](const auto& service, const auto& multiplex, int32_t result) {
                                     expect(result == 0 && isRecordOf(service, channel) &&
                                                    multiplex.size() == sizeof(TSL_REC_T),
                                            "a channel's records");
                                 }),
                         "get_channel_by_id");
            expect(list.current().has_value(), "the current channel");
            if (number % 8 == 0) expect(list.read().size() == mChannels.size(), "the list");
            ++mRounds;
        } catch (const std::exception& error) {
            expect(false, error.what());
        }
    }

    long rounds() const { return mRounds; }
    std::string errors() {
        std::lock_guard lock(mMutex);
        std::string text;
        for (const auto& error : mErrors) text += error + "; ";
        return text;
    }

  private:
    static bool isRecordOf(const android::hardware::hidl_vec<uint8_t>& image,
                           const Channel& channel) {
        SVL_REC_T record;
        if (image.size() != sizeof record) return false;
        std::memcpy(&record, image.data(), sizeof record);
        return record.ui4_channel_id == channel.id && channel.name == record.s_service_name;
    }

    void expect(bool good, const std::string& what) {
        if (good) return;
        std::lock_guard lock(mMutex);
        mErrors.insert(what);
    }

    const android::sp<ChannelList::Interface> mProxy;
    const std::vector<Channel> mChannels;
    std::atomic<long> mRounds{0};
    std::mutex mMutex;
    std::set<std::string> mErrors;
};

int stress(unsigned threadCount, const std::string& counted, const std::string& last) {
    const auto proxy = qortv::connect<ChannelList::Interface>(kPatience);
    Caller caller(proxy, ChannelList(proxy).read());
    Counter counter(counted, last);
    qortv::Subscription subscription(counter, kPatience);
    say("ready");

    std::vector<std::thread> threads;
    for (unsigned i = 0; i < threadCount; ++i) {
        threads.emplace_back([&, i] {
            ChannelList list(proxy);
            for (unsigned j = i; !counter.done(); ++j) caller.round(j, list);
        });
    }
    for (auto& thread : threads) thread.join();
    say("rounds " + std::to_string(caller.rounds()));
    say("errors " + caller.errors());
    return 0;
}

int block() {
    struct : qortv::Listener {
        void onNotification(const qortv::Notification& notification) override {
            say("inside " + toString(notification));
            for (;;) pause();
        }
    } listener;
    qortv::Subscription subscription(listener);
    say("ready");
    for (;;) pause();
}

/** An application's whole life in a process of its own: registers, makes a call, and is gone. */
bool oneLife() {
    const pid_t child = fork();
    if (child == 0) {
        try {
            qortv::Listener listener;
            qortv::Subscription subscription(listener);
            const auto proxy = qortv::connect<ChannelList::Interface>();
            _exit(proxy->a_hidl_a_qortvapi_channellist_get_channel_number(0).isOk() ? 0 : 2);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "integration_client: %s\n", error.what());
            _exit(1);
        }
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

int lives(unsigned count) {
    for (unsigned i = 0; i < count; ++i) {
        if (!oneLife()) return 1;
        say("lived");
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("An application for the integration tests");
    app.require_subcommand(1);
    unsigned threads = 1;
    std::string counted;
    std::string last;
    auto* stressCommand = app.add_subcommand("stress", "");
    stressCommand->add_option("--threads", threads, "");
    stressCommand->add_option("--count", counted, "")->required();
    stressCommand->add_option("--until", last, "")->required();
    auto* blockCommand = app.add_subcommand("block", "");
    unsigned count = 1;
    auto* livesCommand = app.add_subcommand("lives", "");
    livesCommand->add_option("COUNT", count, "")->required();
    CLI11_PARSE(app, argc, argv);
    try {
        if (blockCommand->parsed()) return block();
        if (livesCommand->parsed()) return lives(count);
        return stress(threads, counted, last);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "integration_client: %s\n", error.what());
        return 1;
    }
}
