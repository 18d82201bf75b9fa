#include <transport/RemoteBinder.h>

#include <hwbinder/Parcel.h>

namespace android::hardware::transport {

RemoteBinder::RemoteBinder(const sp<Session>& session, uint64_t id) : mSession(session), mId(id) {}

RemoteBinder::~RemoteBinder() {
    mSession->forget(mId, this);
}

status_t RemoteBinder::transact(uint32_t code, const Parcel& data, Parcel* reply, uint32_t flags,
                                TransactCallback callback) {
    const status_t status = mSession->transact(mId, code, data, reply, flags);
    if (status == OK && callback != nullptr && reply != nullptr) callback(*reply);
    return status;
}

status_t RemoteBinder::linkToDeath(const sp<DeathRecipient>& recipient, void* cookie, uint32_t) {
    if (recipient == nullptr) return BAD_VALUE;
    if (!mSession->watch()) return DEAD_OBJECT;
    std::lock_guard<std::mutex> lock(mMutex);
    // A session that ends from here on finds this link; one that ended before shows in isDead().
    mLinks.push_back({recipient, cookie});
    if (mSession->isDead()) {
        mLinks.pop_back();
        return DEAD_OBJECT;
    }
    return OK;
}

status_t RemoteBinder::unlinkToDeath(const wp<DeathRecipient>& recipient, void* cookie, uint32_t,
                                     wp<DeathRecipient>* outRecipient) {
    sp<DeathRecipient> removed;  // goes after the lock
    std::lock_guard<std::mutex> lock(mMutex);
    if (mDeathNotified) return DEAD_OBJECT;
    for (auto link = mLinks.begin(); link != mLinks.end(); ++link) {
        if (recipient == link->recipient && (cookie == nullptr || link->cookie == cookie)) {
            removed = link->recipient;
            if (outRecipient != nullptr) *outRecipient = removed;
            mLinks.erase(link);
            return OK;
        }
    }
    return NAME_NOT_FOUND;
}

bool RemoteBinder::isWatched() {
    std::lock_guard<std::mutex> lock(mMutex);
    return !mLinks.empty();
}

void RemoteBinder::notifyDeath() {
    std::vector<Link> links;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mDeathNotified = true;
        links.swap(mLinks);
    }
    for (const Link& link : links) link.recipient->binderDied(this);
}

}  // namespace android::hardware::transport
