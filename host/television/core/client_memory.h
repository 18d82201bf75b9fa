/** Writes through the pointers that a client passes to the middleware functions. */
#pragma once

#include <cstdint>

#include "middleware/records.h"
#include "television/lists/lists.h"

namespace television {

/** Returns whether an address that a client gave can be written at all: it is neither null nor the
 * value that mmap returns when it fails. */
inline bool writable(const void* address) {
    const auto value = reinterpret_cast<uintptr_t>(address);
    return value != 0 && value != ~uintptr_t{0};
}

/** Writes a value, converted to the pointer's type, where the address is writable. */
template <typename T, typename V>
void put(T* to, V value) {
    if (writable(to)) *to = static_cast<T>(value);
}

/**
 * Writes the record of a service of `list` and that of its multiplex, each where its address is
 * writable. A service without a multiplex gets a record of zeros.
 */
void putPair(const ChannelList& list, const SVL_REC_T& record, SVL_REC_T* service,
             TSL_REC_T* multiplex);

}  // namespace television
