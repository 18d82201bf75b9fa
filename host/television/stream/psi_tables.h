/** libdvbpsi's headers, in the one order in which they compile, owners for its tables, and its
 * descriptor lists as views. */
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <memory>

// Every header needs those before it.
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

#include "television/base/byte_view.h"

namespace television {

template <typename T, void (*Delete)(T*)>
struct TableDeleter {
    void operator()(T* table) const { Delete(table); }
};

// Tables that libdvbpsi handed over, which are freed with its own functions.
using PatTable = std::unique_ptr<dvbpsi_pat_t, TableDeleter<dvbpsi_pat_t, dvbpsi_pat_delete>>;
using PmtTable = std::unique_ptr<dvbpsi_pmt_t, TableDeleter<dvbpsi_pmt_t, dvbpsi_pmt_delete>>;
using SdtTable = std::unique_ptr<dvbpsi_sdt_t, TableDeleter<dvbpsi_sdt_t, dvbpsi_sdt_delete>>;
using NitTable = std::unique_ptr<dvbpsi_nit_t, TableDeleter<dvbpsi_nit_t, dvbpsi_nit_delete>>;

/** Calls `visit(tag, content)` for every descriptor of a list, in order. */
template <typename Visit>
void forEachDescriptor(const dvbpsi_descriptor_t* list, Visit visit) {
    for (; list != nullptr; list = list->p_next) {
        visit(list->i_tag, ByteView(list->p_data, list->i_length));
    }
}

}  // namespace television
