#include "television/core/client_memory.h"

namespace television {

void putPair(const ChannelList& list, const SVL_REC_T& record, SVL_REC_T* service,
             TSL_REC_T* multiplex) {
    put(service, record);
    if (!writable(multiplex)) return;
    const TSL_REC_T* found = list.multiplex(record.ui2_tsl_rec_id);
    *multiplex = found == nullptr ? TSL_REC_T{} : *found;
}

}  // namespace television
