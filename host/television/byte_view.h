/** Bytes of a stream that somebody else owns, read with every offset checked. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace television {

/** Reads beyond the end give 0 and views beyond the end are empty, so that a short descriptor is
 * harmless. */
class ByteView {
  public:
    ByteView() = default;
    ByteView(const uint8_t* data, size_t size) : mData(data), mSize(data == nullptr ? 0 : size) {}

    const uint8_t* data() const { return mData; }
    size_t size() const { return mSize; }
    bool empty() const { return mSize == 0; }

    uint8_t u8(size_t at) const { return at < mSize ? mData[at] : 0; }
    uint16_t u16(size_t at) const { return static_cast<uint16_t>(u8(at) << 8 | u8(at + 1)); }
    uint32_t u32(size_t at) const { return uint32_t{u16(at)} << 16 | u16(at + 2); }

    ByteView from(size_t at) const {
        return at < mSize ? ByteView(mData + at, mSize - at) : ByteView();
    }
    ByteView part(size_t at, size_t size) const {
        const ByteView rest = from(at);
        return ByteView(rest.mData, std::min(size, rest.mSize));
    }

  private:
    const uint8_t* mData = nullptr;
    size_t mSize = 0;
};

}  // namespace television
