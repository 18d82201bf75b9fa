#include <thread>

#include "support/log_capture.h"
#include "support/notification_log.h"
#include "support/television_test.h"
#include "television/stream/folder_watch.h"

namespace {

using namespace stream_generator;
using std::chrono::milliseconds;

void channelList(int32_t code, void*, void* list, void* count, void*, void*) {
    NotificationLog::instance().add(
            "channelList", code,
            {reinterpret_cast<uintptr_t>(list), reinterpret_cast<uintptr_t>(count)});
}

class TelevisionReload : public TelevisionTest {
  protected:
    TelevisionReload() {
        NotificationLog::instance().clear();
        options.watch = true;
        options.calm = milliseconds(20);
    }
    ~TelevisionReload() override { tv.reset(); }

    /** Waits for a notification after which there are `count` channels. */
    static void waitForChannels(uint64_t count) {
        for (size_t seen = 1;; ++seen) {
            const auto events = NotificationLog::instance().wait("channelList", seen);
            if (events.size() < seen || events[seen - 1].values[1] == count) return;
        }
    }
};

TEST_F(TelevisionReload, DroppedMultiplexRaisesAnUpdate) {
    start();
    a_qortvapi_channellist_register_callback(channelList, nullptr);
    waitForChannels(0);
    writeStreams(streams(), {demoPlans()[0]});
    waitForChannels(5);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 5u);
    writeStreams(streams(), {demoPlans()[8]});
    waitForChannels(9);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 4u);
    std::filesystem::remove(streams() + "/dvb-t-1.ts");
    waitForChannels(4);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 0u);
}

TEST_F(TelevisionReload, FolderThatComesLater) {
    std::filesystem::remove_all(streams());
    start();
    a_qortvapi_channellist_register_callback(channelList, nullptr);
    waitForChannels(0);
    writeStreams(streams(), {demoPlans()[0]});
    waitForChannels(5);
}

TEST_F(TelevisionReload, FolderThatIsReplaced) {
    writeStreams(streams(), {demoPlans()[0]});
    start();
    a_qortvapi_channellist_register_callback(channelList, nullptr);
    waitForChannels(5);
    std::filesystem::rename(streams(), streams() + ".away");
    NotificationLog::instance().wait("channelList", 2);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 5u);  // what is not there cannot be missed
    writeStreams(streams(), {demoPlans()[8]});
    waitForChannels(4);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 0u);
}

TEST_F(TelevisionReload, FilesThatAreNoStreamsDoNotWakeIt) {
    const TempFolder other;
    television::FolderWatch watch(other.path(), milliseconds(5));
    other.write("notes.txt", {1});
    std::atomic<bool> woken{false};
    std::thread waiter([&] { woken = watch.wait(); });
    other.write("more.txt", {1});
    std::this_thread::sleep_for(milliseconds(50));
    watch.stop();
    waiter.join();
    EXPECT_FALSE(woken);
}

TEST_F(TelevisionReload, AFolderThatNeverCalmsDownCountsAtLast) {
    const TempFolder other;
    television::FolderWatch watch(other.path(), milliseconds(200));
    std::atomic<bool> done{false};
    std::thread writer([&] {
        while (!done) {
            other.write("a.ts", {1});
            std::this_thread::sleep_for(milliseconds(20));
        }
    });
    EXPECT_TRUE(watch.wait());
    done = true;
    writer.join();
}

TEST_F(TelevisionReload, WaitsForClientsThatHoldTheListStill) {
    options.watch = false;
    writeStreams(streams(), {demoPlans()[0]});
    start();
    ASSERT_EQ(a_qortvapi_channellist_lock_database(1, 0), TV_OK);
    writeStreams(streams(), {demoPlans()[1]});
    std::atomic<bool> loaded{false};
    std::thread loader([&] {
        tv->reload();
        loaded = true;
    });
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_FALSE(loaded);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 5u);
    // The client that holds the lock may still write.
    EXPECT_EQ(a_qortvapi_channellist_setChannelPumpVer(1, 5), TV_OK);
    ASSERT_EQ(a_qortvapi_channellist_unlock_database(1, 0), TV_OK);
    loader.join();
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 10u);
}

TEST_F(TelevisionReload, DoesNotWaitForeverForAClientThatForgets) {
    const LogCapture log;
    options.watch = false;
    start();
    ASSERT_EQ(a_qortvapi_channellist_lock_database(1, 0), TV_OK);
    writeStreams(streams(), {demoPlans()[1]});
    tv->reload();
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 5u);
    EXPECT_TRUE(log.has("a client has locked the channel lists"));
    EXPECT_EQ(a_qortvapi_channellist_unlock_database(1, 0), TV_OK);
}

TEST_F(TelevisionReload, ReadersSeeWholeLists) {
    options.watch = false;
    startWithDemo();
    std::atomic<bool> done{false};
    std::vector<std::thread> readers;
    for (int i = 0; i < 2; ++i) {
        readers.emplace_back([&] {
            while (!done) {
                std::vector<SVL_REC_T> records(20);
                std::vector<TSL_REC_T> multiplexes(20);
                const int32_t read = a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                        SVL_ID_CABLE, 0, 0, 0, 0, 0, 0, 0, 0, 20, records.data(),
                        multiplexes.data());
                EXPECT_TRUE(read == 12 || read == 8) << read;
                for (int32_t slot = 0; slot < read; ++slot) {
                    EXPECT_NE(multiplexes[static_cast<size_t>(slot)].ui2_tsl_rec_id, 0);
                }
            }
        });
    }
    const std::string file = streams() + "/dvb-c-1.ts";
    for (int i = 0; i < 5; ++i) {
        std::filesystem::rename(file, file + ".away");
        tv->reload();
        std::filesystem::rename(file + ".away", file);
        tv->reload();
    }
    done = true;
    for (std::thread& reader : readers) reader.join();
}

}  // namespace
