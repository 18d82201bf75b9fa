#include "television/settings/time_settings.h"

#include <charconv>
#include <string>

#include "middleware/result_codes.h"
#include "middleware/time.h"
#include "television/base/calendar.h"
#include "television/core/core.h"

namespace television {
namespace {

// The names under which the core remembers the settings.
constexpr char kSourceName[] = "time.source";
constexpr char kZoneName[] = "time.zone";      ///< seconds east of UTC
constexpr char kOffsetName[] = "time.offset";  ///< seconds east of UTC
constexpr char kLeadName[] = "time.lead";      ///< the user's time less the machine's, milliseconds

/** The latest time that can be set: the end of the year 9999. */
constexpr int64_t kLatestTime = daysFromDate({10000, 1, 1}) * kSecondsOfDay - 1;
/** Seconds; no place on earth is further from UTC. */
constexpr int64_t kFurthestOffset = 15 * 3600;

bool isSource(int32_t source) {
    return source >= 0 && source <= TIME_SYNC_SOURCE_USER;
}

bool isOffset(int64_t seconds) {
    return seconds >= -kFurthestOffset && seconds <= kFurthestOffset;
}

void rememberLead(Core& core) {
    const auto lead = core.clock.userLead();
    if (lead) core.remember(kLeadName, std::to_string(*lead));
}

}  // namespace

TimeSettings::TimeSettings(Core& core) : mCore(core), mClock(core.clock) {
    mClock.setZone(mCore.rememberedNumber(kZoneName, 0));
    mClock.setOffset(mCore.rememberedNumber(kOffsetName, mClock.offset()));
    const std::string lead = mCore.remembered(kLeadName);
    int64_t milliseconds = 0;
    const auto read = std::from_chars(lead.data(), lead.data() + lead.size(), milliseconds);
    if (!lead.empty() && read.ec == std::errc()) mClock.setUserLead(milliseconds);
    const int32_t source = mCore.rememberedNumber(kSourceName, TIME_SYNC_SOURCE_BROADCAST);
    if (isSource(source)) mClock.setSource(static_cast<uint32_t>(source));
}

bool TimeSettings::timeEditable() const {
    return mClock.source() == TIME_SYNC_SOURCE_USER;
}

bool TimeSettings::offsetEditable() const {
    return mClock.source() != TIME_SYNC_SOURCE_BROADCAST;
}

int32_t TimeSettings::setTime(int64_t seconds) {
    if (seconds < 0 || seconds > kLatestTime) return TV_INVALID_ARGUMENT;
    if (!timeEditable()) return TV_BUSY;
    mClock.setUserTime(seconds * 1000);
    rememberLead(mCore);
    return TV_OK;
}

int32_t TimeSettings::setZone(int64_t seconds) {
    if (!isOffset(seconds)) return TV_INVALID_ARGUMENT;
    if (!offsetEditable()) return TV_BUSY;
    mClock.setZone(static_cast<int32_t>(seconds));
    mCore.rememberNumber(kZoneName, static_cast<int32_t>(seconds));
    mCore.rememberNumber(kOffsetName, static_cast<int32_t>(seconds));
    return TV_OK;
}

int32_t TimeSettings::setOffset(int64_t seconds) {
    if (!isOffset(seconds)) return TV_INVALID_ARGUMENT;
    if (!offsetEditable()) return TV_BUSY;
    mClock.setOffset(static_cast<int32_t>(seconds));
    mCore.rememberNumber(kOffsetName, static_cast<int32_t>(seconds));
    return TV_OK;
}

int32_t setTimeSource(Core& core, int32_t source, int32_t updateFlag) {
    if (!isSource(source)) return TV_INVALID_ARGUMENT;
    const auto wanted = static_cast<uint32_t>(source);
    if (wanted == core.clock.source()) return TV_OK;
    core.clock.setSource(wanted);
    core.rememberNumber(kSourceName, source, updateFlag);
    rememberLead(core);
    core.notifier.post({registration<&a_qortvapi_time_register_sync_source_callback>(),
                        SYNC_SOURCE_NFY_CHANGED,
                        {wanted, 0, 0, 0}});
    return TV_OK;
}

}  // namespace television
