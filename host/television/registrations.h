/** The notification handlers that clients registered with the television. */
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "switchboard.h"

namespace television {

/** Which registration: the slot of its function, and the context or index where it has one. */
struct RegistrationKey {
    const switchboard::SlotBase* slot = nullptr;
    uint32_t number = 0;

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

/**
 * Handlers by registration. Several handlers of one registration all stay; the same handler again
 * gets the new tag. Any thread.
 */
class Registrations {
  public:
    /** A handler of any type; cast back to the registration's own type for the call. */
    using Function = void (*)();

    /** Called, without locks, when a registration gets its first handler. To be set before the
     * first `add`. */
    void onFirst(std::function<void(RegistrationKey)> callback) { mOnFirst = std::move(callback); }

    int32_t add(RegistrationKey key, Function function, void* tag);
    int32_t remove(RegistrationKey key, Function function);
    bool empty(RegistrationKey key) const;
    void clear();

    /** Calls `call(handler, tag)` for each handler, in the order in which they came, without locks.
     */
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
    std::map<RegistrationKey, std::vector<Entry>> mEntries;  // guarded by mMutex
};

/** Plugs every registration function of the middleware client library. */
void plugRegistrations(switchboard::Switchboard& board, Registrations& registrations);

}  // namespace television
