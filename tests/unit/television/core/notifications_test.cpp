// Notifications of the television as a whole, and the notifier's queue by itself.
#include <future>
#include <thread>

#include "middleware/bringup.h"
#include "middleware/broadcast.h"
#include "middleware/pcl.h"
#include "middleware/svctx.h"
#include "middleware/time.h"
#include "middleware/upgrade.h"
#include "support/log_capture.h"
#include "support/notification_log.h"
#include "support/television_test.h"
#include "television/core/core.h"
#include "television/core/notifier.h"

namespace {

using television::Notification;
using television::Notifier;
using television::registration;
using television::Registrations;

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}

/** A handler of four arguments that logs under a name. */
#define LOGGING_HANDLER(name)                                                                  \
    void name(int32_t code, void* tag, void* a, void* b, void* c, void* d) {                   \
        NotificationLog::instance().add(#name, code,                                           \
                                        {value(tag), value(a), value(b), value(c), value(d)}); \
    }
LOGGING_HANDLER(channelList)
LOGGING_HANDLER(tvProvider)
LOGGING_HANDLER(svlId)
LOGGING_HANDLER(tslId)
LOGGING_HANDLER(broadcast)
LOGGING_HANDLER(bissKeys)
LOGGING_HANDLER(satellites)
LOGGING_HANDLER(networks)

void context(uint32_t handle, uint32_t condition, uint32_t code, uint32_t stream, void* tag) {
    NotificationLog::instance().add("context", static_cast<int32_t>(condition),
                                    {handle, code, stream, value(tag)});
}

void dateAndTime(int32_t code, void* tag, void* seconds) {
    NotificationLog::instance().add("dateAndTime", code, {value(tag), value(seconds)});
}

void* tag(uintptr_t number) {
    return reinterpret_cast<void*>(number);
}

class TelevisionNotifications : public TelevisionTest {
  protected:
    TelevisionNotifications() { log.clear(); }
    ~TelevisionNotifications() override {
        log.hook(nullptr);
        tv.reset();
        log.clear();
    }

    NotificationLog& log = NotificationLog::instance();
};

TEST_F(TelevisionNotifications, FirstHandlerIsNotifiedThatTheListsAreLoaded) {
    startWithDemo();
    EXPECT_EQ(a_qortvapi_channellist_register_callback(channelList, tag(1111)), TV_OK);
    EXPECT_EQ(log.wait("channelList", 1),
              (std::vector<SeenNotification>{
                      {"channelList", CHANNEL_LIST_NFY_LOADED, {1111, 0, 40, 0, 0}}}));
    EXPECT_EQ(a_qortvapi_tvprovider_channellist_register_callback(tvProvider, tag(2)), TV_OK);
    log.wait("tvProvider", 1);
    // A second handler, or the first again with another tag, is not notified.
    EXPECT_EQ(a_qortvapi_channellist_register_callback(satellites, tag(5)), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_register_callback(channelList, tag(7)), TV_OK);
    tv->reload();
    EXPECT_EQ(log.wait("channelList", 2)[1],
              (SeenNotification{"channelList", CHANNEL_LIST_NFY_LOADED, {7, 0, 40, 0, 0}}));
    EXPECT_EQ(log.wait("satellites", 1).size(), 1u);
    EXPECT_EQ(log.wait("channelList", 2).size(), 2u);
}

TEST_F(TelevisionNotifications, HandlersBeforeTheLoadAreNotifiedOnce) {
    // Registered while the streams are read, as a service does that does not wait.
    stream_generator::writeStreams(streams(), stream_generator::demoPlans());
    start();
    a_qortvapi_channellist_register_callback(channelList, nullptr);
    log.wait("channelList", 1);
    tv->reload();
    EXPECT_EQ(log.wait("channelList", 2).size(), 2u);
}

TEST_F(TelevisionNotifications, SelectionIsNotifiedInOrder) {
    startWithDemo();
    uint32_t main = 0;
    uint32_t sub = 0;
    ASSERT_EQ(c_svctx_open("main_svctx", &main), TV_OK);
    ASSERT_EQ(c_svctx_open("sub_svctx", &sub), TV_OK);
    EXPECT_NE(main, sub);
    EXPECT_EQ(c_svctx_set_listener(main, context, tag(12)), TV_OK);
    EXPECT_EQ(c_svctx_set_listener(sub, context, tag(34)), TV_OK);
    EXPECT_EQ(c_svctx_set_listener(5, context, tag(56)), TV_NOT_FOUND);
    a_qortvapi_broadcast_register_callback(broadcast, tag(9));
    a_qortvapi_svlid_update_register_callback(svlId, tag(3));
    a_qortvapi_tslid_update_register_callback(tslId, tag(4));
    const uint32_t one = channel(SVL_ID_CABLE, "Cable One");
    const uint32_t two = channel(SVL_ID_CABLE, "Movies 1");
    for (const uint32_t id : {one, two, one}) {
        ASSERT_EQ(a_qortvapi_channellist_set_current_channel(id), TV_OK);
        log.wait("broadcast", 1);
    }
    ASSERT_EQ(a_qortvapi_channellist_set_2nd_current_channel_by_svlId(SVL_ID_CABLE, two), TV_OK);
    const std::vector<std::pair<uint64_t, uint64_t>> selections = {
            {one, 0}, {two, 0}, {one, 0}, {two, 1}};
    std::vector<SeenNotification> expected;
    for (const auto& [id, window] : selections) {
        for (const uint64_t status : {BROADCAST_TUNING_SEARCHING, BROADCAST_TUNING_LOCKED}) {
            expected.push_back({"broadcast", BROADCAST_NFY_TUNING, {9, status, 0, id, window}});
        }
        expected.push_back(
                {"broadcast", BROADCAST_NFY_CHANNEL_CHANGED, {9, id, window, SVL_ID_CABLE, 0}});
    }
    EXPECT_EQ(log.wait("broadcast", expected.size()), expected);
    const auto contexts = log.wait("context", 2);
    EXPECT_EQ(contexts.front(), (SeenNotification{"context",
                                                  SVCTX_COND_SERVICE_CHANGED,
                                                  {main, SVCTX_CODE_SERVICE_SELECTED, 0, 12}}));
    EXPECT_EQ(contexts.back().values, (std::vector<uint64_t>{sub, 1, 0, 34}));
    // The list changed once: from the terrestrial one to cable.
    EXPECT_EQ(log.seen("svlId"),
              (std::vector<SeenNotification>{
                      {"svlId", CHANNEL_LIST_ID_NFY_CURRENT, {3, SVL_ID_CABLE, 0, 0, 0}}}));
    EXPECT_EQ(log.seen("tslId").size(), 1u);
}

TEST_F(TelevisionNotifications, ChangesAreNotified) {
    startWithDemo();
    a_qortvapi_channellist_register_callback(channelList, tag(1));
    log.wait("channelList", 1);
    SVL_REC_T record = service(SVL_ID_CABLE, "Cable One");
    std::strcpy(record.s_service_name, "Quiet");
    ASSERT_EQ(a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(
                      SVL_ID_CABLE, 0, 0, 0, 0, CHANNEL_WRITE_SERVICE, &record, nullptr),
              TV_OK);
    std::strcpy(record.s_service_name, "Loud");
    ASSERT_EQ(a_qortvapi_channellist_set_svl_tsl_rec_info(SVL_ID_CABLE, 0, 0, 0, 0,
                                                          CHANNEL_WRITE_SERVICE, &record, nullptr),
              TV_OK);
    EXPECT_EQ(log.wait("channelList", 2)[1],
              (SeenNotification{"channelList",
                                CHANNEL_LIST_NFY_CHANGED,
                                {1, SVL_ID_CABLE, 12, record.ui4_channel_id, 0}}));
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, 0, record.ui4_channel_id), TV_OK);
    EXPECT_EQ(log.wait("channelList", 3)[2].code, CHANNEL_LIST_NFY_FAVOURITES);
    ASSERT_EQ(
            a_qortvapi_channellist_delete_channel_without_lcn(SVL_ID_CABLE, record.ui2_svl_rec_id),
            TV_OK);
    EXPECT_EQ(log.wait("channelList", 4)[3],
              (SeenNotification{
                      "channelList", CHANNEL_LIST_NFY_DELETED, {1, SVL_ID_CABLE, 11, 0, 0}}));
}

TEST_F(TelevisionNotifications, SatellitesComeThroughTheRegistrationOfBissKeys) {
    startWithDemo();
    a_qortvapi_bisskey_register_callback(bissKeys, tag(7777));
    a_qortvapi_bisskey_register_callback(satellites, tag(8888));
    a_qortvapi_nwl_update_register_callback(networks, tag(1234));
    SATL_REC_T satellite;
    ASSERT_EQ(a_qortvapi_satllist_get_rec_by_rec_idx(SATL_ID_MAIN, 1, &satellite), TV_OK);
    ASSERT_EQ(a_qortvapi_satllist_update_rec(SATL_ID_MAIN, &satellite, false), TV_OK);
    const std::vector<uint64_t> arguments = {SATL_ID_MAIN, 2, satellite.ui2_satl_rec_id, 0};
    std::vector<uint64_t> expected = {7777};
    expected.insert(expected.end(), arguments.begin(), arguments.end());
    EXPECT_EQ(log.wait("bissKeys", 1)[0],
              (SeenNotification{"bissKeys", BISSKEY_NFY_SATELLITES_CHANGED, expected}));
    expected[0] = 8888;
    EXPECT_EQ(log.wait("satellites", 1)[0],
              (SeenNotification{"satellites", BISSKEY_NFY_SATELLITES_CHANGED, expected}));
    uint32_t list = 0;
    uint32_t id = 0;
    BSL_REC_T key = {};
    a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(BSL_ID_MAIN, &list);
    ASSERT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, BISSKEY_ADD, &key, &id), TV_OK);
    EXPECT_EQ(log.wait("satellites", 2)[1].code, BISSKEY_NFY_KEYS_CHANGED);
    ASSERT_EQ(a_qortvapi_nwl_clean(SVL_ID_CABLE), TV_OK);
    EXPECT_EQ(log.wait("networks", 1)[0],
              (SeenNotification{
                      "networks", NETWORK_LIST_NFY_CHANGED, {1234, SVL_ID_CABLE, 0, 0, 0}}));
}

TEST_F(TelevisionNotifications, HandlersMayCallTheTelevision) {
    startWithDemo();
    a_qortvapi_broadcast_register_callback(broadcast, nullptr);
    const auto all = services(SVL_ID_CABLE);
    size_t depth = 0;
    log.hook([&](const SeenNotification& seen) {
        if (seen.handler != "broadcast" || seen.code != BROADCAST_NFY_CHANNEL_CHANGED) return;
        if (++depth >= all.size()) return;
        // Locks, reads, writes and selects from within the handler.
        EXPECT_EQ(a_qortvapi_channellist_lock_database(1, 0), TV_OK);
        EXPECT_EQ(services(SVL_ID_CABLE).size(), all.size());
        EXPECT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, 0, all[depth].ui4_channel_id),
                  TV_OK);
        EXPECT_EQ(a_qortvapi_channellist_set_current_channel(all[depth].ui4_channel_id), TV_OK);
        EXPECT_EQ(a_qortvapi_channellist_unlock_database(1, 0), TV_OK);
        a_qortvapi_channellist_register_callback(channelList, nullptr);
    });
    ASSERT_EQ(a_qortvapi_channellist_set_current_channel(all[0].ui4_channel_id), TV_OK);
    EXPECT_EQ(log.wait("broadcast", 3 * all.size()).size(), 3 * all.size());
}

TEST_F(TelevisionNotifications, HandlersMayWaitForOtherThreadsThatCallTheTelevision) {
    startWithDemo();
    a_qortvapi_broadcast_register_callback(broadcast, nullptr);
    const uint32_t id = channel(SVL_ID_CABLE, "Cable One");
    // As a remote client does: it calls back from its own process before it answers.
    log.hook([&](const SeenNotification& seen) {
        if (seen.code != BROADCAST_NFY_CHANNEL_CHANGED) return;
        std::async(std::launch::async, [&] {
            EXPECT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, 0, id), TV_OK);
            EXPECT_EQ(a_qortvapi_channellist_get_channel_number(id), 101);
        }).get();
    });
    ASSERT_EQ(a_qortvapi_channellist_set_current_channel(id), TV_OK);
    log.wait("broadcast", 3);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 0).size(), 1u);
}

TEST_F(TelevisionNotifications, DateAndTimeTick) {
    options.tick = std::chrono::milliseconds(5);
    start();
    const auto before = static_cast<uint64_t>(time(nullptr));
    EXPECT_EQ(a_qortvapi_time_register_dt_event_callback(dateAndTime, tag(42)), TV_OK);
    const auto seen = log.wait("dateAndTime", 3);
    EXPECT_EQ(seen[0].code, TIME_NFY_SECOND);
    EXPECT_EQ(seen[0].values[0], 42u);
    EXPECT_GE(seen[0].values[1], before);
    EXPECT_LE(seen[0].values[1], static_cast<uint64_t>(time(nullptr)));
}

TEST_F(TelevisionNotifications, SlowHandlersGetFewerTicks) {
    options.tick = std::chrono::milliseconds(5);
    start();
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    std::atomic<int> calls{0};
    log.hook([&](const SeenNotification&) {
        if (calls++ == 0) released.wait();
    });
    a_qortvapi_time_register_dt_event_callback(dateAndTime, nullptr);
    while (calls == 0) std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(60));  // a dozen ticks
    const auto before = std::chrono::steady_clock::now();
    release.set_value();
    log.wait("dateAndTime", 4);
    // Those missed do not come all at once: three more take at least two ticks.
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(8));
}

TEST_F(TelevisionNotifications, RegistrationsOfAllShapes) {
    start();
    uint32_t handle = 0;
    EXPECT_EQ(c_pcl_reg_nfy_fct(
                      nullptr, [](uint32_t, void*, uint32_t, uint32_t) {}, &handle),
              TV_OK);
    EXPECT_NE(handle, 0u);
    EXPECT_EQ(c_pcl_reg_nfy_fct(nullptr, nullptr, &handle), TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_pcl_reg_nfy_fct(
                      nullptr, [](uint32_t, void*, uint32_t, uint32_t) {}, nullptr),
              TV_INVALID_ARGUMENT);
    const a_qortvapi_upgrade_nfy_fct upgrade = [](int32_t, int32_t, int32_t, void*) {};
    EXPECT_EQ(a_qortvapi_upgrade_unregister_callback(upgrade, tag(2222)), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_upgrade_register_callback(upgrade, tag(1111)), TV_OK);
    EXPECT_EQ(a_qortvapi_upgrade_unregister_callback(upgrade, tag(2222)), TV_OK);
    EXPECT_EQ(a_qortvapi_upgrade_unregister_callback(upgrade, tag(2222)), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_broadcast_register_callback(nullptr, nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionNotifications, BringUp) {
    start();
    EXPECT_EQ(x_rtos_init(nullptr), 0);
    void* memory = nullptr;
    uint32_t size = 12 << 20;
    EXPECT_EQ(handle_init(4096, &memory, &size), 0);
    EXPECT_EQ(size, 12u << 20);
    EXPECT_EQ(os_init(memory, size), 0);
    EXPECT_EQ(handle_init(4096, nullptr, &size), TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_svctx_prepare_process_env(0), 0);
    uint32_t handle = 0;
    EXPECT_EQ(c_svctx_open("third_svctx", &handle), TV_NOT_FOUND);
    EXPECT_EQ(c_svctx_open(nullptr, &handle), TV_INVALID_ARGUMENT);
    EXPECT_EQ(c_svctx_open("main_svctx", nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(handle, 0u);
}

// The queue by itself, with a handler that blocks until it is let go.
class TelevisionNotifier : public testing::Test {
  protected:
    TelevisionNotifier() {
        NotificationLog::instance().clear();
        registrations.add(kChannels, reinterpret_cast<Registrations::Function>(&channelList),
                          nullptr);
        registrations.add(kBroadcast, reinterpret_cast<Registrations::Function>(&broadcast),
                          nullptr);
        NotificationLog::instance().hook([this](const SeenNotification&) {
            entered = true;
            released.wait();
        });
        notifier.start(std::chrono::hours(1));
        // The first notification occupies the thread; all later ones wait in the queue.
        notifier.post({kBroadcast, 1, {}});
        while (!entered) std::this_thread::yield();
    }
    ~TelevisionNotifier() override {
        notifier.stop();
        NotificationLog::instance().clear();
    }

    const television::RegistrationKey kChannels =
            registration<&a_qortvapi_channellist_register_callback>();
    const television::RegistrationKey kBroadcast =
            registration<&a_qortvapi_broadcast_register_callback>();
    std::atomic<bool> entered{false};
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    Registrations registrations;
    Notifier notifier{registrations};
};

TEST_F(TelevisionNotifier, TheSameNotificationWaitsOnce) {
    const Notification changed{kChannels, CHANNEL_LIST_NFY_CHANGED, {1, 2, 3, 4}};
    for (int i = 0; i < 5; ++i) notifier.post(changed);
    notifier.post({kBroadcast, 1, {1}});
    notifier.post({kBroadcast, 1, {2}});
    notifier.post({kBroadcast, 1, {1}});  // as before, but no longer the last one
    notifier.post(changed);
    release.set_value();
    EXPECT_EQ(NotificationLog::instance().wait("broadcast", 4).size(), 4u);
    EXPECT_EQ(NotificationLog::instance().wait("channelList", 1).size(), 1u);
}

TEST_F(TelevisionNotifier, AFullQueueIsPutTogether) {
    const LogCapture lines;
    for (uint32_t i = 0; i < Notifier::kMostPending; ++i) {
        notifier.post({kChannels, CHANNEL_LIST_NFY_CHANGED, {1, 2, i, 0}});
    }
    notifier.post({kBroadcast, 1, {77}});
    EXPECT_TRUE(lines.has("notifications wait"));
    release.set_value();
    EXPECT_EQ(NotificationLog::instance().wait("broadcast", 2)[1].values[1], 77u);
    const auto seen = NotificationLog::instance().seen("channelList");
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].code, CHANNEL_LIST_NFY_LOADED);
    EXPECT_EQ(seen[0].values, (std::vector<uint64_t>{0, 0, 0, 0, 0}));
}

}  // namespace
