// Functions of what this set does not have, plugged to say so: BML, HTML agent, metadata service,
// serial lines (IOM), channel logos, ATSC events.
#include "middleware/bml.h"
#include "middleware/dfmngr.h"
#include "middleware/event_atsc.h"
#include "middleware/html_agent.h"
#include "middleware/iom.h"
#include "middleware/mds.h"
#include "middleware/result_codes.h"
#include "television/modules/modules.h"

namespace television {

void plugAbsentFeatures(switchboard::Switchboard& board) {
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
    board.on<&a_qortvapi_event_atsc_load_events>(
            [](auto...) { return int32_t{TV_OK}; });  // loads none
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

}  // namespace television
