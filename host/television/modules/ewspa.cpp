// Monitors of emergency warnings: the broadcasts carry none; the values that are set are kept.
#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <mutex>

#include "middleware/ewspa.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** The monitors by type, with the values that were set in them by id. Any thread. */
class Monitors {
  public:
    /** Ids in one monitor. */
    static constexpr size_t kMostIds = 64;

    int32_t create(uint8_t type) {
        if (type >= EWSPA_TYPE_COUNT) return TV_NOT_SUPPORTED;
        std::lock_guard<std::mutex> lock(mMutex);
        return mMonitors.emplace(type, Values()).second ? TV_OK : TV_BUSY;
    }
    int32_t remove(uint8_t type) {
        std::lock_guard<std::mutex> lock(mMutex);
        return mMonitors.erase(type) != 0 ? TV_OK : TV_NOT_FOUND;
    }
    int32_t set(uint8_t type, uint32_t id, const int32_t* values, uint32_t count) {
        if (values == nullptr || count > EWSPA_VALUES_MAX) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        const auto monitor = mMonitors.find(type);
        if (monitor == mMonitors.end()) return TV_NOT_FOUND;
        if (monitor->second.size() >= kMostIds && monitor->second.count(id) == 0) return TV_FULL;
        auto& kept = monitor->second[id];
        std::copy_n(values, count, kept.begin());
        return TV_OK;
    }
    int32_t get(uint8_t type, uint32_t id, int32_t* values, uint32_t count) {
        if (!writable(values) || count > EWSPA_VALUES_MAX) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        const auto monitor = mMonitors.find(type);
        if (monitor == mMonitors.end()) return TV_NOT_FOUND;
        const auto kept = monitor->second.find(id);
        if (kept == monitor->second.end()) {
            std::fill_n(values, count, 0);
        } else {
            std::copy_n(kept->second.begin(), count, values);
        }
        return TV_OK;
    }

  private:
    using Values = std::map<uint32_t, std::array<int32_t, EWSPA_VALUES_MAX>>;

    std::mutex mMutex;
    std::map<uint8_t, Values> mMonitors;  // guarded by mMutex
};

}  // namespace

void plugEmergencyWarnings(switchboard::Switchboard& board) {
    const auto monitors = std::make_shared<Monitors>();
    board.on<&a_qortvapi_ewspa_create_monitor_inst>(
            [=](uint8_t type) { return monitors->create(type); });
    board.on<&a_qortvapi_ewspa_delete_monitor_inst>(
            [=](uint8_t type) { return monitors->remove(type); });
    board.on<&a_qortvapi_ewspa_set>(
            [=](uint8_t type, uint32_t id, int32_t* values, uint32_t count) {
                return monitors->set(type, id, values, count);
            });
    board.on<&a_qortvapi_ewspa_get>(
            [=](uint8_t type, uint32_t id, int32_t* values, uint32_t count) {
                return monitors->get(type, id, values, count);
            });
}

}  // namespace television
