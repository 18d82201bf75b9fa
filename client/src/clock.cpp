#include "qortv/clock.h"

#include <cstdio>
#include <utility>

#include "middleware/result_codes.h"
#include "middleware/time.h"
#include "result.h"

namespace qortv {

namespace {

using vendor::corvanta::tv::qortvapi::V1_0::HIDL_DT_BRDCST_STATUS_T;
using vendor::corvanta::tv::qortvapi::V1_0::HIDL_DTG_T;

TimeSource toTimeSource(uint32_t source) {
    switch (source) {
        case TIME_SYNC_SOURCE_BROADCAST:
            return TimeSource::kBroadcast;
        case TIME_SYNC_SOURCE_SYSTEM:
            return TimeSource::kSystem;
        case TIME_SYNC_SOURCE_USER:
            return TimeSource::kUser;
        default:
            return TimeSource::kUnknown;
    }
}

}  // namespace

const char* name(TimeSource source) {
    switch (source) {
        case TimeSource::kBroadcast:
            return "broadcast";
        case TimeSource::kSystem:
            return "system";
        case TimeSource::kUser:
            return "user";
        case TimeSource::kUnknown:
            break;
    }
    return "unknown";
}

std::string dateOf(const LocalTime& time) {
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", time.year, time.month, time.day);
    return text;
}

std::string timeOf(const LocalTime& time) {
    char text[40];
    std::snprintf(text, sizeof text, "%02d:%02d", time.hour, time.minute);
    return text;
}

Clock::Clock(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

int64_t Clock::utc() {
    int64_t utc = 0;
    check(mProxy->a_hidl_a_qortvapi_time_get_utc_time(
                  0, [&](uint16_t, int64_t seconds) { utc = seconds; }),
          "get_utc_time");
    return utc;
}

LocalTime Clock::local(int64_t utc) {
    LocalTime local;
    int32_t result = TV_FAILED;
    check(mProxy->a_hidl_c_dt_utc_sec_to_loc_dtg(
                  utc, HIDL_DTG_T{},
                  [&](const HIDL_DTG_T& time, int32_t code) {
                      result = code;
                      local = {time.year, time.month,  time.day,    time.day_of_week,
                               time.hour, time.minute, time.second, time.dst != 0};
                  }),
          "utc_sec_to_loc_dtg");
    checkResult(result, "tell the local time of ", utc);
    return local;
}

ClockState Clock::state() {
    ClockState state;
    check(mProxy->a_hidl_a_qortvapi_time_get_utc_time(0,
                                                      [&](uint16_t source, int64_t seconds) {
                                                          state.source = toTimeSource(source);
                                                          state.utc = seconds;
                                                      }),
          "get_utc_time");
    int32_t result = TV_FAILED;
    check(mProxy->a_hidl_a_qortvapi_time_get_sync_source([&](uint32_t source, int32_t code) {
        result = code;
        state.follows = toTimeSource(source);
    }),
          "get_sync_source");
    checkResult(result, "tell what the clock follows");
    state.zone = static_cast<int32_t>(
            valueOf(mProxy->a_hidl_a_qortvapi_time_get_time_zone(), "get_time_zone"));
    state.offset = static_cast<int32_t>(
            valueOf(mProxy->a_hidl_a_qortvapi_time_get_time_offset(), "get_time_offset"));
    state.totReceived =
            valueOf(mProxy->a_hidl_a_qortvapi_time_has_received_tot(), "has_received_tot");
    check(mProxy->a_hidl_a_qortvapi_time_get_brdcst_raw_data(
                  HIDL_DT_BRDCST_STATUS_T{},
                  [&](const HIDL_DT_BRDCST_STATUS_T& status, uint32_t code) {
                      if (static_cast<int32_t>(code) < 0 || !status.tdt_received) return;
                      state.broadcastUtc = status.utc;
                  }),
          "get_brdcst_raw_data");
    return state;
}

}  // namespace qortv
