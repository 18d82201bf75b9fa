#include <transport/ObjectTable.h>

#include <hidl/Limits.h>
#include <transport/RemoteBinder.h>

namespace android::hardware::transport {

status_t ObjectTable::send(const sp<IBinder>& binder, flat_binder_object* description) {
    description->hdr.type = BINDER_TYPE_BINDER;
    description->cookie = 0;
    if (binder == nullptr) return OK;

    if (binder->localBinder() == nullptr) {
        auto* remote = static_cast<RemoteBinder*>(binder.get());
        if (remote->session().get() != mSession) return INVALID_OPERATION;
        description->hdr.type = BINDER_TYPE_HANDLE;
        description->cookie = remote->id();
        return OK;
    }

    std::lock_guard<std::mutex> lock(mMutex);
    if (mClosed) return DEAD_OBJECT;
    auto known = mExportedIds.find(binder.get());
    if (known != mExportedIds.end()) {
        ++mExported[known->second].sent;
        description->cookie = known->second;
        return OK;
    }
    if (mExported.size() >= limits::kSessionObjects) return NO_MEMORY;
    const uint64_t id = ++mLastId;
    mExported[id] = {binder, 1};
    mExportedIds[binder.get()] = id;
    description->cookie = id;
    return OK;
}

const char* ObjectTable::receive(const flat_binder_object& description, sp<IBinder>* binder) {
    const uint64_t id = description.cookie;
    binder->clear();
    if (description.hdr.type == BINDER_TYPE_HANDLE) {
        *binder = find(id);
        return *binder == nullptr ? "object that it does not have" : nullptr;
    }
    if (id == 0) return nullptr;

    std::lock_guard<std::mutex> lock(mMutex);
    auto known = mImported.find(id);
    if (known != mImported.end()) {
        *binder = known->second.reference.promote();
        if (known->second.received == UINT32_MAX) return "object sent too often";
        ++known->second.received;
        if (*binder != nullptr) return nullptr;
    } else if (mImported.size() >= limits::kSessionObjects) {
        return "more objects than allowed";
    } else {
        known = mImported.insert({id, {nullptr, nullptr, 1}}).first;
    }
    // The number is new, or the last reference to its RemoteBinder has just gone; the forget() of
    // that one will find this one in its place.
    auto* remote = new RemoteBinder(mSession, id);
    *binder = remote;
    known->second.reference = *binder;
    known->second.remote = remote;
    return nullptr;
}

sp<BHwBinder> ObjectTable::find(uint64_t id) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto known = mExported.find(id);
    if (known == mExported.end()) return nullptr;
    return known->second.binder->localBinder();
}

bool ObjectTable::release(uint64_t id, uint32_t count, sp<IBinder>* dropped) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mClosed) return true;
    auto known = mExported.find(id);
    if (known == mExported.end() || count == 0 || count > known->second.sent) return false;
    known->second.sent -= count;
    if (known->second.sent == 0) {
        *dropped = std::move(known->second.binder);
        mExportedIds.erase(dropped->get());
        mExported.erase(known);
    }
    return true;
}

uint32_t ObjectTable::forget(uint64_t id, const RemoteBinder* remote) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto known = mImported.find(id);
    if (known == mImported.end() || known->second.remote != remote) return 0;
    const uint32_t count = known->second.received;
    mImported.erase(known);
    return count;
}

void ObjectTable::close(std::vector<sp<IBinder>>* dropped, std::vector<sp<RemoteBinder>>* remotes) {
    std::lock_guard<std::mutex> lock(mMutex);
    mClosed = true;
    for (auto& entry : mExported) dropped->push_back(std::move(entry.second.binder));
    mExported.clear();
    mExportedIds.clear();
    for (auto& entry : mImported) {
        sp<IBinder> binder = entry.second.reference.promote();
        if (binder != nullptr) remotes->push_back(static_cast<RemoteBinder*>(binder.get()));
    }
}

}  // namespace android::hardware::transport
