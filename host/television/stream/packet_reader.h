/** Finds the packets of a transport stream that is read from a file or from memory. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace television {

constexpr size_t kPacketSize = 188;
constexpr uint8_t kSyncByte = 0x47;

/**
 * Detects the packet size (188 bytes; 192 with a time stamp in front; 204 with error-correction
 * bytes behind) and the first packet, and goes from packet to packet from there. When the
 * synchronisation is lost it looks for the next packets. Memory is bounded whatever the size of the
 * source. One thread at a time.
 */
class PacketReader {
  public:
    /** Writes up to `size` bytes to `data`. Returns how many, 0 at the end, -1 when reading failed.
     */
    using Source = std::function<long(uint8_t* data, size_t size)>;

    explicit PacketReader(Source source);

    /** The next packet's 188 bytes, valid until the next call; null at the end. */
    const uint8_t* next();

    /** Whether the source is a transport stream; known after the first `next()`. */
    bool isTransportStream() const { return mStride != 0; }
    /** Whether the source failed, so that the end came early. */
    bool failed() const { return mFailed; }
    /** Bytes from the start of one packet to the start of the next. */
    size_t stride() const { return mStride; }
    /** Bytes read so far. */
    uint64_t bytes() const { return mBytes; }
    /** Packets that were skipped because no sync byte was where they should have begun. */
    uint32_t lost() const { return mLost; }

  private:
    size_t available() const { return mEnd - mBegin; }
    bool fill(size_t wanted);
    bool detect();
    bool resynchronise();
    bool synchronisedAt(size_t offset, size_t stride, size_t packets) const;

    Source mSource;
    std::vector<uint8_t> mBuffer;
    size_t mBegin = 0;   ///< in mBuffer: start of what next() has not returned
    size_t mEnd = 0;     ///< in mBuffer: end of what has been read
    size_t mStride = 0;  ///< 0 until found
    uint64_t mBytes = 0;
    uint32_t mLost = 0;
    bool mFailed = false;
};

}  // namespace television
