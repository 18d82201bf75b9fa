#include "television/stream/pid_decoder.h"

#include <cstring>
#include <new>
#include <utility>

#include "television/stream/section_guard.h"

namespace television {
namespace {

/** Whether a message of libdvbpsi is about a section that it discards. Its other messages are about
 * packets, which PsiCollector checks itself. */
bool isAboutSection(const char* message) {
    return std::strstr(message, "CRC") != nullptr || std::strstr(message, "too long") != nullptr ||
           std::strstr(message, "invalid section") != nullptr ||
           std::strstr(message, "failed decoding") != nullptr;
}

}  // namespace

PidDecoder::PidDecoder(uint32_t& damagedSections, Detach detach)
    : mDamaged(damagedSections),
      mDetach(detach),
      mHandle(dvbpsi_new(&onMessage, DVBPSI_MSG_ERROR)) {
    if (mHandle == nullptr) throw std::bad_alloc();
    mHandle->p_sys = this;
}

PidDecoder::~PidDecoder() {
    if (mHandle->p_decoder != nullptr) mDetach(mHandle);
    dvbpsi_delete(mHandle);
}

void PidDecoder::guard() {
    if (mHandle->p_decoder == nullptr) throw std::bad_alloc();
    mGather = std::exchange(mHandle->p_decoder->pf_gather, &onSection);
}

void PidDecoder::tap(Sink sink) {
    constexpr int kLongestSection = 4096;
    mSink = std::move(sink);
    mHandle->p_decoder = static_cast<dvbpsi_decoder_t*>(
            dvbpsi_decoder_new(&onSection, kLongestSection, true, sizeof(dvbpsi_decoder_t)));
    if (mHandle->p_decoder == nullptr) throw std::bad_alloc();
}

void PidDecoder::untap(dvbpsi_t* handle) {
    dvbpsi_decoder_delete(std::exchange(handle->p_decoder, nullptr));
}

void PidDecoder::push(const uint8_t* packet) {
    // The function's prototype lacks a const; it only reads.
    dvbpsi_packet_push(mHandle, const_cast<uint8_t*>(packet));
}

void PidDecoder::onMessage(dvbpsi_t* handle, dvbpsi_msg_level_t, const char* message) {
    if (handle->p_sys != nullptr && isAboutSection(message)) ++of(handle).mDamaged;
}

void PidDecoder::onSection(dvbpsi_t* handle, dvbpsi_psi_section_t* section) {
    PidDecoder& self = of(handle);
    const uint8_t* begin = section->p_payload_start;
    const uint8_t* end = section->p_payload_end;
    const size_t size = begin < end ? static_cast<size_t>(end - begin) : 0;
    if (self.mSink) {
        if (begin > end || !self.mSink(*section, ByteView(begin, size))) ++self.mDamaged;
        dvbpsi_DeletePSISections(section);
    } else if (section->b_syntax_indicator && begin <= end &&
               sectionIsSound(section->i_table_id, ByteView(begin, size))) {
        self.mGather(handle, section);
    } else {
        ++self.mDamaged;
        dvbpsi_DeletePSISections(section);
    }
}

}  // namespace television
