/** The enumerations of the interface have the numbers of the middleware's, because the bridges pass
 * them unchanged. Checked at compile time. */
#include <gtest/gtest.h>
#include <vendor/corvanta/tv/qortvapi/1.0/types.h>

#include "middleware/broadcast.h"
#include "middleware/inputsource.h"
#include "middleware/pcl.h"
#include "middleware/timeshift.h"
#include "middleware/upgrade.h"

namespace {

using namespace vendor::corvanta::tv::qortvapi::V1_0;

template <typename Enumeration>
constexpr bool same(Enumeration ours, int theirs) {
    return static_cast<uint32_t>(ours) == static_cast<uint32_t>(theirs);
}

using StreamType = HIDL_QORTVAPI_STREAM_TYPE_T;
static_assert(same(StreamType::QORTVAPI_STREAM_TYPE_AUDIO, BROADCAST_STREAM_TYPE_AUDIO));
static_assert(same(StreamType::QORTVAPI_STREAM_TYPE_VIDEO, BROADCAST_STREAM_TYPE_VIDEO));
static_assert(same(StreamType::QORTVAPI_STREAM_TYPE_SUBTITLE, BROADCAST_STREAM_TYPE_SUBTITLE));
static_assert(same(StreamType::QORTVAPI_STREAM_TYPE_TELETEXT, BROADCAST_STREAM_TYPE_TELETEXT));

using Line = HIDL_INPUT_GPIO_T_IDX;
static_assert(same(Line::INPUT_GPIO_SCART_1, INPUT_GPIO_SCART_1));
static_assert(same(Line::INPUT_GPIO_SCART_2, INPUT_GPIO_SCART_2));
static_assert(same(Line::INPUT_GPIO_HDMI_HPD, INPUT_GPIO_HDMI_HPD));

using Device = HIDL_INPUT_DEVICE_TYPE_T;
static_assert(same(Device::INPUT_DEVICE_TYPE_TV, INPUT_DEVICE_TYPE_TV));
static_assert(same(Device::INPUT_DEVICE_TYPE_AV, INPUT_DEVICE_TYPE_AV));
static_assert(same(Device::INPUT_DEVICE_TYPE_SCART, INPUT_DEVICE_TYPE_SCART));
static_assert(same(Device::INPUT_DEVICE_TYPE_COMPONENT, INPUT_DEVICE_TYPE_COMPONENT));
static_assert(same(Device::INPUT_DEVICE_TYPE_VGA, INPUT_DEVICE_TYPE_VGA));
static_assert(same(Device::INPUT_DEVICE_TYPE_HDMI, INPUT_DEVICE_TYPE_HDMI));

using Delivery = HIDL_QORTVAPI_UPGRADE_DLIVRY_TYPE_T;
static_assert(same(Delivery::QORTVAPI_UPGRADE_DLIVRY_TYPE_FILE_SYS, UPGRADE_DELIVERY_FILE_SYS));
static_assert(same(Delivery::QORTVAPI_UPGRADE_DLIVRY_TYPE_INTERNET, UPGRADE_DELIVERY_INTERNET));
static_assert(same(Delivery::QORTVAPI_UPGRADE_DLIVRY_TYPE_BROADCAST, UPGRADE_DELIVERY_BROADCAST));

using WakeUp = HIDL_PCL_WAKE_UP_REASON_T;
static_assert(same(WakeUp::PCL_WAKE_UP_REASON_REMOTE_CONTROL, PCL_WAKE_UP_REASON_REMOTE_CONTROL));
using Level = HIDL_PCL_GPIO_STATUS_T;
static_assert(same(Level::PCL_GPIO_STATUS_LOW, PCL_GPIO_LOW));
static_assert(same(Level::PCL_GPIO_STATUS_HIGH, PCL_GPIO_HIGH));

using Stop = HIDL_TIMESHIFT_STOP_FLAG;
static_assert(same(Stop::TIMESHIFT_STOP_FLAG_NORMAL, TIMESHIFT_STOP_NORMAL));
static_assert(same(Stop::TIMESHIFT_STOP_FLAG_KEEP_BUFFER, TIMESHIFT_STOP_KEEP_BUFFER));
static_assert(same(Stop::TIMESHIFT_STOP_FLAG_CHANNEL_CHANGE, TIMESHIFT_STOP_CHANNEL_CHANGE));

}  // namespace
