#include "television/core/handler_shapes.h"

#include <map>
#include <type_traits>

#include "middleware/apptv.h"
#include "middleware/audio_info.h"
#include "middleware/banner.h"
#include "middleware/broadcast.h"
#include "middleware/channellist.h"
#include "middleware/ci.h"
#include "middleware/config.h"
#include "middleware/event.h"
#include "middleware/ginga.h"
#include "middleware/highlevel.h"
#include "middleware/mheg5.h"
#include "middleware/pcl.h"
#include "middleware/pwddlg.h"
#include "middleware/rating.h"
#include "middleware/record.h"
#include "middleware/scc.h"
#include "middleware/screensaver.h"
#include "middleware/subtitle.h"
#include "middleware/svctx.h"
#include "middleware/teletext.h"
#include "middleware/time.h"
#include "middleware/timeshift.h"
#include "middleware/upgrade.h"
#include "middleware/videoinfo.h"
#include "television/core/service_context.h"

namespace television {
namespace {

/** The middleware hands small integers over as pointers. */
void* asPointer(uint32_t value) {
    return reinterpret_cast<void*>(uintptr_t{value});
}

int32_t asSigned(uint32_t value) {
    return static_cast<int32_t>(value);
}

/** The type of most handlers: of all registrations that shapeOf() does not name. */
using UpdateHandler = void (*)(int32_t, void*, void*, void*, void*, void*);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_update_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_tvprovider_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_svlid_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_tslid_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_bisskey_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_nwl_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_broadcast_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_apptv_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_audio_info_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_banner_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_config_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_event_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_highlevel_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_pwddlg_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_rating_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_subtitle_nfy_fct>);

/** Calls the handlers of a registration with the parameters that their type has. */
using Shape = void (*)(const Registrations&, const Notification&);

/** The Shape for handlers of one type, each of which is called by `Pass(handler, tag,
 * notification)`.
 */
template <typename Handler, void (*Pass)(Handler, void*, const Notification&)>
void shaped(const Registrations& registrations, const Notification& notification) {
    registrations.each<Handler>(
            notification.to, [&](Handler handler, void* tag) { Pass(handler, tag, notification); });
}

void passUpdate(UpdateHandler handler, void* tag, const Notification& notification) {
    const auto& a = notification.arguments;
    handler(notification.code, tag, asPointer(a[0]), asPointer(a[1]), asPointer(a[2]),
            asPointer(a[3]));
}

void passContext(c_svctx_nfy_fct handler, void* tag, const Notification& notification) {
    handler(notification.to.number, static_cast<uint32_t>(notification.code),
            notification.arguments[0], notification.arguments[1], tag);
}

void passDetection(c_scc_src_detect_nfy_fct handler, void* tag, const Notification& notification) {
    handler(notification.to.number, notification.code, tag, asSigned(notification.arguments[0]),
            asSigned(notification.arguments[1]));
}

void passPower(c_pcl_nfy_fct handler, void* tag, const Notification& notification) {
    handler(kPowerControlHandle, tag, static_cast<uint32_t>(notification.code),
            notification.arguments[0]);
}

void passUpgrade(a_qortvapi_upgrade_nfy_fct handler, void* tag, const Notification& notification) {
    handler(notification.code, asSigned(notification.arguments[0]),
            asSigned(notification.arguments[1]), tag);
}

/** The second argument is not passed on: it only keeps successive notifications from being equal.
 */
void passModule(a_qortvapi_ci_nfy_fct handler, void* tag, const Notification& notification) {
    handler(notification.to.number, tag, notification.code, asPointer(notification.arguments[0]));
}

/** The notification's last argument holds two of the handler's: progressive in the highest bit, the
 * frame rate in the others. */
void passVideo(a_qortvapi_videoinfo_nfy_fct handler, void* tag, const Notification& notification) {
    const auto& a = notification.arguments;
    handler(notification.code, tag, asPointer(a[0]), asPointer(a[1]), asPointer(a[2]),
            asPointer(a[3] >> 31), asPointer(a[3] & INT32_MAX), nullptr);
}

/** Three integers. */
using IntegersHandler = void (*)(int32_t, void*, int32_t, int32_t, int32_t);
static_assert(std::is_same_v<IntegersHandler, a_qortvapi_screensaver_msg_nfy_fct>);
static_assert(std::is_same_v<IntegersHandler, a_qortvapi_mheg5_nfy_fct>);
void passIntegers(IntegersHandler handler, void* tag, const Notification& notification) {
    const auto& a = notification.arguments;
    handler(notification.code, tag, asSigned(a[0]), asSigned(a[1]), asSigned(a[2]));
}

/** Three integers as pointers. */
using ThreeHandler = void (*)(int32_t, void*, void*, void*, void*);
static_assert(std::is_same_v<ThreeHandler, a_qortvapi_ginga_nfy_fct>);
static_assert(std::is_same_v<ThreeHandler, a_qortvapi_teletext_nfy_fct>);
void passThree(ThreeHandler handler, void* tag, const Notification& notification) {
    const auto& a = notification.arguments;
    handler(notification.code, tag, asPointer(a[0]), asPointer(a[1]), asPointer(a[2]));
}

/** Two integers as pointers. */
using TwoHandler = void (*)(int32_t, void*, void*, void*);
static_assert(std::is_same_v<TwoHandler, a_qortvapi_record_nfy_fct>);
static_assert(std::is_same_v<TwoHandler, a_qortvapi_timeshift_nfy_fct>);
void passTwo(TwoHandler handler, void* tag, const Notification& notification) {
    const auto& a = notification.arguments;
    handler(notification.code, tag, asPointer(a[0]), asPointer(a[1]));
}

/** One integer as a pointer. */
using OneHandler = void (*)(int32_t, void*, void*);
static_assert(std::is_same_v<OneHandler, a_qortvapi_time_dt_nfy_fct>);
static_assert(std::is_same_v<OneHandler, a_qortvapi_time_sleep_timer_nfy_fct>);
static_assert(std::is_same_v<OneHandler, a_qortvapi_time_sync_source_nfy_fct>);
void passOne(OneHandler handler, void* tag, const Notification& notification) {
    handler(notification.code, tag, asPointer(notification.arguments[0]));
}

Shape shapeOf(const switchboard::SlotBase* slot) {
    static const std::map<const switchboard::SlotBase*, Shape> shapes = {
            {&switchboard::slot<&c_svctx_set_listener>, shaped<c_svctx_nfy_fct, passContext>},
            {&switchboard::slot<&c_scc_vid_set_src_detect_nfy>,
             shaped<c_scc_src_detect_nfy_fct, passDetection>},
            {&switchboard::slot<&c_pcl_reg_nfy_fct>, shaped<c_pcl_nfy_fct, passPower>},
            {&switchboard::slot<&a_qortvapi_upgrade_register_callback>,
             shaped<a_qortvapi_upgrade_nfy_fct, passUpgrade>},
            {&switchboard::slot<&a_qortvapi_ci_reg_cb>, shaped<a_qortvapi_ci_nfy_fct, passModule>},
            {&switchboard::slot<&a_qortvapi_videoinfo_reg_common_nfy>,
             shaped<a_qortvapi_videoinfo_nfy_fct, passVideo>},
            {&switchboard::slot<&a_qortvapi_screensaver_register_msg_callback>,
             shaped<IntegersHandler, passIntegers>},
            {&switchboard::slot<&a_qortvapi_mheg5_register_msg_callback>,
             shaped<IntegersHandler, passIntegers>},
            {&switchboard::slot<&a_qortvapi_record_pvr_register_callback>,
             shaped<TwoHandler, passTwo>},
            {&switchboard::slot<&a_qortvapi_timeshift_register_callback>,
             shaped<TwoHandler, passTwo>},
            {&switchboard::slot<&a_qortvapi_time_register_dt_event_callback>,
             shaped<OneHandler, passOne>},
            {&switchboard::slot<&a_qortvapi_time_register_sleep_timer_callback>,
             shaped<OneHandler, passOne>},
            {&switchboard::slot<&a_qortvapi_time_register_sync_source_callback>,
             shaped<OneHandler, passOne>},
            {&switchboard::slot<&a_qortvapi_ginga_register_callback>,
             shaped<ThreeHandler, passThree>},
            {&switchboard::slot<&a_qortvapi_teletext_register_msg_callback>,
             shaped<ThreeHandler, passThree>},
    };
    const auto found = shapes.find(slot);
    return found == shapes.end() ? shaped<UpdateHandler, passUpdate> : found->second;
}

}  // namespace

void callHandlers(const Registrations& registrations, const Notification& notification) {
    shapeOf(notification.to.slot)(registrations, notification);
}

}  // namespace television
