/** libdvbpsi's headers, which need one order and C++-friendly wrapping, and its descriptor lists as
 * views. */
#pragma once

#include <sys/types.h>

#include <cstdint>

// Every header wants the ones before it.
// clang-format off
#include <dvbpsi/dvbpsi.h>
#include <dvbpsi/psi.h>
#include <dvbpsi/descriptor.h>
#include <dvbpsi/demux.h>
#include <dvbpsi/nit.h>
#include <dvbpsi/pat.h>
#include <dvbpsi/pmt.h>
#include <dvbpsi/sdt.h>
// clang-format on

#include "byte_view.h"

namespace television {

/** Calls `visit(tag, content)` for every descriptor of a list, in order. */
template <typename Visit>
void forEachDescriptor(const dvbpsi_descriptor_t* list, Visit visit) {
    for (; list != nullptr; list = list->p_next) {
        visit(list->i_tag, ByteView(list->p_data, list->i_length));
    }
}

}  // namespace television
