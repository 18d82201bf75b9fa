// Time shift: recording the current channel into a buffer, and playing from it.
#include "middleware/timeshift.h"
#include "middleware/result_codes.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/recording/personal_video_recorder.h"

namespace television {
namespace {}  // namespace

void plugTimeShift(switchboard::Switchboard& board, PersonalVideoRecorder& pvr) {
    TimeShift& shift = pvr.timeShift;
    board.on<&a_qortvapi_timeshift_registerDevice>(
            [&shift](const char* path, int64_t size) -> int32_t {
                const auto text = readText(path, kLongestPath);
                return text ? shift.registerDevice(*text, size) : int32_t{TV_INVALID_ARGUMENT};
            });
    board.on<&a_qortvapi_timeshift_get_registerdevice_schedule>(
            [&shift] { return shift.registration(); });
    board.on<&a_qortvapi_timeshift_get_device_status>([&shift] { return shift.deviceStatus(); });
    board.on<&a_qortvapi_timeshift_get_error_id>([&shift] { return shift.error(); });
    board.on<&a_qortvapi_timeshift_get_record_status>([&shift] { return shift.recordStatus(); });
    board.on<&a_qortvapi_timeshift_get_duration>([&shift] { return shift.duration(); });
    board.on<&a_qortvapi_timeshift_get_position>([&shift] { return shift.position(); });
    board.on<&a_qortvapi_timeshift_get_current_position>([&shift] { return shift.utcPosition(); });
    board.on<&a_qortvapi_timeshift_get_start_position>([&shift] { return shift.utcStart(); });
    board.on<&a_qortvapi_timeshift_start>([&shift] { return shift.start(); });
    board.on<&a_qortvapi_timeshift_stop>([&shift] { return shift.stop(TIMESHIFT_STOP_NORMAL); });
    board.on<&a_qortvapi_timeshift_stop_ex>([&shift](uint32_t flag) { return shift.stop(flag); });
    board.on<&a_qortvapi_timeshift_play>([&shift] { return shift.play(); });
    board.on<&a_qortvapi_timeshift_pause>([&shift] { return shift.pause(); });
    board.on<&a_qortvapi_timeshift_seek>([&shift](int32_t seconds) { return shift.seek(seconds); });
    board.on<&a_qortvapi_timeshift_trickplay>(
            [&shift](int32_t speed) { return shift.setSpeed(speed); });
    board.on<&a_qortvapi_timeshift_set_auto_record>(
            [&shift](bool on) { return shift.setAutoRecord(on); });
    board.on<&a_qortvapi_timeshift_set_play_before_full>(
            [&shift](bool on) { return shift.setPlayBeforeFull(on); });
}

}  // namespace television
