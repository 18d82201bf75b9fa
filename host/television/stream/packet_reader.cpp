#include "television/stream/packet_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace television {
namespace {

constexpr size_t kBufferSize = 256 * 1024;
/** Bytes at the start of the source among which the first packet must be. */
constexpr size_t kSearchSize = 128 * 1024;
/** Sync bytes in a row at the distance of packets that prove a stream. */
constexpr size_t kEvidence = 5;
/** The same after a loss, when the packet size is known. */
constexpr size_t kEvidenceAgain = 3;
constexpr size_t kStrides[] = {188, 192, 204};

}  // namespace

PacketReader::PacketReader(Source source) : mSource(std::move(source)), mBuffer(kBufferSize) {}

/** Reads until `wanted` bytes are available. Returns false when the source ends before. */
bool PacketReader::fill(size_t wanted) {
    if (available() >= wanted) return true;
    std::memmove(mBuffer.data(), mBuffer.data() + mBegin, available());
    mEnd -= mBegin;
    mBegin = 0;
    while (available() < wanted) {
        const long got = mSource(mBuffer.data() + mEnd, mBuffer.size() - mEnd);
        if (got <= 0) {
            mFailed = mFailed || got < 0;
            return false;
        }
        mEnd += static_cast<size_t>(got);
        mBytes += static_cast<uint64_t>(got);
    }
    return true;
}

/** Whether `packets` packets in a row start at `offset`; where fewer have been read, whether all of
 * these do, which must be two at least. */
bool PacketReader::synchronisedAt(size_t offset, size_t stride, size_t packets) const {
    size_t seen = 0;
    for (size_t at = offset; seen < packets && at + kPacketSize <= available(); at += stride) {
        if (mBuffer[mBegin + at] != kSyncByte) return false;
        ++seen;
    }
    return seen >= std::min<size_t>(packets, 2);
}

/** Finds the packet size and the first packet. Returns false when there is none. */
bool PacketReader::detect() {
    fill(kSearchSize);
    const size_t last = std::min(available(), kSearchSize);
    for (size_t offset = 0; offset < last; ++offset) {
        if (mBuffer[mBegin + offset] != kSyncByte) continue;
        for (const size_t stride : kStrides) {
            if (!synchronisedAt(offset, stride, kEvidence)) continue;
            mStride = stride;
            mBegin += offset;
            return true;
        }
    }
    return false;
}

/** Moves to the next place at which packets follow each other. Returns false when there is none. */
bool PacketReader::resynchronise() {
    for (;;) {
        fill(kSearchSize);
        const size_t end = available();
        if (end < kPacketSize) return false;
        for (size_t offset = 0; offset + kPacketSize <= end; ++offset) {
            if (mBuffer[mBegin + offset] == kSyncByte &&
                synchronisedAt(offset, mStride, kEvidenceAgain)) {
                mBegin += offset;
                mLost += static_cast<uint32_t>(offset / mStride);
                return true;
            }
        }
        mLost += static_cast<uint32_t>((end - kPacketSize + 1) / mStride);
        mBegin += end - kPacketSize + 1;
        if (!fill(kPacketSize)) return false;
    }
}

const uint8_t* PacketReader::next() {
    if (mStride == 0 && !detect()) return nullptr;
    for (;;) {
        if (!fill(kPacketSize)) return nullptr;
        const uint8_t* packet = mBuffer.data() + mBegin;
        if (*packet == kSyncByte) {
            // Skips what is behind the packet as well; behind the last one there may be nothing.
            fill(mStride);
            packet = mBuffer.data() + mBegin;
            mBegin += std::min(mStride, available());
            return packet;
        }
        ++mLost;
        // One bad byte is likelier than lost bytes: look first where the next packet should be.
        if (fill(mStride + 1) && mBuffer[mBegin + mStride] == kSyncByte) {
            mBegin += mStride;
        } else {
            ++mBegin;
            if (!resynchronise()) return nullptr;
        }
    }
}

}  // namespace television
