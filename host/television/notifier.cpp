#include "notifier.h"

#include <algorithm>
#include <ctime>

#include "log.h"
#include "middleware/broadcast.h"
#include "middleware/channellist.h"
#include "middleware/svctx.h"
#include "middleware/time.h"

namespace television {
namespace {

/** The middleware hands small integers over as pointers. */
void* asPointer(uint32_t value) {
    return reinterpret_cast<void*>(uintptr_t{value});
}

/** The shape of list updates and of broadcast notifications. */
using UpdateHandler = void (*)(int32_t, void*, void*, void*, void*, void*);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_update_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_tvprovider_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_svlid_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_tslid_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_bisskey_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_channellist_nwl_nfy_fct>);
static_assert(std::is_same_v<UpdateHandler, a_qortvapi_broadcast_nfy_fct>);

/** What a registration is told when the single updates do not fit any more. */
Event everythingChanged(RegistrationKey to, int32_t lastCode) {
    const bool channels =
            to == registration<&a_qortvapi_channellist_register_callback>() ||
            to == registration<&a_qortvapi_tvprovider_channellist_register_callback>();
    return {to, channels ? int32_t{CHANNEL_LIST_NFY_LOADED} : lastCode, {}};
}

}  // namespace

void Notifier::start(std::chrono::milliseconds tick) {
    mStop = false;
    mThread = std::thread([this, tick] { run(tick); });
}

void Notifier::stop() {
    if (!mThread.joinable()) return;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mStop = true;
        mChanged.notify_all();
    }
    mThread.join();
    mPending.clear();
}

void Notifier::post(const Event& event) {
    if (mRegistrations.empty(event.to)) return;
    std::lock_guard<std::mutex> lock(mMutex);
    const auto last = std::find_if(mPending.rbegin(), mPending.rend(),
                                   [&](const Event& e) { return e.to == event.to; });
    if (last != mPending.rend() && *last == event) return;
    if (mPending.size() >= kMostPending) makeRoom();
    mPending.push_back(event);
    mChanged.notify_all();
}

/** Melts the updates of each registration into one; selections keep the last of each. */
void Notifier::makeRoom() {
    LOG_TV_WARN("{} notifications wait for slow handlers: they are put together", mPending.size());
    std::deque<Event> melted;
    for (auto event = mPending.rbegin(); event != mPending.rend(); ++event) {
        const bool known = std::any_of(melted.begin(), melted.end(),
                                       [&](const Event& e) { return e.to == event->to; });
        if (known) continue;
        const bool selection =
                event->to.slot == &switchboard::slot<&c_svctx_set_listener> ||
                event->to == registration<&a_qortvapi_broadcast_register_callback>() ||
                event->to == registration<&a_qortvapi_svlid_update_register_callback>() ||
                event->to == registration<&a_qortvapi_tslid_update_register_callback>();
        melted.push_front(selection ? *event : everythingChanged(event->to, event->code));
    }
    mPending = std::move(melted);
}

void Notifier::run(std::chrono::milliseconds tick) {
    using Clock = std::chrono::steady_clock;
    auto nextTick = Clock::now() + tick;
    std::unique_lock<std::mutex> lock(mMutex);
    while (!mStop) {
        mChanged.wait_until(lock, nextTick, [this] { return mStop || !mPending.empty(); });
        if (mStop) break;
        const bool due = Clock::now() >= nextTick;
        std::deque<Event> events;
        events.swap(mPending);
        lock.unlock();
        for (const Event& event : events) deliver(event);
        if (due) {
            deliverTick();
            nextTick += tick;
            // Handlers that take longer than a tick get fewer, not all of them at once.
            if (nextTick <= Clock::now()) nextTick = Clock::now() + tick;
        }
        lock.lock();
    }
}

void Notifier::deliver(const Event& event) const {
    const auto& a = event.arguments;
    if (event.to.slot == &switchboard::slot<&c_svctx_set_listener>) {
        mRegistrations.each<c_svctx_nfy_fct>(event.to, [&](c_svctx_nfy_fct handler, void* tag) {
            handler(event.to.number, static_cast<uint32_t>(event.code), a[0], a[1], tag);
        });
        return;
    }
    mRegistrations.each<UpdateHandler>(event.to, [&](UpdateHandler handler, void* tag) {
        handler(event.code, tag, asPointer(a[0]), asPointer(a[1]), asPointer(a[2]),
                asPointer(a[3]));
    });
}

void Notifier::deliverTick() const {
    const auto now = static_cast<uint32_t>(std::time(nullptr));
    mRegistrations.each<a_qortvapi_time_dt_nfy_fct>(
            registration<&a_qortvapi_time_register_dt_event_callback>(),
            [&](a_qortvapi_time_dt_nfy_fct handler, void* tag) {
                handler(TIME_NFY_SECOND, tag, asPointer(now));
            });
}

}  // namespace television
