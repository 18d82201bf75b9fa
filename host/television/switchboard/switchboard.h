/**
 * Implements the middleware client's C functions on Linux: a slot per function, generated from the
 * headers in platform/middleware. A slot counts the call and hands it to the handler plugged into
 * it; without a handler it leaves the outputs alone and returns 0.
 *
 *     switchboard::Switchboard board;
 *     board.on<&a_qortvapi_time_get_utc_time>([](uint16_t* source) {
 *         *source = 9;
 *         return int64_t{1};
 *     });
 *
 * Calls may come from any thread at any time, also while handlers are plugged in. A call takes no
 * lock, except while calls are recorded.
 */
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace switchboard {

/** The part of a slot that does not depend on its function: the handler's address, the number of
 * calls, and the recording of calls. */
class SlotBase {
  public:
    /** Calls since the process started. */
    uint64_t calls() const { return mCalls.load(std::memory_order_relaxed); }

  protected:
    constexpr SlotBase() = default;
    /** Counts a call and, while calls are recorded, appends it to the recorded sequence. */
    void countAndRecord() {
        mCalls.fetch_add(1, std::memory_order_relaxed);
        if (sRecording.load(std::memory_order_relaxed)) appendToSequence();
    }
    /** The handler that is plugged in, of the slot's own handler type; null where there is none. */
    const void* handler() const { return mHandler.load(std::memory_order_acquire); }

  private:
    friend class Switchboard;
    /** The handler must stay alive while it is plugged in or a call runs in it; null: none. */
    void plug(const void* handler) { mHandler.store(handler, std::memory_order_release); }
    void appendToSequence() const;

    std::atomic<const void*> mHandler{nullptr};
    std::atomic<uint64_t> mCalls{0};
    static std::atomic<bool> sRecording;
};

template <typename Signature>
class Slot;

template <typename R, typename... A>
class Slot<R (*)(A...)> : public SlotBase {
  public:
    using Handler = std::function<R(A...)>;

    constexpr Slot() = default;

    /** Called by the C function: passes the call on to the handler. */
    R call(A... arguments) {
        countAndRecord();
        const auto* plugged = static_cast<const Handler*>(handler());
        if (plugged != nullptr) return (*plugged)(arguments...);
        if constexpr (!std::is_void_v<R>) return R{};
    }
};

/** The slot of the middleware function `Function`, given as its address. */
template <auto Function>
inline Slot<decltype(Function)> slot;

/** A slot and the name of its function. */
struct NamedSlot {
    const char* name;
    const SlotBase* slot;
};
/** All slots, in the order of the headers; generated. */
extern const NamedSlot kSlots[];
extern const size_t kSlotCount;

/**
 * A set of handlers. Plugging a handler in replaces the one that the slot had. The destructor
 * empties the slots that this object plugged a handler into; no call may be running in one of its
 * handlers at that time. One thread may use an object at a time.
 */
class Switchboard {
  public:
    Switchboard() = default;
    ~Switchboard();
    Switchboard(const Switchboard&) = delete;
    Switchboard& operator=(const Switchboard&) = delete;

    /** Plugs `handler`, callable with the arguments of `Function`, into its slot. */
    template <auto Function, typename H>
    void on(H&& handler) {
        using Handler = typename Slot<decltype(Function)>::Handler;
        plugAndKeep(slot<Function>, std::make_shared<const Handler>(std::forward<H>(handler)));
    }

    /** Starts to record the calls of all functions of the process, and forgets those recorded
     * before. */
    static void startRecording();
    /** Stops recording. Returns the names of the functions called since, in order. */
    static std::vector<std::string> stopRecording();

  private:
    struct Plugged {
        SlotBase* slot;
        std::shared_ptr<const void> handler;
    };
    void plugAndKeep(SlotBase& slot, std::shared_ptr<const void> handler);

    /** All that was plugged in, also what was replaced since: a call may be running in it. */
    std::vector<Plugged> mPlugged;
};

}  // namespace switchboard
