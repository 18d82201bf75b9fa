// The engines of interactive television and of warnings: whether they run. The streams carry no
// applications, so there is nothing for them to run.
#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <mutex>

#include "calls.h"
#include "middleware/bml.h"
#include "middleware/dfmngr.h"
#include "middleware/eas.h"
#include "middleware/event_atsc.h"
#include "middleware/ewspa.h"
#include "middleware/ginga.h"
#include "middleware/html_agent.h"
#include "middleware/iom.h"
#include "middleware/mds.h"
#include "middleware/mheg5.h"
#include "playing.h"

namespace television {
namespace {

/** Whether an engine runs. */
struct Engine {
    std::mutex mutex;
    bool runs = false;  // guarded by mutex

    bool get() {
        std::lock_guard<std::mutex> lock(mutex);
        return runs;
    }
    /** Tells the handlers of a change. */
    int32_t set(Core& core, bool on, const Event& event) {
        std::lock_guard<std::mutex> lock(mutex);
        if (runs != on) core.notifier.post(event);
        runs = on;
        return TV_OK;
    }
};

void plugGinga(switchboard::Switchboard& board, Core& core) {
    const auto engine = std::make_shared<Engine>();
    const auto to = registration<&a_qortvapi_ginga_register_callback>();
    board.on<&a_qortvapi_ginga_startGinga>([=, &core] {
        return engine->set(core, true, {to, GINGA_NFY_STARTED, {}});
    });
    board.on<&a_qortvapi_ginga_stopGinga>([=, &core] {
        return engine->set(core, false, {to, GINGA_NFY_STOPPED, {}});
    });
    const auto unknownApplication = [=](const char* id) -> int32_t {
        if (id == nullptr) return TV_INVALID_ARGUMENT;
        return engine->get() ? TV_NOT_FOUND : TV_BUSY;
    };
    board.on<&a_qortvapi_ginga_startApplication>(unknownApplication);
    board.on<&a_qortvapi_ginga_stopApplication>(unknownApplication);
    const auto whileItRuns = [=] { return int32_t{engine->get() ? TV_OK : TV_BUSY}; };
    board.on<&a_qortvapi_ginga_getApplicationInfo>(whileItRuns);
    board.on<&a_qortvapi_ginga_warning_start_cc>([=](bool) { return whileItRuns(); });
    board.on<&a_qortvapi_ginga_warning_start_ginga_app>([=](bool) { return whileItRuns(); });
    const auto none = [](uint32_t* count) -> int32_t {
        if (!writable(count)) return TV_INVALID_ARGUMENT;
        *count = 0;
        return TV_OK;
    };
    board.on<&a_qortvapi_ginga_getApplicationNum>(none);
    board.on<&a_qortvapi_ginga_getApplicationInfo_ex>(
            [=](void*, uint32_t* count) { return none(count); });
    board.on<&a_qortvapi_ginga_is_enable_screen_mode>([=](bool, uint8_t* enabled) -> int32_t {
        if (!writable(enabled)) return TV_INVALID_ARGUMENT;
        *enabled = !engine->get();
        return TV_OK;
    });
}

void plugMheg5(switchboard::Switchboard& board, Core& core) {
    const auto engine = std::make_shared<Engine>();
    const auto to = registration<&a_qortvapi_mheg5_register_msg_callback>();
    board.on<&a_qortvapi_mheg5_enabled>([=, &core] {
        return engine->set(core, true, {to, MHEG5_NFY_ENABLED, {1}});
    });
    board.on<&a_qortvapi_mheg5_disabled>([=, &core] {
        return engine->set(core, false, {to, MHEG5_NFY_ENABLED, {0}});
    });
    board.on<&a_qortvapi_mheg5_get_current_channel>(
            [&core](uint16_t* listId, SVL_REC_T* service, TSL_REC_T* multiplex) -> int32_t {
                const auto playing =
                        core.read([](const ChannelLists& lists) { return playingIn(lists, 0); });
                if (!playing) return TV_NOT_FOUND;
                put(listId, playing->service.ui2_svl_id);
                put(service, playing->service);
                put(multiplex, playing->multiplex);
                return TV_OK;
            });
    board.on<&a_qortvapi_mheg5_get_pfg_info_len>([](uint32_t* length) -> int32_t {
        if (!writable(length)) return TV_INVALID_ARGUMENT;
        *length = 0;
        return TV_OK;
    });
    board.on<&a_qortvapi_mheg5_get_pfg_info>([](char*, uint32_t* length, uint8_t* show) -> int32_t {
        if (!writable(length) || !writable(show)) return TV_INVALID_ARGUMENT;
        *length = 0;
        *show = 0;
        return TV_OK;
    });
    board.on<&a_qortvapi_mheg5_get_internal_scrn>([](uint8_t* internal) -> int32_t {
        if (!writable(internal)) return TV_INVALID_ARGUMENT;
        *internal = 0;
        return TV_OK;
    });
    board.on<&a_qortvapi_mheg5_set_pfg_result>([](bool) { return int32_t{TV_BUSY}; });
    board.on<&a_qortvapi_mheg5_set_hbbtv_status>([](uint32_t, bool) { return int32_t{TV_OK}; });
    board.on<&a_qortvapi_mheg5_set_mheg5_status>(
            [](int32_t, int32_t, int32_t, int32_t) { return int32_t{TV_OK}; });
}

void plugAlerts(switchboard::Switchboard& board) {
    board.on<&a_qortvapi_eas_get_status>(
            [](int32_t* status, int32_t* a, int32_t* b, int32_t* c) -> int32_t {
                if (!writable(status)) return TV_INVALID_ARGUMENT;
                *status = EAS_STATUS_IDLE;
                put(a, 0);
                put(b, 0);
                put(c, 0);
                return TV_OK;
            });
    struct Launch {
        std::mutex mutex;
        bool launched = false;  // guarded by mutex
    };
    const auto launch = std::make_shared<Launch>();
    board.on<&a_qortvapi_eas_set_android_launch_status>([=](bool launched) {
        std::lock_guard<std::mutex> lock(launch->mutex);
        launch->launched = launched;
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_eas_get_android_launch_status>([=] {
        std::lock_guard<std::mutex> lock(launch->mutex);
        return int32_t{launch->launched ? 1 : 0};
    });
    board.on<&a_qortvapi_eas_set_android_exit_eas_no_change_channel_status>(
            [](bool) { return int32_t{TV_OK}; });
}

/** Monitors of warnings, and the values that were set in them. */
class Monitors {
  public:
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

void plugWarnings(switchboard::Switchboard& board) {
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

/** What a set without the hardware, or a broadcast without the tables, answers. */
void plugAbsent(switchboard::Switchboard& board) {
    constexpr auto notSupported = [](auto...) { return int32_t{TV_NOT_SUPPORTED}; };
    constexpr auto notFound = [](auto...) { return int32_t{TV_NOT_FOUND}; };
    board.on<&a_qortvapi_bml_get_current_state>([] { return int32_t{BML_STATE_STOPPED}; });
    board.on<&a_qortvapi_html_agent_exchange_data>(notSupported);
    board.on<&a_qortvapi_mds_fvpMtdtOperator>(notSupported);
    board.on<&a_qortvapi_mds_getValue>(notSupported);
    board.on<&c_iom_open_uart>(notSupported);
    board.on<&c_iom_close>(notFound);
    board.on<&c_iom_get>(notFound);
    board.on<&c_iom_set>(notFound);
    board.on<&c_iom_output>(notFound);
    board.on<&a_qortvapi_load_ch_logo>(notFound);
    board.on<&a_qortvapi_event_atsc_load_events>([](auto...) { return int32_t{TV_OK}; });  // none
    board.on<&a_qortvapi_event_atsc_get_details_info>(notFound);
    board.on<&a_qortvapi_event_atsc_freeEvent>(notFound);
    board.on<&a_qortvapi_event_atsc_check_block>([](auto...) { return int32_t{0}; });
    board.on<&a_qortvapi_event_atsc_load_events_by_EIT>(notFound);
    board.on<&a_qortvapi_event_atsc_get_event_number_in_EIT>(notFound);
    board.on<&a_qortvapi_event_atsc_get_detail_info_by_index>(notFound);
    board.on<&a_qortvapi_event_atsc_check_EIT_status>(notFound);
    board.on<&a_qortvapi_event_atsc_getEvent_detail_len_by_index>(notFound);
    board.on<&a_qortvapi_event_atsc_getEvent_general>(notFound);
    board.on<&a_qortvapi_event_atsc_getEvent_general_by_index>(notFound);
    board.on<&a_qortvapi_event_atsc_get_rating_map_by_index>(notFound);
}

}  // namespace

void plugEngines(switchboard::Switchboard& board, Core& core) {
    plugGinga(board, core);
    plugMheg5(board, core);
    plugAlerts(board);
    plugWarnings(board);
    plugAbsent(board);
}

}  // namespace television
