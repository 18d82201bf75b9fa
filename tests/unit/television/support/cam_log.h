/** The log of the notifications of the Common Interface module: copies, since the records that come
 * with them are valid during the call only. */
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "middleware/ci.h"
#include "support/eventually.h"

/** A UTF-16 text; empty for a null pointer. */
using CamSeenText = std::optional<std::u16string>;

/** One notification. */
struct CamSeen {
    uint32_t handle = 0;
    uintptr_t tag = 0;
    int32_t condition = 0;
    uint32_t value = 0;          ///< of conditions that carry one, or the first bytes of a record
    std::vector<uint8_t> bytes;  ///< of records other than menus, lists and enquiries
    uint32_t id = 0;             ///< of menus, lists and enquiries, like all below
    CamSeenText title;           ///< or the enquiry's text
    CamSeenText subtitle;
    CamSeenText bottom;
    std::vector<CamSeenText> items;
    size_t beyond = 0;  ///< number of pointers behind the last item that are not null
    uint8_t length = 0;
    bool blind = false;
};

/** There is one for the process, since handlers are plain functions. Any thread. */
class CamLog {
  public:
    static CamLog& instance() {
        static CamLog log;
        return log;
    }

    void clear() {
        std::lock_guard<std::mutex> lock(mMutex);
        mSeen.clear();
        mTaken = 0;
    }

    /** Waits for the next notification and takes it. When none comes within half a minute, the test
     * fails and the result has the condition -1. */
    CamSeen next() {
        std::unique_lock<std::mutex> lock(mMutex);
        const bool came = mChanged.wait_for(lock, kPatience, [&] { return mSeen.size() > mTaken; });
        EXPECT_TRUE(came) << "no notification";
        if (!came) {
            CamSeen none;
            none.condition = -1;
            return none;
        }
        return mSeen[mTaken++];
    }
    /** The same; the notification must have that condition. */
    CamSeen next(int32_t condition) {
        CamSeen seen = next();
        EXPECT_EQ(seen.condition, condition);
        return seen;
    }
    /** How many notifications have come and not been taken. */
    size_t untaken() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mSeen.size() - mTaken;
    }

    /** The handler to register; otherHandler() does the same. */
    static void handler(uint32_t handle, void* tag, int32_t condition, void* data) {
        CamSeen seen = copyOf(condition, data);
        seen.handle = handle;
        seen.tag = reinterpret_cast<uintptr_t>(tag);
        seen.condition = condition;
        CamLog& log = instance();
        std::lock_guard<std::mutex> lock(log.mMutex);
        log.mSeen.push_back(std::move(seen));
        log.mChanged.notify_all();
    }
    static void otherHandler(uint32_t handle, void* tag, int32_t condition, void* data) {
        handler(handle, tag, condition, data);
    }

  private:
    static CamSeenText text(const uint16_t* units) {
        if (units == nullptr) return std::nullopt;
        std::u16string copy;
        for (; *units != 0; ++units) copy += static_cast<char16_t>(*units);
        return copy;
    }

    static CamSeen copyOf(int32_t condition, const void* data) {
        CamSeen seen;
        const auto record = [&](size_t size) {
            const auto* bytes = static_cast<const uint8_t*>(data);
            seen.bytes.assign(bytes, bytes + size);
            std::memcpy(&seen.value, bytes, std::min(size, sizeof(seen.value)));
        };
        switch (condition) {
            case QORTVAPI_CI_NFY_COND_MMI_ENQUIRY: {
                const auto& enquiry = *static_cast<const CI_MMI_ENQ_T*>(data);
                seen.id = enquiry.ui4_id;
                seen.title = text(enquiry.w2s_text);
                seen.length = enquiry.ui1_answer_length;
                seen.blind = enquiry.b_blind_answer != 0;
                break;
            }
            case QORTVAPI_CI_NFY_COND_MMI_MENU:
            case QORTVAPI_CI_NFY_COND_MMI_LIST: {
                const auto& menu = *static_cast<const CI_MMI_MENU_T*>(data);
                seen.id = menu.ui4_id;
                seen.title = text(menu.w2s_title);
                seen.subtitle = text(menu.w2s_subtitle);
                seen.bottom = text(menu.w2s_bottom);
                for (int i = 0; i < CI_MMI_MENU_MAX_ITEMS; ++i) {
                    if (i < menu.ui1_item_count) {
                        seen.items.push_back(text(menu.aw2s_items[i]));
                    } else if (menu.aw2s_items[i] != nullptr) {
                        ++seen.beyond;
                    }
                }
                break;
            }
            case QORTVAPI_CI_NFY_COND_MMI_CLOSE:
            case QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS:
                record(2);
                break;
            case QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE:
                record(4);
                break;
            case QORTVAPI_CI_NFY_COND_ERROR:
                record(8);
                break;
            default:
                seen.value = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(data));
        }
        return seen;
    }

    std::mutex mMutex;
    std::condition_variable mChanged;
    std::vector<CamSeen> mSeen;
    size_t mTaken = 0;
};
