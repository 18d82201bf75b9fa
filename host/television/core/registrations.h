/** The notification handlers that clients have registered with the television. */
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "television/switchboard/switchboard.h"

namespace television {

/** Identifies a registration: the slot of the registration function, and the context or index for
 * which it was called. */
struct RegistrationKey {
    const switchboard::SlotBase* slot = nullptr;
    uint32_t number = 0;  ///< context or index; 0 for functions that take none

    bool operator<(const RegistrationKey& other) const {
        return std::make_pair(slot, number) < std::make_pair(other.slot, other.number);
    }
    bool operator==(const RegistrationKey& other) const {
        return slot == other.slot && number == other.number;
    }
};

/** The key of the registration function `Register`. */
template <auto Register>
RegistrationKey registration(uint32_t number = 0) {
    return {&switchboard::slot<Register>, number};
}

/** The registrations whose handlers are notified of changes of channel lists: that of applications
 * and that of the TV provider. */
std::array<RegistrationKey, 2> channelListRegistrations();

/**
 * Handlers by registration. A registration may have several handlers; one that is added again only
 * gets the new tag. A tag is the client's own pointer, which its handler is called with. Any
 * thread; no lock is held while handlers or callbacks run.
 */
class Registrations {
  public:
    /** A handler of any type; cast back to the registration's own type for the call. */
    using Function = void (*)();

    /** Sets what is called when a registration gets its first handler. To be set before the first
     * `add`. */
    void onFirst(std::function<void(RegistrationKey)> callback) { mOnFirst = std::move(callback); }

    /** Returns TV_OK, or TV_INVALID_ARGUMENT when the handler is null. */
    int32_t add(RegistrationKey key, Function function, void* tag);
    /** Returns TV_OK, or TV_NOT_FOUND when the registration has no such handler. */
    int32_t remove(RegistrationKey key, Function function);
    /** Whether a registration has no handlers. */
    bool empty(RegistrationKey key) const;
    void clear();

    /** Calls `call(handler, tag)` for each handler of a registration, in the order in which they
     * were added. */
    template <typename Handler, typename Call>
    void each(RegistrationKey key, Call call) const {
        for (const auto& [function, tag] : handlers(key)) {
            call(reinterpret_cast<Handler>(function), tag);
        }
    }

  private:
    using Entry = std::pair<Function, void*>;
    std::vector<Entry> handlers(RegistrationKey key) const;

    std::function<void(RegistrationKey)> mOnFirst;
    mutable std::mutex mMutex;
    std::map<RegistrationKey, std::vector<Entry>> mEntries;  ///< guarded by mMutex
};

/** Plugs in every registration function of the middleware client library. */
void plugRegistrations(switchboard::Switchboard& board, Registrations& registrations);

}  // namespace television
