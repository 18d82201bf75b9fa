// The channel list of the real service, read by real clients: what the streams say is what arrives.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "middleware/records.h"
#include "qortv/channel_list.h"
#include "qortv/subscription.h"
#include "support.h"
#include "television/generator/multiplex_plan.h"
#include "television/generator/stream_writer.h"

namespace integration {
namespace {

using android::hardware::hidl_handle;
using qortv::Channel;
using qortv::ChannelList;
using stream_generator::demoPlans;

/** What one channel is known by in the streams: medium, transport stream, service. */
using Key = std::tuple<qortv::Medium, uint16_t, uint16_t>;

qortv::Medium mediumOf(stream_generator::Medium medium) {
    switch (medium) {
        case stream_generator::Medium::kTerrestrial:
            return qortv::Medium::kTerrestrial;
        case stream_generator::Medium::kCable:
            return qortv::Medium::kCable;
        case stream_generator::Medium::kSatellite:
            return qortv::Medium::kSatellite;
    }
    return qortv::Medium::kUnknown;
}

class IntegrationChannelList : public testing::Test {
  protected:
    void SetUp() override {
        mStation.makeStreams();
        mStation.startAndWait();
        mStation.enter();
        mProxy = qortv::connect<ChannelList::Interface>();
    }

    Station mStation;
    android::sp<ChannelList::Interface> mProxy;
};

TEST_F(IntegrationChannelList, IsWhatTheStreamsSay) {
    std::map<Key, Channel> channels;
    for (const auto& channel : ChannelList(mProxy).read()) {
        const Key key(channel.medium, channel.multiplexId, channel.serviceId);
        EXPECT_TRUE(channels.emplace(key, channel).second) << channel.name << " came twice";
    }
    for (const auto& plan : demoPlans()) {
        for (const auto& service : plan.services) {
            SCOPED_TRACE(plan.fileName + " " + service.name);
            const auto found = channels.find(
                    Key(mediumOf(plan.medium), plan.transportStreamId, service.serviceId));
            ASSERT_NE(found, channels.end());
            const Channel& channel = found->second;
            EXPECT_EQ(channel.name, service.name);
            EXPECT_EQ(channel.provider, service.provider);
            EXPECT_EQ(channel.multiplex, plan.networkName);
            EXPECT_EQ(channel.frequencyKhz, plan.frequencyKhz);
            EXPECT_EQ(channel.networkId, plan.originalNetworkId);
            EXPECT_EQ(channel.scrambled, service.scrambled);
            EXPECT_EQ(channel.type == qortv::ChannelType::kRadio, service.type == 0x02);
            EXPECT_NE(channel.id, 0U);
            EXPECT_NE(channel.number, 0U);
            channels.erase(found);
        }
    }
    for (const auto& [key, channel] : channels) ADD_FAILURE() << channel.name << " is in no stream";
}

TEST_F(IntegrationChannelList, IsTheSameInPagesOfAnySize) {
    const auto ids = [&](uint32_t page) {
        std::vector<uint32_t> found;
        for (const auto& channel : ChannelList(mProxy, page).read()) found.push_back(channel.id);
        return found;
    };
    const auto whole = ids(ChannelList::kPageRecords);
    EXPECT_EQ(ids(1), whole);
    EXPECT_EQ(ids(7), whole);
    EXPECT_EQ(ids(static_cast<uint32_t>(whole.size())), whole);
}

TEST_F(IntegrationChannelList, SelectedChannelIsTheCurrentOne) {
    ChannelList list(mProxy);
    const auto channels = list.read();
    ASSERT_GT(channels.size(), 2U);
    for (const auto& channel : {channels.front(), channels.back()}) {
        list.select(channel.id);
        const auto current = list.current();
        ASSERT_TRUE(current.has_value());
        EXPECT_EQ(current->id, channel.id);
        EXPECT_EQ(current->name, channel.name);
        EXPECT_EQ(current->frequencyKhz, channel.frequencyKhz);
    }
    EXPECT_THROW(list.select(0xDEADBEEF), qortv::Error);
    EXPECT_EQ(list.current()->id, channels.back().id);
}

TEST_F(IntegrationChannelList, AStreamThatComesOnTheAirIsHeardOfAndRead) {
    struct : qortv::Listener {
        void notifyChannelListUpdate(int32_t, uint64_t, uint64_t, uint64_t, uint64_t,
                                     uint64_t) override {
            ++updates;
        }
        std::atomic<int> updates{0};
    } listener;
    qortv::Subscription subscription(listener);
    ChannelList list(mProxy);
    const size_t before = list.read().size();
    const TemporaryFolder folder;
    auto plans = stream_generator::largePlans(1, 12);
    plans[0].fileName = "new.ts";
    stream_generator::writeStreams(folder.path(), plans);
    std::filesystem::copy_file(folder / "new.ts", mStation.streams() + "/new.part");
    std::filesystem::rename(mStation.streams() + "/new.part", mStation.streams() + "/new.ts");
    ASSERT_TRUE(eventually([&] { return listener.updates > 0; }));
    EXPECT_EQ(list.read().size(), before + 12);
    std::filesystem::remove(mStation.streams() + "/new.ts");
    const int heard = listener.updates;
    ASSERT_TRUE(eventually([&] { return listener.updates > heard; }));
    EXPECT_EQ(list.read().size(), before);
}

TEST(IntegrationLargeList, IsReadWholeInPages) {
    constexpr size_t kServices = 6'000;
    Station station;
    stream_generator::writeStreams(station.streams(), stream_generator::largePlans(60, kServices));
    station.startAndWait();
    station.enter();
    const auto proxy = qortv::connect<ChannelList::Interface>();
    for (const uint32_t page : {300U, ChannelList::kPageRecords}) {
        std::set<std::string> names;
        for (const auto& channel : ChannelList(proxy, page).read()) names.insert(channel.name);
        EXPECT_EQ(names.size(), kServices) << "in pages of " << page;
        EXPECT_EQ(names.count("Große Liste 00001"), 1U);
        EXPECT_EQ(names.count("Große Liste 06000"), 1U);
    }
}

/** A region of any length, as a careless client makes it. */
class OddRegion {
  public:
    explicit OddRegion(size_t bytes) : mHandle(native_handle_create(1, 0)) {
        mHandle->data[0] = memfd_create("odd", MFD_CLOEXEC | MFD_ALLOW_SEALING);
        EXPECT_EQ(ftruncate(mHandle->data[0], static_cast<off_t>(bytes)), 0);
        EXPECT_EQ(fcntl(mHandle->data[0], F_ADD_SEALS, F_SEAL_SHRINK), 0);
    }
    ~OddRegion() {
        native_handle_close(mHandle);
        native_handle_delete(mHandle);
    }
    OddRegion(const OddRegion&) = delete;
    OddRegion& operator=(const OddRegion&) = delete;
    hidl_handle handle() const { return hidl_handle(mHandle); }

  private:
    native_handle_t* mHandle;
};

TEST_F(IntegrationChannelList, ARegionThatIsTooShortFailsTheReadAndNothingElse) {
    constexpr uint32_t kRecords = 20;  // of either kind more than a page
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const pid_t service = mStation.service().pid();
    const auto read = [&](const hidl_handle& services, const hidl_handle& multiplexes) {
        return qortv::valueOf(
                mProxy->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                        SVL_ID_CABLE, 0, 0, 0, 0, 0, 0, 0, 0, kRecords, services, multiplexes),
                "read");
    };
    const OddRegion services(kRecords * sizeof(SVL_REC_T));
    const OddRegion multiplexes(kRecords * sizeof(TSL_REC_T));
    const int32_t good = read(services.handle(), multiplexes.handle());
    EXPECT_GE(good, 0);

    for (const size_t bytes : {size_t{0}, size_t{1}, sizeof(SVL_REC_T), page}) {
        EXPECT_LT(read(OddRegion(bytes).handle(), multiplexes.handle()), 0) << bytes;
        EXPECT_LT(read(services.handle(), OddRegion(bytes).handle()), 0) << bytes;
    }
    EXPECT_LT(read(hidl_handle(), hidl_handle()), 0);
    EXPECT_EQ(read(services.handle(), multiplexes.handle()), good);
    EXPECT_TRUE(mStation.service().running());
    EXPECT_EQ(mStation.service().pid(), service);
}

TEST_F(IntegrationChannelList, EveryReadGivesItsDescriptorsBack) {
    ChannelList list(mProxy);
    const size_t channels = list.read().size();
    const size_t before = mStation.idleDescriptors();
    for (int i = 0; i < 100; ++i) ASSERT_EQ(list.read().size(), channels);
    EXPECT_TRUE(eventually([&] { return mStation.descriptors() == before; }))
            << mStation.descriptors() << " descriptors instead of " << before;
}

}  // namespace
}  // namespace integration
