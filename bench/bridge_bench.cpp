// What a plain bridge costs above the C call behind it, in this process, with debug lines off.
#include <cstdint>

#include "QorTvApiChannelListImpl.h"
#include "log.h"
#include "middleware/channellist.h"
#include "ratio.h"
#include "television/switchboard/switchboard.h"

using vendor::corvanta::tv::qortvapi::V1_0::implementation::QorTvApiChannelListImpl;

namespace {

constexpr int kRounds = 21;
constexpr int kCalls = 100000;
volatile int64_t gSink;  // keeps results alive

void print(const char* what, const bench::Pair& pair) {
    std::printf("%-44s %6.1f ns, C call %6.1f ns, above it %6.1f ns\n", what, pair.subject,
                pair.peer, pair.subject - pair.peer);
}

}  // namespace

int main() {
    mTvApiDebug = 0;
    switchboard::Switchboard tv;
    tv.on<&a_qortvapi_channellist_get_channel_number>(
            [](uint32_t id) { return static_cast<int32_t>(id); });
    tv.on<&a_qortvapi_channellist_get_svl_handle_by_svl_id>([](uint16_t id, uint32_t* handle) {
        *handle = id;
        return 0;
    });
    tv.on<&a_qortvapi_channellist_get_channel_by_id>(
            [](uint32_t id, uint16_t, SVL_REC_T* service, TSL_REC_T*) {
                service->ui4_channel_id = id;
                return 0;
            });
    const android::sp<QorTvApiChannelListImpl> list = new QorTvApiChannelListImpl();

    print("scalar result",
          bench::inTurns(
                  kRounds, kCalls,
                  [&] { gSink = list->a_hidl_a_qortvapi_channellist_get_channel_number(7); },
                  [] { gSink = a_qortvapi_channellist_get_channel_number(7); }));
    print("one output through the callback",
          bench::inTurns(
                  kRounds, kCalls,
                  [&] {
                      list->a_hidl_a_qortvapi_channellist_get_svl_handle_by_svl_id(
                              7, [](uint32_t handle, int32_t result) { gSink = handle + result; });
                  },
                  [] {
                      uint32_t handle = 0;
                      const int32_t result =
                              a_qortvapi_channellist_get_svl_handle_by_svl_id(7, &handle);
                      gSink = handle + result;
                  }));
    print("two record images (1,024 bytes zeroed)",
          bench::inTurns(
                  kRounds, kCalls,
                  [&] {
                      list->a_hidl_a_qortvapi_channellist_get_channel_by_id(
                              7, 1, [](const auto& service, const auto& multiplex, int32_t result) {
                                  gSink = service[4] + multiplex[0] + result;
                              });
                  },
                  [] {
                      SVL_REC_T service = {};
                      TSL_REC_T multiplex = {};
                      const int32_t result =
                              a_qortvapi_channellist_get_channel_by_id(7, 1, &service, &multiplex);
                      gSink = service.ui4_channel_id + multiplex.ui2_tsl_id + result;
                  }));
}
