#define LOG_TAG "hh_channellist"

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _channellist_update_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                                      void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyChannelListUpdate, i4_code, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

void _tvprovider_update_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                                     void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyTvProviderUpdate, i4_code, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

void _svlid_update_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                                void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifySvlIdUpdate, i4_code, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

void _tslid_update_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                                void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyTslIdUpdate, i4_code, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

void _listmode_update_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyListModeUpdate, i4_code, pv_tag,
                            pv_arg1, pv_arg2);
}

void _ocl_scaninfo_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyOclScanInfo, i4_code, pv_tag,
                            pv_arg1, pv_arg2);
}

void _bisskey_update_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                                  void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyBisskeyUpdate, i4_code, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

void _satllist_update_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                                   void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifySatlListUpdate, i4_code, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

void _concern_column_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                                  void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyConcernColumn, i4_code, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

void _nwl_update_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2,
                              void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyNwlUpdate, i4_code, pv_tag, pv_arg1,
                            pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_channellist_init() {
    a_qortvapi_channellist_register_callback(_channellist_update_callback_fct,
                                             registrationTag(1111));
    a_qortvapi_tvprovider_channellist_register_callback(_tvprovider_update_callback_fct,
                                                        registrationTag(2222));
    a_qortvapi_svlid_update_register_callback(_svlid_update_callback_fct, registrationTag(3333));
    a_qortvapi_tslid_update_register_callback(_tslid_update_callback_fct, registrationTag(4444));
    a_qortvapi_listMode_update_register_callback(_listmode_update_callback_fct,
                                                 registrationTag(5555));
    a_qortvapi_ocl_scanInfo_register_callback(_ocl_scaninfo_callback_fct, registrationTag(6666));
    a_qortvapi_bisskey_register_callback(_bisskey_update_callback_fct, registrationTag(7777));
    // The middleware reports changes of the satellite list through the BISS-key registration.
    a_qortvapi_bisskey_register_callback(_satllist_update_callback_fct, registrationTag(8888));
    a_qortvapi_concerncolumn_channellist_register_callback(_concern_column_callback_fct,
                                                           registrationTag(9999));
    return a_qortvapi_nwl_update_register_callback(_nwl_update_callback_fct, registrationTag(1234));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
