// The channel scan: starting and observing it, parameters, and the exchange arrays.
#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "middleware/highlevel.h"
#include "middleware/result_codes.h"
#include "middleware/scan.h"
#include "television/core/channel_selection.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/viewing/channel_scan.h"

namespace television {
namespace {

static_assert(int{MARKET_REGION_EU} == int{HIGHLEVEL_MARKET_REGION_EUROPE});

/** An exchange array: a command, its arguments, then room for the command's result. */
class Exchange {
  public:
    Exchange(int32_t* data, uint32_t count) : mData(data), mCount(count) {}

    bool valid() const { return writable(mData) && mCount > 0; }
    int32_t command() const { return mData[0]; }
    /** The command's only argument; -1 when there is none. */
    int32_t argument() const { return mCount > 1 ? mData[1] : -1; }

    /** Writes the result behind the command and `arguments` arguments, all of it or nothing. */
    int32_t putResult(uint32_t arguments, const std::vector<int32_t>& values) {
        if (mCount - 1 < arguments + values.size()) return TV_INVALID_ARGUMENT;
        std::copy(values.begin(), values.end(), mData + 1 + arguments);
        return TV_OK;
    }

  private:
    int32_t* const mData;
    const uint32_t mCount;
};

/** Returns the numbers of television, radio and all services of a multiplex. */
std::vector<int32_t> servicesOf(const ChannelList& list, const TSL_REC_T& multiplex) {
    std::vector<int32_t> counts(3);
    for (const Service& service : list.services) {
        if (service.record.ui2_tsl_rec_id != multiplex.ui2_tsl_rec_id) continue;
        if ((service.record.ui4_nw_mask & SB_VNET_TV_SERVICE) != 0) ++counts[0];
        if ((service.record.ui4_nw_mask & SB_VNET_RADIO_SERVICE) != 0) ++counts[1];
        ++counts[2];
    }
    return counts;
}

int32_t exchangeProgress(const ChannelScan& scan, Exchange& exchange) {
    const ChannelScan::Status status = scan.status();
    return exchange.putResult(
            0, {status.active ? 1 : 0, static_cast<int32_t>(status.percent),
                static_cast<int32_t>(status.television), static_cast<int32_t>(status.radio)});
}

/** Exchanges the array of a delivery system that this set receives. */
int32_t exchangeOfList(const Core& core, const ChannelScan& scan, uint16_t listId, int32_t* data,
                       uint32_t count) {
    Exchange exchange(data, count);
    if (!exchange.valid()) return TV_INVALID_ARGUMENT;
    if (exchange.command() == SCAN_EXCHANGE_PROGRESS) return exchangeProgress(scan, exchange);
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const ChannelList& list = *lists.list(listId);
        const auto multiplexes = static_cast<int32_t>(list.multiplexes.size());
        if (exchange.command() == SCAN_EXCHANGE_MULTIPLEX_COUNT) {
            return exchange.putResult(0, {multiplexes});
        }
        if (exchange.command() != SCAN_EXCHANGE_SERVICES &&
            exchange.command() != SCAN_EXCHANGE_FREQUENCY) {
            return TV_NOT_SUPPORTED;
        }
        if (count < 2) return TV_INVALID_ARGUMENT;
        const int32_t index = exchange.argument();
        if (index < 0 || index >= multiplexes) return TV_NOT_FOUND;
        const TSL_REC_T& multiplex = list.multiplexes[static_cast<size_t>(index)];
        if (exchange.command() == SCAN_EXCHANGE_SERVICES) {
            return exchange.putResult(1, servicesOf(list, multiplex));
        }
        return exchange.putResult(1, {static_cast<int32_t>(multiplex.ui4_frequency_khz)});
    });
}

// The scan parameters of systems that this set does not receive: the core remembers them under
// these names, and clients read them back.
constexpr char kAtscParameters[] = "scan.atsc";
constexpr char kIsdbParameters[] = "scan.isdb";
constexpr char kNtscParameters[] = "scan.ntsc";

/** The arguments of a call as they are remembered: medium, type of scan, the record's words. */
template <typename Record>
using Parameters = std::array<int32_t, 2 + sizeof(Record) / sizeof(int32_t)>;

template <typename Record>
int32_t keepParameters(Core& core, const char* name, int32_t medium, int32_t type,
                       const Record* data) {
    if (!writable(data)) return TV_INVALID_ARGUMENT;
    if (data->ui4_first_channel > data->ui4_last_channel) return TV_INVALID_ARGUMENT;
    Parameters<Record> values = {medium, type};
    std::memcpy(&values[2], data, sizeof(*data));
    core.remember(name, std::string(reinterpret_cast<const char*>(values.data()), sizeof(values)));
    return TV_OK;
}

template <typename Record>
int32_t readParameters(const Core& core, const char* name, Exchange& exchange) {
    Parameters<Record> values;
    const std::string bytes = core.remembered(name);
    if (bytes.size() != sizeof(values)) return TV_NOT_FOUND;
    std::memcpy(values.data(), bytes.data(), sizeof(values));
    return exchange.putResult(0, {values.begin(), values.end()});
}

int32_t exchangeOfAtsc(const Core& core, int32_t* data, uint32_t count) {
    Exchange exchange(data, count);
    if (!exchange.valid()) return TV_INVALID_ARGUMENT;
    switch (exchange.command()) {
        case SCAN_EXCHANGE_PARAMETERS:
            return readParameters<AP_SB_ATSC_SCAN_DATA_T>(core, kAtscParameters, exchange);
        case SCAN_EXCHANGE_ANALOGUE_PARAMETERS:
            return readParameters<AP_SB_NTSC_SCAN_DATA_T>(core, kNtscParameters, exchange);
        default:
            return TV_NOT_SUPPORTED;
    }
}

int32_t exchangeOfIsdb(const Core& core, int32_t* data, uint32_t count) {
    Exchange exchange(data, count);
    if (!exchange.valid()) return TV_INVALID_ARGUMENT;
    if (exchange.command() != SCAN_EXCHANGE_PARAMETERS) return TV_NOT_SUPPORTED;
    return readParameters<AP_SB_ISDB_SCAN_DATA_T>(core, kIsdbParameters, exchange);
}

void plugExchange(switchboard::Switchboard& board, Core& core, const ChannelScan& scan) {
    board.on<&a_scan_dvbt_exchange_data>([&](int32_t* data, uint32_t count) {
        return exchangeOfList(core, scan, SVL_ID_TERRESTRIAL, data, count);
    });
    board.on<&a_scan_dvbc_exchange_data>([&](int32_t* data, uint32_t count) {
        return exchangeOfList(core, scan, SVL_ID_CABLE, data, count);
    });
    board.on<&a_scan_dvbs_exchange_data>([&](int32_t* data, uint32_t count) {
        return exchangeOfList(core, scan, SVL_ID_SATELLITE, data, count);
    });
    board.on<&a_qortvapi_atsc_exchange_data>(
            [&core](int32_t* data, uint32_t count) { return exchangeOfAtsc(core, data, count); });
    board.on<&a_qortvapi_isdb_exchange_data>(
            [&core](int32_t* data, uint32_t count) { return exchangeOfIsdb(core, data, count); });
    const auto notSupported = [](int32_t*, uint32_t) { return int32_t{TV_NOT_SUPPORTED}; };
    board.on<&a_scan_ce_exchange_data>(notSupported);
    board.on<&a_scan_dtmb_exchange_data>(notSupported);
    board.on<&a_scan_pal_secam_exchange_data>(notSupported);
}

std::string messageOf(const ChannelScan::Status& status) {
    if (status.active) {
        return fmt::format("Scan at {} %: {} television and {} radio services", status.percent,
                           status.television, status.radio);
    }
    switch (status.last) {
        case ChannelScan::Outcome::kCompleted:
            return fmt::format("Scan complete: {} services in {} multiplexes", status.services,
                               status.multiplexes);
        case ChannelScan::Outcome::kCancelled:
            return "Scan cancelled";
        case ChannelScan::Outcome::kFailed:
            return "Scan failed";
        default:
            return "No scan yet";
    }
}

/** Writes a text into a buffer of `length` bytes and one more for the NUL. */
int32_t putWithin(char* to, uint32_t length, const std::string& text) {
    return putText(to, length == UINT32_MAX ? length : length + 1, text);
}

int32_t operatorName(const Core& core, int32_t index, char* text, int32_t length) {
    if (length < 0 || !writable(text)) return TV_INVALID_ARGUMENT;
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const std::vector<NWL_REC_T>& networks = lists.list(SVL_ID_CABLE)->networks;
        if (index < 0 || static_cast<size_t>(index) >= networks.size()) return TV_NOT_FOUND;
        return putWithin(text, static_cast<uint32_t>(length),
                         networks[static_cast<size_t>(index)].s_name);
    });
}

/** Selects the first channel of the last scan, or unless `first` the one that played before. */
int32_t selectAfterScan(Core& core, const ChannelScan& scan, bool first) {
    const uint8_t medium = scan.status().medium;
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        uint32_t channelId = first ? 0 : currentOrPrevious(lists);
        if (channelId == 0 && medium != BRDCST_MEDIUM_UNKNOWN) {
            channelId = firstShown(lists, listIdOf(medium));
        }
        if (channelId == 0) channelId = firstShown(lists);
        if (channelId == 0) return TV_NOT_FOUND;
        selectChannel(lists, 0, channelId, change);
        return TV_OK;
    });
}

}  // namespace

void plugScan(switchboard::Switchboard& board, Core& core, ChannelScan& scan) {
    board.on<&a_qortvapi_start_scan>([&scan](int32_t medium, int32_t type, bool clear) {
        return scan.start(medium, type, clear);
    });
    board.on<&a_qortvapi_cancel_scan>([&scan] { return scan.cancel(); });
    board.on<&a_qortvapi_is_scan_active>([&scan] { return int32_t{scan.status().active ? 1 : 0}; });
    board.on<&a_qortvapi_scan_select_crnt_or_first_channel>(
            [&](bool first) { return selectAfterScan(core, scan, first); });
    board.on<&a_qortvapi_get_market_region>([] { return int32_t{MARKET_REGION_EU}; });
    board.on<&a_qortvapi_set_atsc_scan_param>(
            [&core](int32_t medium, int32_t type, const AP_SB_ATSC_SCAN_DATA_T* data) {
                return keepParameters(core, kAtscParameters, medium, type, data);
            });
    board.on<&a_qortvapi_set_isdb_scan_param>(
            [&core](int32_t medium, int32_t type, const AP_SB_ISDB_SCAN_DATA_T* data) {
                return keepParameters(core, kIsdbParameters, medium, type, data);
            });
    board.on<&a_qortvapi_set_ntsc_scan_param>(
            [&core](int32_t medium, int32_t type, const AP_SB_NTSC_SCAN_DATA_T* data) {
                return keepParameters(core, kNtscParameters, medium, type, data);
            });
    plugExchange(board, core, scan);
    board.on<&a_qortvapi_get_user_message>([&scan](char* message, uint32_t length) {
        return putWithin(message, length, messageOf(scan.status()));
    });
    board.on<&a_qortvapi_scan_dvbc_get_str_data>(
            [&core](int32_t index, char* text, int32_t length) {
                return operatorName(core, index, text, length);
            });
}

}  // namespace television
