/** The enhanced audio return channel (eARC) of HDMI-CEC. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCec.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::Return;

/**
 * The one interface that does not reach the middleware. It calls the hardware abstraction library,
 * which every method initialises first. A failure of the library is logged and returned as false or
 * -1. There is no state: any number of threads may call at a time.
 */
class QorTvApiCec : public IQorTvApiCec {
  public:
    Return<bool> a_hidl_a_qortvapi_get_earc_caps() override;
    Return<int32_t> a_hidl_a_qortvapi_set_earc_enable(bool enabled) override;
    /** `port` is an HDMI port as the library counts them, from 1. */
    Return<bool> a_hidl_a_qortvapi_get_earc_status(int32_t port) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
