/**
 * The one place where the middleware client's C functions arrive on Linux: a slot per function,
 * generated from the headers in platform/middleware. A slot counts the call and hands it to the
 * handler plugged into it; without a handler it leaves the outputs alone and returns 0.
 *
 *     switchboard::Switchboard tv;
 *     tv.on<&a_qortvapi_time_get_utc_time>([](uint16_t* source) { *source = 9; return int64_t{1};
 * });
 *
 * Calls may come from any thread at any time, also while handlers are plugged in.
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

/** What all slots share: the call count and the place in the recorded sequence of calls. */
class SlotBase {
  public:
    /** Calls since the process started. */
    uint64_t calls() const { return mCalls.load(std::memory_order_relaxed); }

  protected:
    constexpr SlotBase() = default;
    void note() {
        mCalls.fetch_add(1, std::memory_order_relaxed);
        if (sRecording.load(std::memory_order_relaxed)) record();
    }

  private:
    friend class Switchboard;
    void record() const;

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

    R call(A... arguments) {
        note();
        const Handler* handler = mHandler.load(std::memory_order_acquire);
        if (handler != nullptr) return (*handler)(arguments...);
        if constexpr (!std::is_void_v<R>) return R{};
    }

    void plug(const Handler* handler) { mHandler.store(handler, std::memory_order_release); }

  private:
    std::atomic<const Handler*> mHandler{nullptr};
};

/** The slot of the middleware function `Function`, given as its address. */
template <auto Function>
inline Slot<decltype(Function)> slot;

/** Every slot with the name of its function, in the order of the headers. */
struct NamedSlot {
    const char* name;
    const SlotBase* slot;
};
extern const NamedSlot kSlots[];
extern const size_t kSlotCount;

/**
 * A set of handlers. Plugging a handler replaces whichever was there; the destructor unplugs the
 * slots that this object plugged, so no call may still be running in one of its handlers then.
 * One thread may use an object at a time.
 */
class Switchboard {
  public:
    Switchboard() = default;
    ~Switchboard() {
        for (const auto& unplug : mUnplug) unplug();
    }
    Switchboard(const Switchboard&) = delete;
    Switchboard& operator=(const Switchboard&) = delete;

    /** Plugs `handler`, callable with the arguments of `Function`, into its slot. */
    template <auto Function, typename H>
    void on(H&& handler) {
        using Handler = typename Slot<decltype(Function)>::Handler;
        // A replaced handler stays alive with this object: a call may be running in it.
        auto kept = std::make_shared<const Handler>(std::forward<H>(handler));
        slot<Function>.plug(kept.get());
        mUnplug.push_back([kept] { slot<Function>.plug(nullptr); });
    }

    /** Starts recording the names of all functions called from now on, in order, and forgets
     * earlier ones. */
    static void startRecording();
    /** Stops recording and returns the names. */
    static std::vector<std::string> stopRecording();

  private:
    std::vector<std::function<void()>> mUnplug;
};

}  // namespace switchboard
