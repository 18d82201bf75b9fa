// The service of the runtime's tests: returns its arguments, counts, calls back, breaks its
// contract. interfaces/1.0/IEcho.hal describes the methods.
#pragma once

#include <qortv/test/1.0/IEcho.h>
#include <qortv/test/1.0/ILoud.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

namespace qortv::test {

using namespace ::qortv::test::V1_0;
using ::android::sp;
using ::android::wp;
using ::android::hardware::hidl_array;
using ::android::hardware::hidl_bitfield;
using ::android::hardware::hidl_handle;
using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;
using ::android::hardware::Void;

// After this time without what it waits for a test takes its peer for hung. Far beyond what a call
// takes, also with sanitizers on a slow and busy machine: it finds hangs and measures nothing.
constexpr std::chrono::seconds kPatience{120};

// Returns how many descriptors the process has open at the moment.
int openDescriptors();
// Returns how many threads the process has.
int countThreads();

class Node : public ILoud {
  public:
    explicit Node(int32_t id);
    ~Node() override;
    Return<int32_t> getId() override;
    Return<int32_t> getVolume() override;
    // Returns how many nodes exist in this process.
    static int live();

  private:
    const int32_t mId;
};

class EchoService : public IEcho {
  public:
    EchoService();
    ~EchoService() override;

    Return<void> nothing() override;
    Return<int32_t> number() override;
    Return<bool> echoBool(bool value) override;
    Return<int64_t> echoI64(int64_t value) override;
    Return<float> echoFloat(float value) override;
    Return<double> echoDouble(double value) override;
    Return<Colour> echoColour(Colour value) override;
    Return<hidl_bitfield<Flags>> echoFlags(hidl_bitfield<Flags> value) override;
    Return<void> echoScalars(const Scalars& value, echoScalars_cb _hidl_cb) override;
    Return<void> echoString(const hidl_string& value, echoString_cb _hidl_cb) override;
    Return<void> echoBytes(const hidl_vec<uint8_t>& value, echoBytes_cb _hidl_cb) override;
    Return<void> echoWords(const hidl_vec<uint16_t>& value, echoWords_cb _hidl_cb) override;
    Return<void> echoStrings(const hidl_vec<hidl_string>& value, echoStrings_cb _hidl_cb) override;
    Return<void> echoColours(const hidl_vec<Colour>& value, echoColours_cb _hidl_cb) override;
    Return<void> echoNested(const hidl_vec<hidl_vec<uint32_t>>& value,
                            echoNested_cb _hidl_cb) override;
    Return<void> echoArray(const hidl_array<uint32_t, 4>& value, echoArray_cb _hidl_cb) override;
    Return<void> echoMatrix(const hidl_array<uint16_t, 3, 2>& value,
                            echoMatrix_cb _hidl_cb) override;
    Return<void> echoTree(const Tree& value, echoTree_cb _hidl_cb) override;
    Return<void> echoTrees(const hidl_vec<Tree>& value, echoTrees_cb _hidl_cb) override;
    Return<void> echoGroups(const Groups& value, echoGroups_cb _hidl_cb) override;
    Return<void> echoHandle(const hidl_handle& value, echoHandle_cb _hidl_cb) override;
    Return<void> echoHandles(const hidl_vec<hidl_handle>& value, echoHandles_cb _hidl_cb) override;
    Return<void> echoHolders(const hidl_vec<Holder>& value, echoHolders_cb _hidl_cb) override;
    Return<void> several(int32_t a, const hidl_string& b, several_cb _hidl_cb) override;

    Return<sp<IListener>> echoListener(const sp<IListener>& value) override;
    Return<sp<INode>> echoNode(const sp<INode>& value) override;
    Return<bool> sameNode(const sp<INode>& a, const sp<INode>& b) override;
    Return<sp<INode>> makeNode(int32_t id) override;
    Return<void> two(int32_t id, two_cb _hidl_cb) override;
    Return<int32_t> liveNodes() override;

    Return<int32_t> callBack(const sp<IListener>& value, int32_t event) override;
    Return<void> addListener(const sp<IListener>& value) override;
    Return<bool> removeListener(const sp<IListener>& value) override;
    Return<int32_t> notifyAll(int32_t event) override;
    Return<int32_t> notifyTogether(int32_t event) override;
    Return<void> postAll(int32_t event) override;
    Return<void> answerThenCall(const sp<IListener>& value, int32_t event,
                                answerThenCall_cb _hidl_cb) override;
    Return<bool> watchDeath(const sp<IListener>& value, uint64_t cookie) override;
    Return<bool> unwatchDeath(const sp<IListener>& value) override;
    Return<void> deaths(deaths_cb _hidl_cb) override;

    Return<void> post(int32_t number) override;
    Return<void> postSlow(int32_t number) override;
    Return<void> posts(posts_cb _hidl_cb) override;

    Return<void> forget(forget_cb _hidl_cb) override;
    Return<void> answerTwice(answerTwice_cb _hidl_cb) override;
    Return<int32_t> throwError() override;
    Return<bool> meet(int32_t count) override;

    Return<int32_t> openDescriptors() override;
    Return<int32_t> threads() override;
    Return<uint64_t> allocatedBytes() override;
    Return<void> quit() override;

  private:
    class DeathRecipient;

    std::vector<sp<IListener>> listeners();

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::vector<sp<IListener>> mListeners;
    std::vector<sp<IListener>> mWatched;
    std::vector<int32_t> mPosts;
    int32_t mInside = 0;
    int32_t mMeetings = 0;
    sp<DeathRecipient> mDeathRecipient;
};

}  // namespace qortv::test
