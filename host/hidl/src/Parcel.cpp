// A parcel's contents, and the scalars and texts in its flat data.
#include <hwbinder/Parcel.h>

#include <cstring>
#include <utility>

#include <hidl/Limits.h>
#include <hwbinder/ParcelContents.h>

namespace android::hardware {

// Flat data consists of units of 4 bytes, as the driver requires.
static constexpr size_t padTo4(size_t size) {
    return (size + 3) & ~size_t{3};
}

Parcel::~Parcel() = default;

void Parcel::reset() {
    mContents.reset();
}

ParcelContents* Parcel::contents() {
    if (mContents == nullptr) mContents = ParcelContents::acquire();
    return mContents.get();
}

void Parcel::adopt(ParcelContentsOwner contents) {
    mContents = std::move(contents);
}

void Parcel::noteMalformed(const char* reason) const {
    if (mContents != nullptr && mContents->malformed == nullptr) mContents->malformed = reason;
}

const char* Parcel::malformedReason() const {
    return mContents != nullptr ? mContents->malformed : nullptr;
}

// Scalars.

template <typename T>
status_t Parcel::writeScalar(T value) {
    static_assert(sizeof(T) % 4 == 0, "scalars take whole units");
    std::vector<uint8_t>& data = contents()->data;
    const size_t offset = data.size();
    if (offset + sizeof(T) > limits::kTransactionBytes) return NO_MEMORY;
    data.resize(offset + sizeof(T));
    memcpy(data.data() + offset, &value, sizeof(T));
    return OK;
}

template <typename T>
status_t Parcel::readScalar(T* value) const {
    if (mContents == nullptr || mContents->receivedDataSize - mContents->position < sizeof(T)) {
        setMalformed("data ends too early");
        return NOT_ENOUGH_DATA;
    }
    memcpy(value, mContents->receivedData + mContents->position, sizeof(T));
    mContents->position += sizeof(T);
    return OK;
}

status_t Parcel::writeBool(bool value) {
    return writeScalar<int32_t>(value);
}
status_t Parcel::writeInt8(int8_t value) {
    return writeScalar<int32_t>(value);
}
status_t Parcel::writeUint8(uint8_t value) {
    return writeScalar<uint32_t>(value);
}
status_t Parcel::writeInt16(int16_t value) {
    return writeScalar<int32_t>(value);
}
status_t Parcel::writeUint16(uint16_t value) {
    return writeScalar<uint32_t>(value);
}
status_t Parcel::writeInt32(int32_t value) {
    return writeScalar(value);
}
status_t Parcel::writeUint32(uint32_t value) {
    return writeScalar(value);
}
status_t Parcel::writeInt64(int64_t value) {
    return writeScalar(value);
}
status_t Parcel::writeUint64(uint64_t value) {
    return writeScalar(value);
}
status_t Parcel::writeFloat(float value) {
    return writeScalar(value);
}
status_t Parcel::writeDouble(double value) {
    return writeScalar(value);
}

// Types of less than 4 bytes are sent as a unit of 4 bytes.
template <typename T>
status_t Parcel::readNarrow(T* value) const {
    uint32_t unit = 0;
    const status_t status = readScalar(&unit);
    if (status == OK) *value = static_cast<T>(unit);
    return status;
}

status_t Parcel::readBool(bool* value) const {
    uint32_t unit = 0;
    status_t status = readScalar(&unit);
    if (status == OK) *value = unit != 0;
    return status;
}
status_t Parcel::readInt8(int8_t* value) const {
    return readNarrow(value);
}
status_t Parcel::readUint8(uint8_t* value) const {
    return readNarrow(value);
}
status_t Parcel::readInt16(int16_t* value) const {
    return readNarrow(value);
}
status_t Parcel::readUint16(uint16_t* value) const {
    return readNarrow(value);
}
status_t Parcel::readInt32(int32_t* value) const {
    return readScalar(value);
}
status_t Parcel::readUint32(uint32_t* value) const {
    return readScalar(value);
}
status_t Parcel::readInt64(int64_t* value) const {
    return readScalar(value);
}
status_t Parcel::readUint64(uint64_t* value) const {
    return readScalar(value);
}
status_t Parcel::readFloat(float* value) const {
    return readScalar(value);
}
status_t Parcel::readDouble(double* value) const {
    return readScalar(value);
}

// Texts in the data.

status_t Parcel::writeInterfaceToken(const char* interface) {
    return writeCString(interface);
}

status_t Parcel::writeCString(const char* text) {
    std::vector<uint8_t>& data = contents()->data;
    const size_t offset = data.size();
    const size_t length = strlen(text) + 1;
    if (offset + padTo4(length) > limits::kTransactionBytes) return NO_MEMORY;
    data.resize(offset + padTo4(length));
    memcpy(data.data() + offset, text, length);
    return OK;
}

const char* Parcel::readCString() const {
    if (mContents == nullptr) return nullptr;
    const size_t left = mContents->receivedDataSize - mContents->position;
    const auto* text = reinterpret_cast<const char*>(mContents->receivedData + mContents->position);
    const size_t length = left == 0 ? 0 : strnlen(text, left);
    if (length == left || padTo4(length + 1) > left) {
        setMalformed("text without end");
        return nullptr;
    }
    mContents->position += padTo4(length + 1);
    return text;
}

bool Parcel::enforceInterface(const char* interface) const {
    const char* token = readCString();
    return token != nullptr && strcmp(token, interface) == 0;
}

}  // namespace android::hardware
