// Volume and mute of each output.
#include <algorithm>
#include <memory>
#include <mutex>

#include <fmt/format.h>

#include "middleware/result_codes.h"
#include "middleware/volctrl.h"
#include "television/modules/modules.h"

namespace television {
namespace {

constexpr int32_t kDefaultVolume = 20;

/** The volumes by type of output, VOLCTRL_TYPE_…, which the core remembers. Any thread. */
class Volumes {
  public:
    explicit Volumes(Core& core) : mCore(core) {}

    int32_t volume(int32_t type) const {
        if (!isType(type)) return TV_INVALID_ARGUMENT;
        return mCore.rememberedNumber(name("volume", type), kDefaultVolume);
    }
    int32_t set(int32_t type, int32_t volume) {
        if (!isType(type) || volume < 0 || volume > VOLCTRL_MAX) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        mCore.rememberNumber(name("volume", type), volume);
        return TV_OK;
    }
    /** Changes the volume within its limits. Returns the new volume. */
    int32_t step(int32_t type, int32_t by) {
        if (!isType(type)) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        const int32_t after = std::clamp<int32_t>(volume(type) + by, 0, VOLCTRL_MAX);
        mCore.rememberNumber(name("volume", type), after);
        return after;
    }
    int32_t muted(int32_t type) const {
        if (!isType(type)) return TV_INVALID_ARGUMENT;
        return mCore.rememberedNumber(name("mute", type), 0);
    }
    int32_t mute(int32_t type, bool on) {
        if (!isType(type)) return TV_INVALID_ARGUMENT;
        mCore.rememberNumber(name("mute", type), on ? 1 : 0);
        return TV_OK;
    }

  private:
    static bool isType(int32_t type) { return type >= 0 && type < VOLCTRL_TYPE_COUNT; }
    static std::string name(const char* what, int32_t type) {
        return fmt::format("{}.{}", what, type);
    }

    Core& mCore;
    std::mutex mMutex;  ///< held while a volume is read and changed
};

}  // namespace

void plugVolumeControl(switchboard::Switchboard& board, Core& core) {
    const auto volumes = std::make_shared<Volumes>(core);
    board.on<&a_qortvapi_volctrl_incrVolume>(
            [=] { return volumes->step(VOLCTRL_TYPE_SPEAKER, VOLCTRL_STEP); });
    board.on<&a_qortvapi_volctrl_incrVolume_by_type>(
            [=](int32_t type) { return volumes->step(type, VOLCTRL_STEP); });
    board.on<&a_qortvapi_volctrl_decrVolume>(
            [=] { return volumes->step(VOLCTRL_TYPE_SPEAKER, -VOLCTRL_STEP); });
    board.on<&a_qortvapi_volctrl_decrVolume_by_type>(
            [=](int32_t type) { return volumes->step(type, -VOLCTRL_STEP); });
    board.on<&a_qortvapi_volctrl_setVolume>(
            [=](int16_t volume) { return volumes->set(VOLCTRL_TYPE_SPEAKER, volume); });
    board.on<&a_qortvapi_volctrl_setVolume_by_type>(
            [=](int32_t type, int16_t volume) { return volumes->set(type, volume); });
    board.on<&a_qortvapi_volctrl_getVolume>([=] { return volumes->volume(VOLCTRL_TYPE_SPEAKER); });
    board.on<&a_qortvapi_volctrl_getVolume_by_type>(
            [=](int32_t type) { return volumes->volume(type); });
    board.on<&a_qortvapi_volctrl_setMute>(
            [=](bool on) { return volumes->mute(VOLCTRL_TYPE_SPEAKER, on); });
    board.on<&a_qortvapi_volctrl_setMute_by_type>(
            [=](int32_t type, bool on) { return volumes->mute(type, on); });
    board.on<&a_qortvapi_volctrl_getMute_by_type>(
            [=](int32_t type) { return volumes->muted(type); });
}

}  // namespace television
