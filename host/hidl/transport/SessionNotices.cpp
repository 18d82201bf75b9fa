// The notices of a session: sent in order with its oneway calls, without ever blocking.
#include <transport/Session.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include <transport/FrameSender.h>

namespace android::hardware::transport {

using wire::Notice;
using wire::NoticeType;

// Notices that go into one message.
static constexpr size_t kNoticeBatch = 256;

bool Session::serveNotices(const wire::FrameHeader& header, const Parcel& data) {
    const uint8_t* at = data.contentsOrNull()->storage(0, 0) + sizeof(header);
    for (size_t left = header.dataSize; left > 0; left -= sizeof(Notice), at += sizeof(Notice)) {
        Notice notice;
        memcpy(&notice, at, sizeof(notice));
        if (!serveNotice(notice)) return false;
    }
    return true;
}

// Returns false if the session is over.
bool Session::serveNotice(const Notice& notice) {
    switch (notice.type) {
        case NoticeType::kReleased: {
            sp<IBinder> dropped;
            if (mObjects.release(notice.id, notice.count, &dropped)) return true;
            end("release of an object that it does not have");
            return false;
        }
        case NoticeType::kReceived: {
            std::vector<sp<IBinder>> dropped;  // goes after the lock
            std::lock_guard<std::mutex> lock(mMutex);
            auto known = mUnconfirmed.find(notice.id);
            if (known == mUnconfirmed.end()) break;
            dropped = std::move(known->second);
            mUnconfirmed.erase(known);
            return true;
        }
        case NoticeType::kConnectionWanted:
            if (!isOpener()) break;
            openServing();
            return true;
    }
    if (!isDead()) end("notice that makes no sense");
    return false;
}

void Session::queueNotice(const Notice& notice) {
    {
        std::lock_guard<std::mutex> lock(mPendingMutex);
        mPendingNotices.push_back(notice);
        mPendingCount = mPendingNotices.size();
    }
    flushNotices();
}

// A thread that finds the send mutex taken leaves its notice to the holder, who checks for pending
// notices again after it has released the mutex. A notice that the peer's full socket refuses stays
// pending until the next call or notice.
void Session::flushNotices() {
    while (mPendingCount > 0) {
        const sp<Connection> notices = noticeConnection();
        std::unique_lock<std::mutex> sending(mSendMutex, std::try_to_lock);
        if (notices == nullptr || !sending.owns_lock()) return;

        std::lock_guard<std::mutex> lock(mPendingMutex);
        const size_t count = std::min(mPendingNotices.size(), kNoticeBatch);
        if (count == 0) continue;
        const SendResult result = sendNotices(notices->fd(), mPendingNotices.data(), count);
        if (result != SendResult::kSent) return;  // the connection's reader notices a broken one
        mPendingNotices.erase(mPendingNotices.begin(),
                              mPendingNotices.begin() + static_cast<ptrdiff_t>(count));
        mPendingCount = mPendingNotices.size();
    }
}

// Returns the connection for notices and oneway calls; null once the session is over.
sp<Connection> Session::noticeConnection() {
    std::lock_guard<std::mutex> lock(mMutex);
    return mNoticeConnection;
}

}  // namespace android::hardware::transport
