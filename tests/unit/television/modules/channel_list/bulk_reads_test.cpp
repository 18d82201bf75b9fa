#include <sys/mman.h>

#include <algorithm>

#include "support/television_test.h"

namespace {

using Names = std::vector<std::string>;

/** Slots filled with a pattern, which shows what was written. */
struct Slots {
    static constexpr uint8_t kUntouched = 0xC3;

    explicit Slots(size_t count) : services(count), multiplexes(count) {
        std::memset(services.data(), kUntouched, count * sizeof(SVL_REC_T));
        std::memset(multiplexes.data(), kUntouched, count * sizeof(TSL_REC_T));
    }

    /** Returns how many slots were written; all others must have the pattern. */
    size_t written() const {
        SVL_REC_T untouched;
        TSL_REC_T untouchedMultiplex;
        std::memset(&untouched, kUntouched, sizeof(untouched));
        std::memset(&untouchedMultiplex, kUntouched, sizeof(untouchedMultiplex));
        size_t count = 0;
        for (size_t i = 0; i < services.size(); ++i) {
            const bool service = std::memcmp(&services[i], &untouched, sizeof(untouched)) != 0;
            const bool multiplex = std::memcmp(&multiplexes[i], &untouchedMultiplex,
                                               sizeof(untouchedMultiplex)) != 0;
            EXPECT_EQ(service, multiplex) << i;
            if (!service) continue;
            EXPECT_EQ(count, i);
            EXPECT_EQ(multiplexes[i].ui2_tsl_rec_id, services[i].ui2_tsl_rec_id);
            ++count;
        }
        return count;
    }
    Names names() const {
        Names result;
        for (size_t i = 0; i < written(); ++i) result.emplace_back(services[i].s_service_name);
        return result;
    }

    std::vector<SVL_REC_T> services;
    std::vector<TSL_REC_T> multiplexes;
};

class TelevisionBulkReads : public TelevisionTest {
  protected:
    TelevisionBulkReads() { startWithDemo(); }

    static int32_t byMask(uint32_t channelId, uint32_t mask, uint32_t value, int32_t direction,
                          uint32_t start, uint32_t count, Slots& slots) {
        return a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                SVL_ID_CABLE, 0, channelId, mask, value, 0, 0, direction, start, count,
                slots.services.data(), slots.multiplexes.data());
    }
    static Names part(size_t begin, size_t end) {
        const Names all = names(SVL_ID_CABLE);
        return Names(all.begin() + static_cast<ptrdiff_t>(begin),
                     all.begin() + static_cast<ptrdiff_t>(end));
    }
    static uint32_t cable(size_t place) { return services(SVL_ID_CABLE)[place].ui4_channel_id; }
};

TEST_F(TelevisionBulkReads, ByMaskFromAPlace) {
    Slots slots(20);
    EXPECT_EQ(byMask(0, 0, 0, 0, 3, 4, slots), 4);
    EXPECT_EQ(slots.names(), part(3, 7));
    Slots rest(20);
    EXPECT_EQ(byMask(0, 0, 0, 0, 10, 20, rest), 2);
    EXPECT_EQ(rest.names(), part(10, 12));
    Slots none(2);
    EXPECT_EQ(byMask(0, 0, 0, 0, 12, 2, none), 0);
    EXPECT_EQ(byMask(0, 0, 0, 0, 0xFFFFFFFF, 2, none), 0);
    EXPECT_EQ(none.written(), 0u);
}

TEST_F(TelevisionBulkReads, ByMaskAfterAndBeforeAChannel) {
    Slots after(3);
    EXPECT_EQ(byMask(cable(4), 0, 0, 1, 0, 3, after), 3);
    EXPECT_EQ(after.names(), part(5, 8));
    Slots skipped(3);
    EXPECT_EQ(byMask(cable(4), 0, 0, 0, 2, 3, skipped), 3);
    EXPECT_EQ(skipped.names(), part(7, 10));
    Slots before(3);
    EXPECT_EQ(byMask(cable(4), 0, 0, -1, 1, 3, before), 3);
    EXPECT_EQ(before.names(), (Names{part(2, 3)[0], part(1, 2)[0], part(0, 1)[0]}));
    Slots unknown(3);
    EXPECT_EQ(byMask(99, 0, 0, 1, 0, 3, unknown), TV_NOT_FOUND);
    EXPECT_EQ(unknown.written(), 0u);
}

TEST_F(TelevisionBulkReads, ByMaskOnlyThoseThatMatch) {
    Slots radio(20);
    EXPECT_EQ(byMask(0, SB_VNET_RADIO_SERVICE, SB_VNET_RADIO_SERVICE, 0, 0, 20, radio), 3);
    EXPECT_EQ(radio.names(), (Names{"Jazz Radio", "Volksmusik", "Nyhetsradio"}));
    Slots clear(20);
    EXPECT_EQ(
            byMask(0, SB_VNET_SCRAMBLED | SB_VNET_TV_SERVICE, SB_VNET_TV_SERVICE, 0, 0, 20, clear),
            7);
    Slots nothing(20);
    // A value with bits outside the mask matches nothing.
    EXPECT_EQ(byMask(0, SB_VNET_RADIO_SERVICE, 0xFFFFFFFF, 0, 0, 20, nothing), 0);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_mask(SVL_ID_CABLE, 0, 0, 0, 0, 1, 1, 0, 0,
                                                              20, nothing.services.data(),
                                                              nothing.multiplexes.data()),
              0);
}

TEST_F(TelevisionBulkReads, ByBroadcastType) {
    Slots slots(20);
    uint32_t filled = 77;
    uint32_t total = 77;
    const auto read = [&](uint32_t type, uint32_t start, uint32_t count) {
        return a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
                SVL_ID_CABLE, 0, type, start, count, slots.services.data(),
                slots.multiplexes.data(), &filled, &total);
    };
    EXPECT_EQ(read(BRDCST_TYPE_DVB, 5, 4), TV_OK);
    EXPECT_EQ(filled, 4u);
    EXPECT_EQ(total, 12u);
    EXPECT_EQ(slots.names(), part(5, 9));
    EXPECT_EQ(read(BRDCST_TYPE_UNKNOWN, 11, 4), TV_OK);
    EXPECT_EQ(filled, 1u);
    EXPECT_EQ(read(BRDCST_TYPE_ATSC, 0, 4), TV_OK);
    EXPECT_EQ(filled, 0u);
    EXPECT_EQ(total, 0u);
    EXPECT_EQ(read(BRDCST_TYPE_DVB, 0, 0), TV_OK);
    EXPECT_EQ(filled, 0u);
    EXPECT_EQ(total, 12u);
}

class TelevisionByFilter : public TelevisionBulkReads {
  protected:
    Names read(uint32_t channelId, bool wrap, uint32_t filter, int32_t previous, int32_t next) {
        Slots slots(30);
        EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                          SVL_ID_CABLE, 0, static_cast<int32_t>(channelId), wrap,
                          static_cast<int32_t>(filter), previous, next, slots.services.data(),
                          slots.multiplexes.data(), &mPrevious, &mNext),
                  TV_OK);
        EXPECT_EQ(slots.written(), mPrevious + mNext);
        return slots.names();
    }
    uint32_t mPrevious = 0;
    uint32_t mNext = 0;
};

TEST_F(TelevisionByFilter, PreviousOnesLieFirstBackToBack) {
    EXPECT_EQ(read(cable(5), false, 0, 3, 4), part(2, 9));
    EXPECT_EQ(mPrevious, 3u);
    EXPECT_EQ(mNext, 4u);
}

TEST_F(TelevisionByFilter, EndsOfTheListCut) {
    EXPECT_EQ(read(cable(1), false, 0, 3, 2), part(0, 3));
    EXPECT_EQ(mPrevious, 1u);
    EXPECT_EQ(read(cable(11), false, 0, 1, 5), part(10, 12));
    EXPECT_EQ(mNext, 1u);
    EXPECT_EQ(read(0, false, 0, 2, 2), part(0, 2));
    EXPECT_EQ(mPrevious, 0u);
}

TEST_F(TelevisionByFilter, WrapsAroundTheRing) {
    Names expected = part(10, 12);
    const Names start = part(0, 3);
    expected.insert(expected.end(), start.begin(), start.end());
    EXPECT_EQ(read(cable(0), true, 0, 2, 3), expected);
    expected = part(11, 12);
    expected.push_back(part(0, 1).front());
    EXPECT_EQ(read(cable(11), true, 0, 0, 2), expected);
}

TEST_F(TelevisionByFilter, NoChannelComesTwice) {
    const Names all = read(cable(3), true, 0, 8, 9);
    EXPECT_EQ(all.size(), 12u);
    EXPECT_EQ(mNext, 9u);
    EXPECT_EQ(mPrevious, 3u);
    Names sorted = all;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(std::unique(sorted.begin(), sorted.end()), sorted.end());
}

TEST_F(TelevisionByFilter, OnlyThoseThatPass) {
    EXPECT_EQ(read(0, false, SB_VNET_RADIO_SERVICE, 0, 10),
              (Names{"Jazz Radio", "Volksmusik", "Nyhetsradio"}));
    EXPECT_EQ(read(0, true, SB_VNET_RADIO_SERVICE | SB_VNET_TV_SERVICE, 3, 3), Names());
    // The channel itself need not match: the next one that does comes first.
    EXPECT_EQ(read(cable(2), false, SB_VNET_RADIO_SERVICE, 1, 1), (Names{"Jazz Radio"}));
}

TEST_F(TelevisionBulkReads, HostileArgumentsWriteNothing) {
    uint32_t one = 77;
    uint32_t two = 77;
    Slots slots(4);
    SVL_REC_T* const services = slots.services.data();
    TSL_REC_T* const multiplexes = slots.multiplexes.data();
    auto* const failedServices = static_cast<SVL_REC_T*>(MAP_FAILED);
    auto* const failedMultiplexes = static_cast<TSL_REC_T*>(MAP_FAILED);
    struct Bases {
        SVL_REC_T* services;
        TSL_REC_T* multiplexes;
    };
    for (const Bases& bases :
         {Bases{nullptr, multiplexes}, Bases{services, nullptr}, Bases{failedServices, multiplexes},
          Bases{services, failedMultiplexes}, Bases{nullptr, nullptr},
          Bases{failedServices, failedMultiplexes}}) {
        EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                          1, 0, 0, 0, 0, 0, 0, 0, 0, 4, bases.services, bases.multiplexes),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
                          1, 0, 0, 0, 4, bases.services, bases.multiplexes, &one, &two),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                          1, 0, 0, true, 0, 2, 2, bases.services, bases.multiplexes, &one, &two),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_favorite_list_get_svl_tsl_rec_by_index(1, 0, 0, 0, 0, bases.services,
                                                                    bases.multiplexes),
                  TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_mask(1, 0, 0, 0, 0, 0, 0, 0, 0, 0xFFFFFFFF,
                                                              services, multiplexes),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
                      1, 0, 0, 0, 0xFFFFFFFF, services, multiplexes, &one, &two),
              TV_INVALID_ARGUMENT);
    struct Counts {
        int32_t previous;
        int32_t next;
    };
    // The service adds the two, and its sum may overflow: the television must check both itself.
    for (const Counts& counts : {Counts{-1, 5}, Counts{5, -1}, Counts{INT32_MAX, INT32_MAX},
                                 Counts{INT32_MIN, 0}, Counts{10'845'879, 0}}) {
        EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                          1, 0, 0, true, 0, counts.previous, counts.next, services, multiplexes,
                          &one, &two),
                  TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(slots.written(), 0u);
    EXPECT_EQ(one, 77u);
    EXPECT_EQ(two, 77u);
}

TEST_F(TelevisionBulkReads, CountOfNothingNeedsNoMemory) {
    uint32_t one = 77;
    uint32_t two = 77;
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_mask(1, 0, 0, 0, 0, 0, 0, 0, 0, 0, nullptr,
                                                              nullptr),
              0);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_filter(1, 0, 0, true, 0, 0, 0, nullptr,
                                                                nullptr, &one, &two),
              TV_OK);
    EXPECT_EQ(one + two, 0u);
}

TEST_F(TelevisionBulkReads, UnknownLists) {
    Slots slots(2);
    uint32_t one = 0;
    for (const uint32_t list : {0u, 4u, 65537u, 0xFFFFFFFFu}) {
        EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_mask(list, 0, 0, 0, 0, 0, 0, 0, 0, 2,
                                                                  slots.services.data(),
                                                                  slots.multiplexes.data()),
                  TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                          static_cast<int32_t>(list), 0, 0, true, 0, 1, 1, slots.services.data(),
                          slots.multiplexes.data(), &one, &one),
                  TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_channellist_get_number_by_filter(list, 0), TV_NOT_FOUND);
    }
    EXPECT_EQ(slots.written(), 0u);
}

}  // namespace
