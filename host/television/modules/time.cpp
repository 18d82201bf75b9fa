// Date, time and sleep timer.
#include <memory>

#include "middleware/result_codes.h"
#include "middleware/time.h"
#include "television/base/calendar.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/date_time.h"
#include "television/modules/modules.h"
#include "television/settings/time_settings.h"
#include "television/viewing/sleep_timer.h"

namespace television {
namespace {

int32_t putRecord(DTG_T* to, const std::optional<DTG_T>& record) {
    if (!writable(to) || !record) return TV_INVALID_ARGUMENT;
    *to = *record;
    return TV_OK;
}

/** Reads a client's record as seconds since 1970; empty when there is none, or no such time. */
std::optional<int64_t> readRecord(const DTG_T* record) {
    if (!writable(record)) return std::nullopt;
    return secondsOf(*record);
}

/** Returns the digits of a text that has exactly the form of `form`, in which 0 stands for any
 * digit; empty when it has not. */
std::optional<std::string> digitsOf(const char* text, const std::string& form) {
    const auto read = readText(text, form.size() + 1);
    if (!read || read->size() != form.size()) return std::nullopt;
    std::string digits;
    for (size_t i = 0; i < form.size(); ++i) {
        const char c = (*read)[i];
        if (form[i] != '0' ? c != form[i] : c < '0' || c > '9') return std::nullopt;
        if (form[i] == '0') digits += c;
    }
    return digits;
}

/** Reads a date "YYYY-MM-DD" and a time "HH:MM:SS". */
std::optional<DTG_T> readDateTime(const char* date, const char* time) {
    const auto days = digitsOf(date, "0000-00-00");
    const auto hours = digitsOf(time, "00:00:00");
    if (!days || !hours) return std::nullopt;
    const auto number = [](const std::string& digits, size_t at, size_t count) {
        return static_cast<unsigned>(std::stoul(digits.substr(at, count)));
    };
    DTG_T record = {};
    record.ui2_year = static_cast<uint16_t>(number(*days, 0, 4));
    record.ui1_month = static_cast<uint8_t>(number(*days, 4, 2));
    record.ui1_day = static_cast<uint8_t>(number(*days, 6, 2));
    record.ui1_hour = static_cast<uint8_t>(number(*hours, 0, 2));
    record.ui1_minute = static_cast<uint8_t>(number(*hours, 2, 2));
    record.ui1_second = static_cast<uint8_t>(number(*hours, 4, 2));
    return record;
}

int32_t setLocalTime(TimeSettings& settings, const Clock& clock, const char* date,
                     const char* time) {
    const auto record = readDateTime(date, time);
    const auto local = record ? secondsOf(*record) : std::nullopt;
    if (!local) return TV_INVALID_ARGUMENT;
    return settings.setTime(clock.utcFromLocal(*local, false));
}

std::optional<DTG_T> localOf(const Clock& clock, int64_t utc) {
    return localRecord(utc, clock.offsetAt(utc));
}

/** Converts a record from UTC to local time, or from local time to UTC. */
int32_t convert(const Clock& clock, bool toLocal, const DTG_T* from, DTG_T* to) {
    const auto seconds = readRecord(from);
    if (!seconds) return TV_INVALID_ARGUMENT;
    if (toLocal) return putRecord(to, localOf(clock, *seconds));
    return putRecord(to, utcRecord(clock.utcFromLocal(*seconds, from->b_dst != 0)));
}

int64_t recordSeconds(const DTG_T* record) {
    return readRecord(record).value_or(TIME_NO_SUCH_TIME);
}

void plugClock(switchboard::Switchboard& board, Core& core) {
    const Clock& clock = core.clock;
    const auto settings = std::make_shared<TimeSettings>(core);
    board.on<&a_qortvapi_time_get_utc_time>([&clock](uint16_t* source) {
        put(source, clock.sourceInForce());
        return clock.utcSeconds();
    });
    board.on<&a_qortvapi_time_get_broadcast_time_ex>([&clock](DTG_T* record) -> int64_t {
        const auto milliseconds = clock.broadcastMilliseconds();
        if (!milliseconds) return TV_NOT_FOUND;
        const int64_t seconds = floorDivide(*milliseconds, 1000);
        putRecord(record, utcRecord(seconds));
        return seconds;
    });
    board.on<&a_qortvapi_time_get_brdcst_raw_data>([&clock](DT_BRDCST_STATUS_T* to) -> uint32_t {
        if (!writable(to)) return static_cast<uint32_t>(TV_INVALID_ARGUMENT);
        const BroadcastTime received = clock.received();
        DT_BRDCST_STATUS_T status = {};
        status.b_tdt_received = received.tdt ? 1 : 0;
        status.b_tot_received = received.tot ? 1 : 0;
        status.i8_utc = received.utc;
        status.i8_next_change = received.nextChange;
        status.i4_offset = received.offset;
        status.i4_next_offset = received.nextOffset;
        *to = status;
        return TV_OK;
    });
    board.on<&a_qortvapi_time_has_received_tot>(
            [&clock]() -> int32_t { return clock.received().tot ? 1 : 0; });
    board.on<&a_qortvapi_time_set_utc_time>(
            [=](int64_t seconds) { return settings->setTime(seconds); });
    board.on<&a_qortvapi_time_update_local_time>([=, &clock](const char* date, const char* time) {
        return setLocalTime(*settings, clock, date, time);
    });
    board.on<&a_qortvapi_time_is_time_editable>(
            [=]() -> int32_t { return settings->timeEditable() ? 1 : 0; });
    board.on<&a_qortvapi_time_get_time_zone>([&clock] { return int64_t{clock.zone()}; });
    board.on<&a_qortvapi_time_set_time_zone>(
            [=](int64_t seconds) { return settings->setZone(seconds); });
    board.on<&a_qortvapi_time_is_time_zone_editable>(
            [=]() -> int32_t { return settings->offsetEditable() ? 1 : 0; });
    board.on<&a_qortvapi_time_get_time_offset>(
            [&clock] { return int64_t{clock.offsetAt(clock.utcSeconds()).seconds}; });
    board.on<&a_qortvapi_time_set_time_offset>(
            [=](int64_t seconds) { return settings->setOffset(seconds); });
    board.on<&a_qortvapi_time_is_time_offset_editable>(
            [=]() -> int32_t { return settings->offsetEditable() ? 1 : 0; });
    board.on<&a_qortvapi_time_get_sync_source>([&clock](uint32_t* source) -> int32_t {
        if (!writable(source)) return TV_INVALID_ARGUMENT;
        *source = clock.source();
        return TV_OK;
    });
    board.on<&a_qortvapi_time_set_sync_source>([&core](uint32_t source) {
        return setTimeSource(core, static_cast<int32_t>(source), 0);
    });
}

void plugConversions(switchboard::Switchboard& board, const Clock& clock) {
    board.on<&a_qortvapi_utc_sec_to_dtg>([](int64_t seconds, DTG_T* record) {
        return static_cast<uint32_t>(putRecord(record, utcRecord(seconds)));
    });
    board.on<&a_qortvapi_time_convert>(
            [&clock](uint16_t conversion, const DTG_T* from, DTG_T* to) -> uint32_t {
                if (conversion > TIME_CONVERT_LOCAL_TO_UTC) {
                    return static_cast<uint32_t>(TV_INVALID_ARGUMENT);
                }
                const bool toLocal = conversion == TIME_CONVERT_UTC_TO_LOCAL;
                return static_cast<uint32_t>(convert(clock, toLocal, from, to));
            });
    board.on<&a_qortvapi_time_convert_millis_to_local_time>(
            [&clock](int64_t milliseconds, DTG_T* record) {
                return putRecord(record, localOf(clock, floorDivide(milliseconds, 1000)));
            });
    board.on<&a_qortvapi_time_convert_local_time_to_millis>(
            [&clock](const DTG_T* record, int64_t* milliseconds) -> int32_t {
                const auto local = readRecord(record);
                if (!local || !writable(milliseconds)) return TV_INVALID_ARGUMENT;
                *milliseconds = clock.utcFromLocal(*local, record->b_dst != 0) * 1000;
                return TV_OK;
            });
    board.on<&a_qortvapi_dtg_to_sec>([](const DTG_T* record) { return recordSeconds(record); });
}

/** The date and time functions of the client library (c_dt_…). */
void plugLibrary(switchboard::Switchboard& board, const Clock& clock) {
    board.on<&c_dt_utc_sec_to_loc_dtg>([&clock](int64_t seconds, DTG_T* record) {
        return putRecord(record, localOf(clock, seconds));
    });
    board.on<&c_dt_get_utc>([&clock](uint16_t* source, int32_t* milliseconds) {
        const int64_t now = clock.utcMilliseconds();
        const int64_t seconds = floorDivide(now, 1000);
        put(source, clock.sourceInForce());
        put(milliseconds, now - seconds * 1000);
        return seconds;
    });
    board.on<&c_dt_conv_utc_local>([&clock](const DTG_T* from, DTG_T* to) -> int32_t {
        if (!writable(from)) return TV_INVALID_ARGUMENT;
        return convert(clock, from->b_gmt != 0, from, to);
    });
    board.on<&c_dt_mjd_to_dtg>([](uint32_t mjd, DTG_T* record) {
        return putRecord(record, utcRecord((int64_t{mjd} - kMjdOfEpoch) * kSecondsOfDay));
    });
    board.on<&c_dt_dtg_to_sec>([](const DTG_T* record) { return recordSeconds(record); });
    board.on<&c_dt_dtg_to_mjd_bcd>([](const DTG_T* record, uint16_t* mjd, uint16_t* hoursMinutes,
                                      uint8_t* seconds) -> int32_t {
        const auto time = readRecord(record);
        if (!time) return TV_INVALID_ARGUMENT;
        const int64_t days = floorDivide(*time, kSecondsOfDay);
        if (days + kMjdOfEpoch < 0 || days + kMjdOfEpoch > UINT16_MAX) return TV_INVALID_ARGUMENT;
        const uint32_t digits = bcdFromSeconds(static_cast<uint32_t>(*time - days * kSecondsOfDay));
        put(mjd, days + kMjdOfEpoch);
        put(hoursMinutes, digits >> 8);
        put(seconds, digits & 0xFF);
        return TV_OK;
    });
}

void plugSleepTimer(switchboard::Switchboard& board, Core& core) {
    const auto timer = std::make_shared<SleepTimer>(core.clock, core.notifier);
    core.notifier.onTick([timer] { timer->tick(); });
    board.on<&a_qortvapi_time_get_sleep_timer>([=] { return timer->minutes(); });
    board.on<&a_qortvapi_time_get_sleep_timer_reverse>([=] { return timer->step(); });
    board.on<&a_qortvapi_time_set_sleep_timer>(
            [=](int32_t minutes) { return timer->set(minutes); });
    board.on<&a_qortvapi_time_get_sleep_timer_remaining_time>([=](uint32_t* seconds) -> int32_t {
        if (!writable(seconds)) return TV_INVALID_ARGUMENT;
        *seconds = timer->remaining();
        return TV_OK;
    });
}

}  // namespace

void plugTime(switchboard::Switchboard& board, Core& core) {
    plugClock(board, core);
    plugConversions(board, core.clock);
    plugLibrary(board, core.clock);
    plugSleepTimer(board, core);
    core.notifier.onTick([&core] {
        const auto now = static_cast<uint32_t>(core.clock.utcSeconds());
        core.notifier.post({registration<&a_qortvapi_time_register_dt_event_callback>(),
                            TIME_NFY_SECOND,
                            {now, 0, 0, 0}});
    });
}

}  // namespace television
