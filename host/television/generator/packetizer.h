/** Cuts sections and payload into transport-stream packets. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace stream_generator {

/** Appends packets to a stream and keeps the continuity counters of their PIDs. */
class Packetizer {
  public:
    /** Appends one section, starting in a packet of its own, the rest of the last packet stuffed.
     */
    void section(uint16_t pid, const uint8_t* data, size_t size);
    /** Appends one packet that starts a packetised elementary stream with a few bytes of payload.
     */
    void payload(uint16_t pid, uint8_t streamId, uint32_t serial);
    /** Appends null packets. */
    void stuffing(unsigned packets);

    size_t size() const { return mStream.size(); }
    std::vector<uint8_t> take() { return std::move(mStream); }

  private:
    uint8_t* packet(uint16_t pid, bool start);

    std::vector<uint8_t> mStream;
    std::map<uint16_t, uint8_t> mContinuity;
};

}  // namespace stream_generator
