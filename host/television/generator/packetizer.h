/** Puts sections and payload into the packets of a transport stream. */
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
    /** Appends one section, which starts in a packet of its own; the rest of its last packet is
     * stuffed. */
    void section(uint16_t pid, const uint8_t* data, size_t size);
    /** Appends one packet that starts a PES packet of stream `streamId`. `serial` varies the bytes
     * of the payload. */
    void payload(uint16_t pid, uint8_t streamId, uint32_t serial);
    /** Appends null packets. */
    void stuffing(unsigned packets);

    /** Bytes so far. */
    size_t size() const { return mStream.size(); }
    /** Hands the stream over; the object is of no use afterwards. */
    std::vector<uint8_t> take() { return std::move(mStream); }

  private:
    uint8_t* packet(uint16_t pid, bool start);

    std::vector<uint8_t> mStream;
    std::map<uint16_t, uint8_t> mContinuity;  ///< next continuity counter by PID
};

}  // namespace stream_generator
