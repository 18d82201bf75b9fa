#include "television/viewing/ratings.h"

#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/stream/dvb_text.h"

namespace television {

Guide::EventPointer currentProgramme(const Core& core) {
    const uint32_t channelId =
            core.read([](const ChannelLists& lists) { return lists.current[0]; });
    return channelId == 0 ? nullptr : core.guide.presentEvent(channelId, core.clock.utcSeconds());
}

bool ratingBlocks(const Core& core, const GuideEvent& event) {
    if (core.rememberedNumber(kRatingsOn, 1) == 0) return false;
    const uint8_t age = event.minimumAge();
    if (age == 0) return core.rememberedNumber(kUnratedBlocked, 0) != 0;
    const int32_t allowed = core.rememberedNumber(kAgeAllowed, 0);
    return allowed > 0 && age > allowed;
}

int32_t putRatingMap(const GuideEvent& event, RATING_MAP_T* to) {
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    const uint8_t age = event.minimumAge();
    for (const EventRating& rating : event.ratings) {
        if (age == 0 || rating.minimumAge != age) continue;
        copyText(to->s_region, rating.country);
        copyText(to->s_dimension, "DVB");
        copyText(to->s_rating, "age " + std::to_string(age));
        return TV_OK;
    }
    return TV_NOT_FOUND;
}

}  // namespace television
