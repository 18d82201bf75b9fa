// Reading many records at once into memory that the client shares.
#include <algorithm>
#include <cstring>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** No list is longer, since record ids have 16 bits. Requests for more are refused. */
constexpr uint32_t kMostRecords = 65535;

/** Fills the two arrays of a bulk read: a service and its multiplex in each slot. */
class Slots {
  public:
    Slots(const ChannelList& list, SVL_REC_T* services, TSL_REC_T* multiplexes)
        : mList(list), mServices(services), mMultiplexes(multiplexes) {}

    void add(const SVL_REC_T& record) {
        const TSL_REC_T* multiplex = mList.multiplex(record.ui2_tsl_rec_id);
        copy(mServices + mFilled, &record, sizeof(record));
        copy(mMultiplexes + mFilled, multiplex == nullptr ? &kNoMultiplex : multiplex,
             sizeof(*multiplex));
        ++mFilled;
    }
    uint32_t filled() const { return mFilled; }

  private:
    static constexpr TSL_REC_T kNoMultiplex = {};

    /** Not inlined: for records of this size the C library's memcpy is faster than the code that
     * the compiler generates in its place. */
    __attribute__((noinline)) static void copy(void* to, const void* from, size_t size) {
        std::memcpy(to, from, size);
    }

    const ChannelList& mList;
    SVL_REC_T* const mServices;
    TSL_REC_T* const mMultiplexes;
    uint32_t mFilled = 0;
};

/** Returns whether `count` slots of the two arrays can be written. */
bool usable(uint64_t count, const SVL_REC_T* services, const TSL_REC_T* multiplexes) {
    return count <= kMostRecords && (count == 0 || (writable(services) && writable(multiplexes)));
}

/** Reads at most `count` matching services after a channel, or before it, without the first `skip`;
 * with `channelId` 0 from the start. Returns how many. */
int32_t readByMask(const ChannelList& list, const Match& match, uint32_t channelId, bool forward,
                   uint32_t skip, uint32_t count, Slots& slots) {
    const auto& services = list.services;
    const auto take = [&](const Service& service) {
        if (!match(service.record)) return;
        if (skip > 0) {
            --skip;
        } else {
            slots.add(service.record);
        }
    };
    size_t begin = 0;
    if (channelId != 0) {
        const auto place = list.placeOf(channelId);
        if (!place) return TV_NOT_FOUND;
        if (!forward) {
            for (size_t i = *place; i > 0 && slots.filled() < count; --i) take(services[i - 1]);
            return static_cast<int32_t>(slots.filled());
        }
        begin = *place + 1;
    }
    for (size_t i = begin; i < services.size() && slots.filled() < count; ++i) take(services[i]);
    return static_cast<int32_t>(slots.filled());
}

/** Reads at most `count` services of a broadcast type (0: any) from the `start`-th on. */
int32_t readByBroadcastType(const ChannelList& list, uint32_t type, uint32_t start, uint32_t count,
                            Slots& slots, uint32_t* filled, uint32_t* total) {
    uint32_t matching = 0;
    for (const Service& service : list.services) {
        if (type != BRDCST_TYPE_UNKNOWN && service.record.ui1_brdcst_type != type) continue;
        if (matching >= start && slots.filled() < count) slots.add(service.record);
        ++matching;
    }
    put(filled, slots.filled());
    put(total, matching);
    return TV_OK;
}

/** How many channels to write before a place and from it on. */
struct Window {
    size_t previous;
    size_t next;
};

/** Returns the part of the wanted window that a run of `size` channels has around a place; with
 * `wrap` the run continues at its other end, but no channel comes twice. */
Window windowAt(size_t place, size_t size, bool wrap, size_t previous, size_t next) {
    if (wrap) {
        next = std::min(next, size);
        return {std::min(previous, size - next), next};
    }
    return {std::min(previous, place), std::min(next, size - place)};
}

/** Reads the matching services around a channel: `previous` before it, `next` from it on. */
int32_t readByFilter(const ChannelList& list, const Match& match, uint32_t channelId, bool wrap,
                     size_t previous, size_t next, Slots& slots, uint32_t* previousFilled,
                     uint32_t* nextFilled) {
    size_t start = 0;
    if (channelId != 0) {
        const auto found = list.placeOf(channelId);
        if (!found) return TV_NOT_FOUND;
        start = *found;
    }
    std::vector<const SVL_REC_T*> run;
    size_t place = 0;  // in the run: of the channel, or of the first match after it
    for (size_t i = 0; i < list.services.size(); ++i) {
        if (i == start) place = run.size();
        if (match(list.services[i].record)) run.push_back(&list.services[i].record);
    }
    const Window window = windowAt(place, run.size(), wrap, previous, next);
    const size_t first = place + run.size() - window.previous;
    for (size_t i = 0; i < window.previous + window.next; ++i) {
        slots.add(*run[(first + i) % run.size()]);
    }
    put(previousFilled, window.previous);
    put(nextFilled, window.next);
    return TV_OK;
}

}  // namespace

void plugChannelBulkReads(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_mask>(
            [&core](uint32_t listId, uint32_t, uint32_t channelId, uint32_t mask, uint32_t value,
                    uint32_t attributeMask, uint32_t attributeValue, int32_t direction,
                    uint32_t start, uint32_t count, SVL_REC_T* services, TSL_REC_T* multiplexes) {
                if (!usable(count, services, multiplexes)) return int32_t{TV_INVALID_ARGUMENT};
                return core.read([&](const ChannelLists& lists) -> int32_t {
                    const ChannelList* list = lists.list(listId);
                    if (list == nullptr) return TV_NOT_FOUND;
                    Slots slots(*list, services, multiplexes);
                    const Match match{mask, value, attributeMask, attributeValue};
                    return readByMask(*list, match, channelId, direction >= 0, start, count, slots);
                });
            });
    board.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type>(
            [&core](uint32_t listId, uint32_t, uint32_t type, uint32_t start, uint32_t count,
                    SVL_REC_T* services, TSL_REC_T* multiplexes, uint32_t* filled,
                    uint32_t* total) {
                if (!usable(count, services, multiplexes)) return int32_t{TV_INVALID_ARGUMENT};
                return core.read([&](const ChannelLists& lists) -> int32_t {
                    const ChannelList* list = lists.list(listId);
                    if (list == nullptr) return TV_NOT_FOUND;
                    Slots slots(*list, services, multiplexes);
                    return readByBroadcastType(*list, type, start, count, slots, filled, total);
                });
            });
    board.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_filter>(
            [&core](int32_t listId, int32_t, int32_t channelId, bool wrap, int32_t filter,
                    int32_t previous, int32_t next, SVL_REC_T* services, TSL_REC_T* multiplexes,
                    uint32_t* previousFilled, uint32_t* nextFilled) {
                if (previous < 0 || next < 0) return int32_t{TV_INVALID_ARGUMENT};
                const uint64_t count = uint64_t(previous) + uint64_t(next);
                if (!usable(count, services, multiplexes)) return int32_t{TV_INVALID_ARGUMENT};
                return core.read([&](const ChannelLists& lists) -> int32_t {
                    const ChannelList* list = lists.list(static_cast<uint32_t>(listId));
                    if (list == nullptr) return TV_NOT_FOUND;
                    Slots slots(*list, services, multiplexes);
                    return readByFilter(*list, Match::filter(static_cast<uint32_t>(filter)),
                                        static_cast<uint32_t>(channelId), wrap,
                                        static_cast<size_t>(previous), static_cast<size_t>(next),
                                        slots, previousFilled, nextFilled);
                });
            });
}

}  // namespace television
