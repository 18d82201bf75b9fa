#include "EchoService.h"

#include <dirent.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

#include <hidl/HidlTransportSupport.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#include <sanitizer/allocator_interface.h>
#define QORTV_ASAN 1
#endif
#endif

namespace qortv::test {

using ::android::hardware::hidl_death_recipient;
using ::android::hardware::interfacesEqual;
using ::android::hidl::base::V1_0::IBase;

// Counts the entries of a folder, without links to pipes: the runtime has no pipes, but a sanitizer
// that runs its symbolizer has.
static int countEntries(const std::string& folder) {
    int count = 0;
    DIR* directory = opendir(folder.c_str());
    while (const dirent* entry = readdir(directory)) {
        if (entry->d_name[0] == '.') continue;
        char target[8] = {};
        const ssize_t size =
                readlink((folder + "/" + entry->d_name).c_str(), target, sizeof(target) - 1);
        if (size < 5 || std::string(target, 5) != "pipe:") ++count;
    }
    closedir(directory);
    return count;
}

int openDescriptors() {
    return countEntries("/proc/self/fd") - 1;  // without the descriptor of the folder itself
}

int countThreads() {
    return countEntries("/proc/self/task");
}

static std::atomic<int> sLiveNodes{0};

Node::Node(int32_t id) : mId(id) {
    ++sLiveNodes;
}
Node::~Node() {
    --sLiveNodes;
}
Return<int32_t> Node::getId() {
    return mId;
}
Return<int32_t> Node::getVolume() {
    return mId * 10;
}
int Node::live() {
    return sLiveNodes;
}

class EchoService::DeathRecipient : public hidl_death_recipient {
  public:
    void serviceDied(uint64_t cookie, const wp<IBase>&) override {
        std::lock_guard<std::mutex> lock(mutex);
        cookies.push_back(cookie);
    }
    std::mutex mutex;
    std::vector<uint64_t> cookies;
};

EchoService::EchoService() : mDeathRecipient(new DeathRecipient) {}
EchoService::~EchoService() = default;

Return<void> EchoService::nothing() {
    return Void();
}
Return<int32_t> EchoService::number() {
    return 42;
}
Return<bool> EchoService::echoBool(bool value) {
    return value;
}
Return<int64_t> EchoService::echoI64(int64_t value) {
    return value;
}
Return<float> EchoService::echoFloat(float value) {
    return value;
}
Return<double> EchoService::echoDouble(double value) {
    return value;
}
Return<Colour> EchoService::echoColour(Colour value) {
    return value;
}
Return<hidl_bitfield<Flags>> EchoService::echoFlags(hidl_bitfield<Flags> value) {
    return value;
}
Return<void> EchoService::echoScalars(const Scalars& value, echoScalars_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoString(const hidl_string& value, echoString_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoBytes(const hidl_vec<uint8_t>& value, echoBytes_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoWords(const hidl_vec<uint16_t>& value, echoWords_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoStrings(const hidl_vec<hidl_string>& value, echoStrings_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoColours(const hidl_vec<Colour>& value, echoColours_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoNested(const hidl_vec<hidl_vec<uint32_t>>& value,
                                     echoNested_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoArray(const hidl_array<uint32_t, 4>& value, echoArray_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoMatrix(const hidl_array<uint16_t, 3, 2>& value,
                                     echoMatrix_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoTree(const Tree& value, echoTree_cb _hidl_cb) {
    // Copied, so that every part is read here.
    const Tree copy = value;
    _hidl_cb(copy);
    return Void();
}
Return<void> EchoService::echoTrees(const hidl_vec<Tree>& value, echoTrees_cb _hidl_cb) {
    const hidl_vec<Tree> copy = value;
    _hidl_cb(copy);
    return Void();
}
Return<void> EchoService::echoGroups(const Groups& value, echoGroups_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoHandle(const hidl_handle& value, echoHandle_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoHandles(const hidl_vec<hidl_handle>& value, echoHandles_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::echoHolders(const hidl_vec<Holder>& value, echoHolders_cb _hidl_cb) {
    _hidl_cb(value);
    return Void();
}
Return<void> EchoService::several(int32_t a, const hidl_string& b, several_cb _hidl_cb) {
    _hidl_cb(a == INT32_MAX ? a : a + 1, std::string(b) + "!", {1u, 2u, 3u}, true);
    return Void();
}

Return<sp<IListener>> EchoService::echoListener(const sp<IListener>& value) {
    return value;
}
Return<sp<INode>> EchoService::echoNode(const sp<INode>& value) {
    return value;
}
Return<bool> EchoService::sameNode(const sp<INode>& a, const sp<INode>& b) {
    return interfacesEqual(a, b);
}
Return<sp<INode>> EchoService::makeNode(int32_t id) {
    return new Node(id);
}
Return<void> EchoService::two(int32_t id, two_cb _hidl_cb) {
    _hidl_cb(new Node(id), new Node(id + 1));
    return Void();
}
Return<int32_t> EchoService::liveNodes() {
    return Node::live();
}

Return<int32_t> EchoService::callBack(const sp<IListener>& value, int32_t event) {
    return value->notify(event, 1, 2, 3, 4, 5, 6).withDefault(-1);
}
Return<void> EchoService::addListener(const sp<IListener>& value) {
    std::lock_guard<std::mutex> lock(mMutex);
    mListeners.push_back(value);
    return Void();
}
Return<bool> EchoService::removeListener(const sp<IListener>& value) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto known = std::find_if(mListeners.begin(), mListeners.end(), [&](const sp<IListener>& kept) {
        return interfacesEqual(kept, value);
    });
    if (known == mListeners.end()) return false;
    mListeners.erase(known);
    return true;
}
std::vector<sp<IListener>> EchoService::listeners() {
    std::lock_guard<std::mutex> lock(mMutex);
    return mListeners;
}
Return<int32_t> EchoService::notifyAll(int32_t event) {
    int32_t answered = 0;
    for (const sp<IListener>& listener : listeners()) {
        if (listener->notify(event, 1, 2, 3, 4, 5, 6).isOk()) ++answered;
    }
    return answered;
}
Return<int32_t> EchoService::notifyTogether(int32_t event) {
    std::atomic<int32_t> answered{0};
    std::vector<std::thread> threads;
    for (const sp<IListener>& listener : listeners()) {
        threads.emplace_back([&, listener] {
            if (listener->notify(event, 1, 2, 3, 4, 5, 6).isOk()) ++answered;
        });
    }
    for (std::thread& thread : threads) thread.join();
    return answered.load();
}
Return<void> EchoService::postAll(int32_t event) {
    for (const sp<IListener>& listener : listeners()) listener->post(event).isOk();
    return Void();
}
Return<void> EchoService::answerThenCall(const sp<IListener>& value, int32_t event,
                                         answerThenCall_cb _hidl_cb) {
    _hidl_cb("answered");
    value->notify(event, 1, 2, 3, 4, 5, 6).isOk();
    return Void();
}
Return<bool> EchoService::watchDeath(const sp<IListener>& value, uint64_t cookie) {
    std::lock_guard<std::mutex> lock(mMutex);
    mWatched.push_back(value);
    return value->linkToDeath(mDeathRecipient, cookie);
}
Return<bool> EchoService::unwatchDeath(const sp<IListener>& value) {
    std::lock_guard<std::mutex> lock(mMutex);
    for (auto watched = mWatched.begin(); watched != mWatched.end(); ++watched) {
        if (!interfacesEqual(*watched, value)) continue;
        bool unlinked = (*watched)->unlinkToDeath(mDeathRecipient);
        mWatched.erase(watched);
        return unlinked;
    }
    return false;
}
Return<void> EchoService::deaths(deaths_cb _hidl_cb) {
    std::vector<uint64_t> cookies;
    {
        std::lock_guard<std::mutex> lock(mDeathRecipient->mutex);
        cookies = mDeathRecipient->cookies;
    }
    _hidl_cb(cookies);
    return Void();
}

Return<void> EchoService::post(int32_t number) {
    std::lock_guard<std::mutex> lock(mMutex);
    mPosts.push_back(number);
    return Void();
}
Return<void> EchoService::postSlow(int32_t number) {
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return post(number);
}
Return<void> EchoService::posts(posts_cb _hidl_cb) {
    std::vector<int32_t> numbers;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        numbers = mPosts;
    }
    _hidl_cb(numbers);
    return Void();
}

Return<void> EchoService::forget(forget_cb) {
    return Void();
}
Return<void> EchoService::answerTwice(answerTwice_cb _hidl_cb) {
    _hidl_cb("once");
    _hidl_cb("twice");
    return Void();
}
Return<int32_t> EchoService::throwError() {
    throw std::runtime_error("thrown on purpose");
}

Return<bool> EchoService::meet(int32_t count) {
    std::unique_lock<std::mutex> lock(mMutex);
    const int32_t meeting = mMeetings;
    if (++mInside == count) {
        mInside = 0;
        ++mMeetings;
        mChanged.notify_all();
        return true;
    }
    if (mChanged.wait_for(lock, kPatience, [&] { return mMeetings != meeting; })) {
        return true;
    }
    --mInside;
    return false;
}

Return<int32_t> EchoService::openDescriptors() {
    return test::openDescriptors();
}
Return<int32_t> EchoService::threads() {
    return countThreads();
}
Return<uint64_t> EchoService::allocatedBytes() {
#if QORTV_ASAN
    return __sanitizer_get_current_allocated_bytes();
#else
    return mallinfo2().uordblks;
#endif
}
Return<void> EchoService::quit() {
    _exit(0);
}

}  // namespace qortv::test
