/** Decodes the sections of one PID with libdvbpsi, behind a check of the lengths in them. */
#pragma once

#include <cstdint>
#include <functional>

#include "television/base/byte_view.h"
#include "television/stream/psi_tables.h"

namespace television {

/**
 * One handle of libdvbpsi. After construction either a table decoder of libdvbpsi is attached to
 * handle() and guard() called, or tap() is called. One thread at a time.
 */
class PidDecoder {
  public:
    using Detach = void (*)(dvbpsi_t*);
    /** Takes one whole section, whose lengths are not checked yet. Returns false when it is
     * damaged.
     */
    using Sink = std::function<bool(const dvbpsi_psi_section_t& section, ByteView payload)>;

    /** Adds the sections that are damaged to `damagedSections`, which must outlive this. `detach`
     * detaches what is attached to the handle in the end. */
    PidDecoder(uint32_t& damagedSections, Detach detach);
    ~PidDecoder();
    PidDecoder(const PidDecoder&) = delete;
    PidDecoder& operator=(const PidDecoder&) = delete;

    dvbpsi_t* handle() { return mHandle; }

    /** Puts the check of the lengths in front of the table decoder that was just attached. */
    void guard();

    /** Hands every section to `sink` as it comes, in place of a table decoder. */
    void tap(Sink sink);
    /** The `detach` of a decoder that is tapped. */
    static void untap(dvbpsi_t* handle);

    /** Takes a packet of the PID, of 188 bytes. */
    void push(const uint8_t* packet);

  private:
    static PidDecoder& of(dvbpsi_t* handle) { return *static_cast<PidDecoder*>(handle->p_sys); }
    static void onMessage(dvbpsi_t* handle, dvbpsi_msg_level_t level, const char* message);
    static void onSection(dvbpsi_t* handle, dvbpsi_psi_section_t* section);

    uint32_t& mDamaged;
    const Detach mDetach;
    dvbpsi_t* const mHandle;
    dvbpsi_callback_gather_t mGather = nullptr;  ///< the table decoder's, behind the check
    Sink mSink;                                  ///< in place of mGather, where there is one
};

}  // namespace television
