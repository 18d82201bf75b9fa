// The browser of recordings: what is known of each, by index and by path.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "middleware/mmp.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/recording/local_texts.h"
#include "television/recording/personal_video_recorder.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

// Bytes of the clients' buffers.
constexpr uint32_t kNameRoom = 257;
constexpr uint32_t kDateRoom = 16;
constexpr uint32_t kWeekDayRoom = 6;
/** Returns a time in the 32 bits that the function has for it. */
int32_t shortTime(int64_t seconds) {
    return static_cast<int32_t>(std::clamp<int64_t>(seconds, INT32_MIN, INT32_MAX));
}

// The properties of a recording that can be read.
uint32_t channelIdOf(const RecordingInfo& info) {
    return info.channelId;
}
int32_t majorOf(const RecordingInfo& info) {
    return info.channelNumber;
}
int32_t minorOf(const RecordingInfo&) {
    return 0;
}
uint32_t durationOf(const RecordingInfo& info) {
    return info.duration;
}
int32_t stopReasonOf(const RecordingInfo& info) {
    return info.stopReason;
}
int32_t startTimeOf(const RecordingInfo& info) {
    return shortTime(info.startTime);
}
int32_t ratingOf(const RecordingInfo& info) {
    return info.rating;
}
int32_t retentionOf(const RecordingInfo& info) {
    return info.retention;
}
std::string pathOf(const RecordingInfo& info) {
    return info.path;
}
std::string channelNameOf(const RecordingInfo& info) {
    return info.channelName;
}
std::string programNameOf(const RecordingInfo& info) {
    return info.programName;
}
LocalTexts localOf(const RecordingInfo& info) {
    return localTexts(info.startTime, info.localOffset);
}
std::string dateOf(const RecordingInfo& info) {
    return localOf(info).date;
}
std::string timeOf(const RecordingInfo& info) {
    return localOf(info).time;
}
std::string weekDayOf(const RecordingInfo& info) {
    return localOf(info).weekDay;
}

PVR_BROWSER_ITEM_T itemOf(const RecordingInfo& info) {
    PVR_BROWSER_ITEM_T item = {};
    item.ui4_channel_id = info.channelId;
    item.i4_channel_major = info.channelNumber;
    item.ui4_duration = info.duration;
    item.i8_start_time = info.startTime;
    item.ui8_size = info.size;
    item.i4_stop_reason = info.stopReason;
    item.i4_first_rating = info.rating;
    item.i4_retention = info.retention;
    item.ui1_recording = info.recording ? 1 : 0;
    const LocalTexts local = localOf(info);
    copyText(item.s_path, info.path);
    copyText(item.s_channel_name, info.channelName);
    copyText(item.s_program_name, info.programName);
    copyText(item.s_date, local.date);
    copyText(item.s_time, local.time);
    copyText(item.s_week_day, local.weekDay);
    return item;
}

std::optional<RecordingInfo> byPath(const RecordingLibrary& library, const char* path) {
    const auto text = readText(path, kLongestPath);
    return text ? library.byPath(*text) : std::nullopt;
}

/** Plugs a function that reads a number or a record by index. */
template <auto Function, auto Read>
void valueByIndex(switchboard::Switchboard& board, const RecordingLibrary& library) {
    board.on<Function>([&library](int32_t index, auto* value) -> int32_t {
        if (!writable(value)) return TV_INVALID_ARGUMENT;
        const auto info = library.at(index);
        if (!info) return TV_NOT_FOUND;
        put(value, Read(*info));
        return TV_OK;
    });
}

/** The same by path. */
template <auto Function, auto Read>
void valueByPath(switchboard::Switchboard& board, const RecordingLibrary& library) {
    board.on<Function>([&library](const char* path, auto* value) -> int32_t {
        if (!writable(value) || path == nullptr) return TV_INVALID_ARGUMENT;
        const auto info = byPath(library, path);
        if (!info) return TV_NOT_FOUND;
        put(value, Read(*info));
        return TV_OK;
    });
}

/** Plugs a function that reads a text by index into a buffer of `Room` bytes. */
template <auto Function, auto Read, uint32_t Room = kNameRoom>
void textByIndex(switchboard::Switchboard& board, const RecordingLibrary& library) {
    board.on<Function>([&library](int32_t index, char* text) -> int32_t {
        if (!writable(text)) return TV_INVALID_ARGUMENT;
        const auto info = library.at(index);
        return info ? putText(text, Room, Read(*info)) : int32_t{TV_NOT_FOUND};
    });
}

/** The same by path; all these buffers have kNameRoom bytes. */
template <auto Function, auto Read>
void textByPath(switchboard::Switchboard& board, const RecordingLibrary& library) {
    board.on<Function>([&library](const char* path, char* text) -> int32_t {
        if (!writable(text) || path == nullptr) return TV_INVALID_ARGUMENT;
        const auto info = byPath(library, path);
        return info ? putText(text, kNameRoom, Read(*info)) : int32_t{TV_NOT_FOUND};
    });
}

void plugReadsByIndex(switchboard::Switchboard& board, const RecordingLibrary& library) {
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_channelid_by_index, channelIdOf>(board, library);
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_index, majorOf>(board,
                                                                                       library);
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_index, minorOf>(board,
                                                                                       library);
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_duration_by_index, durationOf>(board, library);
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_stop_reason_by_index, stopReasonOf>(board,
                                                                                     library);
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_start_time_by_index, startTimeOf>(board, library);
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_first_rating_by_index, ratingOf>(board, library);
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_retention_by_index, retentionOf>(board, library);
    valueByIndex<&a_qortvapi_mmp_get_pvr_browser_item_by_index, itemOf>(board, library);
    textByIndex<&a_qortvapi_mmp_get_pvr_browser_item_path_by_index, pathOf>(board, library);
    textByIndex<&a_qortvapi_mmp_get_pvr_browser_channelname_by_index, channelNameOf>(board,
                                                                                     library);
    textByIndex<&a_qortvapi_mmp_get_pvr_browser_programname_by_index, programNameOf>(board,
                                                                                     library);
    textByIndex<&a_qortvapi_mmp_get_pvr_browser_date_by_index, dateOf, kDateRoom>(board, library);
    textByIndex<&a_qortvapi_mmp_get_pvr_browser_time_by_index, timeOf, kDateRoom>(board, library);
    textByIndex<&a_qortvapi_mmp_get_pvr_browser_week_by_index, weekDayOf, kWeekDayRoom>(board,
                                                                                        library);
}

void plugReadsByPath(switchboard::Switchboard& board, const RecordingLibrary& library) {
    valueByPath<&a_qortvapi_mmp_get_pvr_browser_channelid_by_path, channelIdOf>(board, library);
    valueByPath<&a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_path, majorOf>(board,
                                                                                     library);
    valueByPath<&a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_path, minorOf>(board,
                                                                                     library);
    valueByPath<&a_qortvapi_mmp_get_pvr_browser_duration_by_path, durationOf>(board, library);
    valueByPath<&a_qortvapi_mmp_get_pvr_browser_stop_reason_by_path, stopReasonOf>(board, library);
    valueByPath<&a_qortvapi_mmp_get_pvr_browser_start_time_by_path, startTimeOf>(board, library);
    valueByPath<&a_qortvapi_mmp_get_pvr_browser_first_rating_by_path, ratingOf>(board, library);
    valueByPath<&a_qortvapi_mmp_get_pvr_browser_item_by_path, itemOf>(board, library);
    textByPath<&a_qortvapi_mmp_get_pvr_browser_channelname_by_path, channelNameOf>(board, library);
    textByPath<&a_qortvapi_mmp_get_pvr_browser_programname_by_path, programNameOf>(board, library);
    textByPath<&a_qortvapi_mmp_get_pvr_browser_date_by_path, dateOf>(board, library);
    textByPath<&a_qortvapi_mmp_get_pvr_browser_time_by_path, timeOf>(board, library);
    textByPath<&a_qortvapi_mmp_get_pvr_browser_week_by_path, weekDayOf>(board, library);
}

}  // namespace

void plugRecordingBrowser(switchboard::Switchboard& board, PersonalVideoRecorder& pvr) {
    RecordingLibrary& library = pvr.library;
    plugReadsByIndex(board, library);
    plugReadsByPath(board, library);
    board.on<&a_qortvapi_mmp_get_pvr_browser_item_count>([&library](uint16_t* count) -> int32_t {
        if (!writable(count)) return TV_INVALID_ARGUMENT;
        put(count, std::min<size_t>(library.count(), UINT16_MAX));
        return TV_OK;
    });
    board.on<&a_qortvapi_mmp_get_pvr_browser_recording_file_num>(
            [&library](uint32_t* count) -> int32_t {
                if (!writable(count)) return TV_INVALID_ARGUMENT;
                put(count, library.active().size());
                return TV_OK;
            });
    board.on<&a_qortvapi_mmp_get_pvr_browser_recording_file_name>(
            [&library](int32_t index, char* name) -> int32_t {
                if (!writable(name)) return TV_INVALID_ARGUMENT;
                const auto active = library.active();
                if (index < 0 || static_cast<size_t>(index) >= active.size()) return TV_NOT_FOUND;
                const std::string& path = active[static_cast<size_t>(index)].path;
                return putText(name, kNameRoom, path.substr(path.rfind('/') + 1));
            });
    board.on<&a_qortvapi_mmp_get_pvr_browser_recording_file_info>(
            [&library](PVR_RECORDING_FILE_INFO_T* info) -> int32_t {
                if (!writable(info)) return TV_INVALID_ARGUMENT;
                const auto latest = library.latest();
                if (!latest) return TV_NOT_FOUND;
                *info = {};
                info->ui8_size = latest->size;
                info->ui4_duration = latest->duration;
                info->ui4_channel_id = latest->channelId;
                copyText(info->s_path, latest->path);
                copyText(info->s_program_name, latest->programName);
                return TV_OK;
            });
    board.on<&a_qortvapi_mmp_pvr_browser_delete_file_by_index>(
            [&library](uint32_t index) { return library.remove(index); });
}

}  // namespace television
