#include "television/core/registrations.h"

#include <algorithm>

#include "middleware/3dmode.h"
#include "middleware/apptv.h"
#include "middleware/audio_info.h"
#include "middleware/banner.h"
#include "middleware/bml.h"
#include "middleware/broadcast.h"
#include "middleware/channellist.h"
#include "middleware/config.h"
#include "middleware/dfmngr.h"
#include "middleware/eas.h"
#include "middleware/event.h"
#include "middleware/event_atsc.h"
#include "middleware/ews.h"
#include "middleware/ewspa.h"
#include "middleware/ginga.h"
#include "middleware/hbbtv.h"
#include "middleware/highlevel.h"
#include "middleware/html_agent.h"
#include "middleware/mds.h"
#include "middleware/mheg5.h"
#include "middleware/oad.h"
#include "middleware/pcl.h"
#include "middleware/pwddlg.h"
#include "middleware/rating.h"
#include "middleware/record.h"
#include "middleware/result_codes.h"
#include "middleware/scan.h"
#include "middleware/screensaver.h"
#include "middleware/subtitle.h"
#include "middleware/svctx.h"
#include "middleware/teletext.h"
#include "middleware/time.h"
#include "middleware/timeshift.h"
#include "middleware/tts.h"
#include "middleware/upgrade.h"
#include "middleware/util.h"
#include "middleware/videoinfo.h"
#include "middleware/wakelock.h"
#include "middleware/warningmsg.h"
#include "television/core/service_context.h"

namespace television {
namespace {

/** A handler without its type. */
template <typename Handler>
Registrations::Function erased(Handler handler) {
    return reinterpret_cast<Registrations::Function>(handler);
}

/** Plugs in registration functions with the usual parameters, `f(handler, tag)`. */
template <auto... Register>
void plug(switchboard::Switchboard& board, Registrations& registrations) {
    (board.on<Register>([&registrations](auto handler, void* tag) {
        return registrations.add(registration<Register>(), erased(handler), tag);
    }),
     ...);
}

/** Plugs in registration functions that are called for each index, `f(index, handler, tag)`. */
template <auto... Register>
void plugIndexed(switchboard::Switchboard& board, Registrations& registrations) {
    (board.on<Register>([&registrations](int32_t index, auto handler, void* tag) {
        return registrations.add(registration<Register>(static_cast<uint32_t>(index)),
                                 erased(handler), tag);
    }),
     ...);
}

/** Plugs in the functions with other parameters. */
void plugOthers(switchboard::Switchboard& board, Registrations& registrations) {
    board.on<&a_qortvapi_upgrade_unregister_callback>(
            [&registrations](a_qortvapi_upgrade_nfy_fct handler, void*) {
                return registrations.remove(registration<&a_qortvapi_upgrade_register_callback>(),
                                            erased(handler));
            });
    board.on<&c_pcl_reg_nfy_fct>(
            [&registrations](void* tag, c_pcl_nfy_fct handler, uint32_t* handle) {
                if (handle == nullptr) return int32_t{TV_INVALID_ARGUMENT};
                const int32_t result =
                        registrations.add(registration<&c_pcl_reg_nfy_fct>(), erased(handler), tag);
                if (result == TV_OK) *handle = kPowerControlHandle;
                return result;
            });
    board.on<&c_svctx_set_listener>(
            [&registrations](uint32_t context, c_svctx_nfy_fct listener, void* tag) {
                if (!isServiceContext(context)) return int32_t{TV_NOT_FOUND};
                return registrations.add(registration<&c_svctx_set_listener>(context),
                                         erased(listener), tag);
            });
}

}  // namespace

std::array<RegistrationKey, 2> channelListRegistrations() {
    return {registration<&a_qortvapi_channellist_register_callback>(),
            registration<&a_qortvapi_tvprovider_channellist_register_callback>()};
}

int32_t Registrations::add(RegistrationKey key, Function function, void* tag) {
    if (function == nullptr) return TV_INVALID_ARGUMENT;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        std::vector<Entry>& entries = mEntries[key];
        const auto same = std::find_if(entries.begin(), entries.end(),
                                       [&](const Entry& e) { return e.first == function; });
        if (same != entries.end()) {
            same->second = tag;
            return TV_OK;
        }
        entries.emplace_back(function, tag);
        if (entries.size() > 1) return TV_OK;
    }
    if (mOnFirst) mOnFirst(key);
    return TV_OK;
}

int32_t Registrations::remove(RegistrationKey key, Function function) {
    std::lock_guard<std::mutex> lock(mMutex);
    std::vector<Entry>& entries = mEntries[key];
    const auto end = std::remove_if(entries.begin(), entries.end(),
                                    [&](const Entry& e) { return e.first == function; });
    if (end == entries.end()) return TV_NOT_FOUND;
    entries.erase(end, entries.end());
    return TV_OK;
}

bool Registrations::empty(RegistrationKey key) const {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mEntries.find(key);
    return found == mEntries.end() || found->second.empty();
}

void Registrations::clear() {
    std::lock_guard<std::mutex> lock(mMutex);
    mEntries.clear();
}

std::vector<Registrations::Entry> Registrations::handlers(RegistrationKey key) const {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mEntries.find(key);
    return found == mEntries.end() ? std::vector<Entry>() : found->second;
}

void plugRegistrations(switchboard::Switchboard& board, Registrations& registrations) {
    plug<&a_qortvapi_3dmode_register_callback, &a_qortvapi_apptv_register_callback,
         &a_qortvapi_audio_info_register_callback, &a_qortvapi_banner_register_callback,
         &a_qortvapi_bml_reg_msg_callback, &a_qortvapi_broadcast_register_callback,
         &a_qortvapi_channellist_register_callback,
         &a_qortvapi_tvprovider_channellist_register_callback,
         &a_qortvapi_svlid_update_register_callback, &a_qortvapi_tslid_update_register_callback,
         &a_qortvapi_listMode_update_register_callback, &a_qortvapi_ocl_scanInfo_register_callback,
         &a_qortvapi_bisskey_register_callback,
         &a_qortvapi_concerncolumn_channellist_register_callback,
         &a_qortvapi_nwl_update_register_callback, &a_qortvapi_config_reg_callback,
         &a_qortvapi_ch_logo_reg_callback, &a_qortvapi_eas_reg_callback,
         &a_qortvapi_event_register_callback, &a_qortvapi_event_atsc_register_callback,
         &a_qortvapi_ews_reg_msg_callback, &a_qortvapi_ewspa_reg_msg_callback,
         &a_qortvapi_ginga_register_callback, &a_qortvapi_ginga_volume_register_callback,
         &a_qortvapi_ginga_update_register_callback, &a_qortvapi_hbbtv_reg_msg_callback,
         &a_qortvapi_highlevel_register_callback, &a_qortvapi_highlevel_register_android_responser,
         &a_qortvapi_html_agent_reg_callback, &a_qortvapi_mds_reg_msg_callback,
         &a_qortvapi_mheg5_register_msg_callback, &a_qortvapi_oad_register_callback,
         &a_qortvapi_pwddlg_register_msg_callback, &a_qortvapi_rating_op_vchip_reg_callback,
         &a_qortvapi_record_pvr_register_callback, &a_qortvapi_scan_reg_callback,
         &a_qortvapi_screensaver_register_msg_callback, &a_qortvapi_subtitle_reg_callback,
         &a_qortvapi_teletext_register_msg_callback, &a_qortvapi_time_register_dt_event_callback,
         &a_qortvapi_time_register_sleep_timer_callback,
         &a_qortvapi_time_register_sync_source_callback, &a_qortvapi_timeshift_register_callback,
         &a_qortvapi_tts_reg_msg_callback, &a_qortvapi_upgrade_register_callback,
         &a_qortvapi_util_register_nousedkey_callback, &a_qortvapi_videoinfo_reg_common_nfy,
         &a_qortvapi_wakelock_reg_callback, &a_qortvapi_warning_register_msg_callback>(
            board, registrations);
    plugIndexed<&a_qortvapi_mheg5_reg_launch_hbbtv_nfy,
                &a_qortvapi_mheg5_reg_is_mime_type_support_fct>(board, registrations);
    plugOthers(board, registrations);
}

}  // namespace television
