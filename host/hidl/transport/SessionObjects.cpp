// The binders in a session's messages.
#include <transport/Session.h>

#include <algorithm>
#include <utility>

#include <transport/Log.h>

namespace android::hardware::transport {

static bool isLocal(const sp<IBinder>& binder) {
    return binder != nullptr && binder->localBinder() != nullptr;
}

status_t Session::describeBinders(ParcelContents* contents, std::vector<sp<IBinder>>* returned) {
    if (contents == nullptr || contents->binders.empty()) return OK;
    const std::vector<sp<IBinder>>& binders = contents->binders;
    if (isOpener() && std::any_of(binders.begin(), binders.end(), isLocal)) {
        const status_t status = openServing();
        if (status != OK) return status;
    }
    status_t status = OK;
    size_t index = 0;
    contents->visitBindersToSend([&](flat_binder_object* description) {
        const sp<IBinder>& binder = binders[index];
        status = mObjects.send(binder, description);
        if (status != OK) return false;
        ++index;
        if (description->hdr.type == BINDER_TYPE_HANDLE && returned != nullptr) {
            returned->push_back(binder);
        }
        return true;
    });
    if (status == OK) return OK;
    takeBackBinders(contents);
    if (status == INVALID_OPERATION) {
        HIDL_LOGE("An object of another process cannot be passed to process %d", mPeer.pid);
    } else if (status == NO_MEMORY) {
        HIDL_LOGE("Process %d holds more objects than allowed", mPeer.pid);
    }
    return status;
}

void Session::takeBackBinders(ParcelContents* contents) {
    if (contents == nullptr) return;
    contents->visitBindersToSend([&](flat_binder_object* description) {
        sp<IBinder> dropped;
        if (description->hdr.type == BINDER_TYPE_BINDER && description->cookie != 0) {
            mObjects.release(description->cookie, 1, &dropped);
        }
        return true;
    });
}

uint64_t Session::keepUntilConfirmed(std::vector<sp<IBinder>> returned) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mUnconfirmed.size() >= limits::kUnconfirmedReplies) return 0;
    if (!isDead()) mUnconfirmed[++mLastReceipt] = std::move(returned);
    return mLastReceipt;
}

const char* Session::resolveBinders(ParcelContents* contents) {
    const char* reason = nullptr;
    contents->visitReceivedBinders([&](flat_binder_object* description) {
        contents->binders.emplace_back();
        reason = mObjects.receive(*description, &contents->binders.back());
        description->hdr.type = BINDER_TYPE_BINDER;
        return reason == nullptr;
    });
    return reason;
}

void Session::forget(uint64_t id, const RemoteBinder* remote) {
    const uint32_t count = mObjects.forget(id, remote);
    if (count > 0 && !isDead()) queueNotice({wire::NoticeType::kReleased, count, id});
}

}  // namespace android::hardware::transport
