/** A view of bytes that somebody else owns, which checks every offset. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace television {

/** Reading beyond the end gives 0, and a part beyond the end is empty: a descriptor that is shorter
 * than its fields does no harm. The bytes must outlive the view. */
class ByteView {
  public:
    ByteView() = default;
    ByteView(const uint8_t* data, size_t size) : mData(data), mSize(data == nullptr ? 0 : size) {}

    const uint8_t* data() const { return mData; }
    size_t size() const { return mSize; }
    bool empty() const { return mSize == 0; }

    // Numbers, the most significant byte first; `at` is the offset of their first byte.
    uint8_t u8(size_t at) const { return at < mSize ? mData[at] : 0; }
    uint16_t u16(size_t at) const { return static_cast<uint16_t>(u8(at) << 8 | u8(at + 1)); }
    uint32_t u32(size_t at) const { return uint32_t{u16(at)} << 16 | u16(at + 2); }

    /** The bytes from the offset `at` to the end. */
    ByteView from(size_t at) const {
        return at < mSize ? ByteView(mData + at, mSize - at) : ByteView();
    }
    /** At most `size` bytes from the offset `at` on. */
    ByteView part(size_t at, size_t size) const {
        const ByteView rest = from(at);
        return ByteView(rest.mData, std::min(size, rest.mSize));
    }

  private:
    const uint8_t* mData = nullptr;
    size_t mSize = 0;
};

}  // namespace television
