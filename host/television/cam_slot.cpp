#include "cam_slot.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "cam_file.h"
#include "log.h"
#include "middleware/result_codes.h"

namespace television {
namespace {

constexpr size_t kLargestFile = 256 * 1024;
/** Of an upgrade, behind its beginning. */
constexpr int kUpgradeSteps = 10;

/** A record, and what its pointers point into. */
template <typename Record>
struct Told {
    Record record = {};
    CamDialogue::Screen texts;
};

template <typename Record>
std::shared_ptr<void> recordOf(const std::shared_ptr<Told<Record>>& told) {
    return {told, &told->record};
}

std::shared_ptr<void> menuRecord(const CamDialogue::Screen& screen, uint32_t id) {
    const auto told = std::make_shared<Told<CI_MMI_MENU_T>>();
    told->texts = screen;
    CI_MMI_MENU_T& menu = told->record;
    menu.ui4_id = id;
    menu.w2s_title = pointerTo(screen->title);
    menu.w2s_subtitle = pointerTo(screen->subtitle);
    menu.w2s_bottom = pointerTo(screen->bottom);
    menu.ui1_item_count = static_cast<uint8_t>(screen->items.size());
    std::transform(screen->items.begin(), screen->items.end(), menu.aw2s_items,
                   [](const CamItem& item) { return pointerTo(item.text); });
    return recordOf(told);
}

std::shared_ptr<void> enquiryRecord(const CamDialogue::Screen& screen, uint32_t id) {
    const auto told = std::make_shared<Told<CI_MMI_ENQ_T>>();
    told->texts = screen;
    told->record.ui4_id = id;
    told->record.ui1_answer_length = screen->length;
    told->record.b_blind_answer = screen->blind ? 1 : 0;
    told->record.w2s_text = pointerTo(screen->prompt);
    return recordOf(told);
}

int32_t conditionOf(CamScreen::Kind kind) {
    switch (kind) {
        case CamScreen::kMenu:
            return QORTVAPI_CI_NFY_COND_MMI_MENU;
        case CamScreen::kList:
            return QORTVAPI_CI_NFY_COND_MMI_LIST;
        default:
            return QORTVAPI_CI_NFY_COND_MMI_ENQUIRY;
    }
}

uint8_t kindOf(CamScreen::Kind kind) {
    switch (kind) {
        case CamScreen::kMenu:
            return CI_MMI_KIND_MENU;
        case CamScreen::kList:
            return CI_MMI_KIND_LIST;
        default:
            return CI_MMI_KIND_ENQUIRY;
    }
}

}  // namespace

CamSlot::CamSlot(Core& core, std::string folder)
    : mCore(core),
      mPath(folder.empty() ? std::string() : std::move(folder) + "/" + kCamFileName),
      mProgress(std::make_shared<Progress>(core.notifier, key(0))) {}

RegistrationKey CamSlot::key(uint32_t handle) {
    return registration<&a_qortvapi_ci_reg_cb>(handle);
}

void CamSlot::look() {
    if (mPath.empty()) return;
    std::lock_guard<std::mutex> looking(mLooking);
    std::string bytes;
    const int error = readCamFile(mPath, kLargestFile, bytes);
    if (error == ENOENT || error == ENOTDIR) {
        mSeen.reset();
        std::lock_guard<std::mutex> lock(mMutex);
        mPresent.reset();
        takeOut();
        return;
    }
    if (error == 0 && mSeen == bytes) return;
    std::shared_ptr<const CamCard> card;
    if (error != 0) {
        LOG_TV_ERROR("cannot read the CAM in {}: {}", mPath, std::strerror(error));
    } else {
        mSeen = bytes;
        try {
            card = parseCamCard(bytes);
        } catch (const CamFault& fault) {
            LOG_TV_ERROR("cannot use the CAM in {}: {}", mPath, fault.what());
        }
    }
    std::lock_guard<std::mutex> lock(mMutex);
    if (card == nullptr) {
        tellError(CI_ERROR_UNUSABLE_MODULE, 0);
        return;
    }
    mPresent = card;
    takeOut();
    put(card);
}

int32_t CamSlot::insert() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mPresent == nullptr) return TV_NOT_FOUND;
    if (mCard == nullptr) put(mPresent);
    return TV_OK;
}

int32_t CamSlot::remove() {
    std::lock_guard<std::mutex> lock(mMutex);
    takeOut();
    return TV_OK;
}

void CamSlot::put(const std::shared_ptr<const CamCard>& card) {
    mCard = card;
    ++mInsertion;
    mPin = CamPin(card->pinRetries);
    LOG_TV_INFO("the CAM in {} is inserted", mPath);
    tellValue(QORTVAPI_CI_NFY_COND_CARD_INSERT, CI_CARD_INSERTED);
}

void CamSlot::takeOut() {
    if (mCard == nullptr) return;
    if (mDialogue.isOpen()) {
        mDialogue.close();
        tellClosed(CI_MMI_CLOSE_REMOVED);
    }
    if (mUpgradePercent) {
        mProgress->stop();
        tellError(CI_ERROR_UPGRADE_BROKEN, static_cast<uint32_t>(*mUpgradePercent));
        mUpgradePercent.reset();
    }
    mCard.reset();
    mPin = CamPin();
    LOG_TV_INFO("the CAM in {} is removed", mPath);
    tellValue(QORTVAPI_CI_NFY_COND_CARD_INSERT, CI_CARD_REMOVED);
}

int32_t CamSlot::listen(uint32_t number, uint32_t tag, a_qortvapi_ci_nfy_fct handler,
                        uint32_t& handle) {
    if (handler == nullptr) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    const auto known = std::find_if(mListening.begin(), mListening.end(), [&](const Listening& l) {
        return l.number == number && l.handler == handler;
    });
    handle = static_cast<uint32_t>(known - mListening.begin()) + 1;
    if (known == mListening.end()) mListening.push_back({number, handler});
    const int32_t result =
            mCore.registrations.add(key(handle), reinterpret_cast<Registrations::Function>(handler),
                                    reinterpret_cast<void*>(uintptr_t{tag}));
    if (mCard != nullptr) {
        tellValueTo(handle, QORTVAPI_CI_NFY_COND_CARD_INSERT, CI_CARD_INSERTED);
    }
    return result;
}

int32_t CamSlot::enterMenu() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mCard == nullptr) return TV_NOT_FOUND;
    if (mUpgradePercent) return TV_BUSY;
    if (mCard->menu == nullptr) return TV_NOT_SUPPORTED;
    mDialogue.open(mCard->menu);
    tellShown();
    return TV_OK;
}

int32_t CamSlot::closeDialogue() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (!mDialogue.isOpen()) return TV_NOT_FOUND;
    mDialogue.close();
    tellClosed(CI_MMI_CLOSE_BY_HOST);
    return TV_OK;
}

int32_t CamSlot::choose(const CI_MMI_MENU_ANS_T& answer) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto next = CamDialogue::Next::kShow;
    const int32_t result = mDialogue.choose(answer, mPin, next);
    return follow(result, next);
}

int32_t CamSlot::answer(const CI_MMI_ENQ_ANS_T& answer) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto next = CamDialogue::Next::kShow;
    const int32_t result = mDialogue.answer(answer, mPin, next);
    return follow(result, next);
}

/** Does what an accepted answer leads to. */
int32_t CamSlot::follow(int32_t result, CamDialogue::Next next) {
    if (result != TV_OK) return result;
    if (next == CamDialogue::Next::kShow) {
        tellShown();
        return result;
    }
    tellClosed(CI_MMI_CLOSE_BY_MODULE);
    if (next == CamDialogue::Next::kUpgrade) startUpgrade();
    return result;
}

int32_t CamSlot::enterPin(const std::string& digits) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mCard == nullptr) return TV_NOT_FOUND;
    if (mCard->pin.empty()) return TV_NOT_SUPPORTED;
    tellValue(QORTVAPI_CI_NFY_COND_PIN_REPLY, mPin.enter(digits == mCard->pin));
    return TV_OK;
}

CamSlot::Status CamSlot::status() const {
    std::lock_guard<std::mutex> lock(mMutex);
    Status status;
    status.card = mCard;
    status.pin = mPin;
    status.upgrading = mUpgradePercent.has_value();
    if (mDialogue.isOpen()) {
        const CamScreen& screen = *mDialogue.shown();
        status.dialogue.ui4_id = mDialogue.id();
        status.dialogue.ui1_kind = kindOf(screen.kind);
        status.dialogue.ui1_item_count = static_cast<uint8_t>(screen.items.size());
        status.dialogue.ui1_answer_length = screen.length;
        status.dialogue.b_blind_answer = screen.blind ? 1 : 0;
    }
    return status;
}

void CamSlot::startUpgrade() {
    mUpgradePercent = 0;
    tellRecord(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE,
               std::make_shared<uint32_t>(mCard->firmwareVersion));
    mProgress->start([self = shared_from_this(), insertion = mInsertion](
                             int32_t percent) { self->advanceUpgrade(insertion, percent); },
                     mCard->firmwareTime / kUpgradeSteps);
}

/** A step; the module may have been removed in between. */
void CamSlot::advanceUpgrade(uint32_t insertion, int32_t percent) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (insertion != mInsertion || !mUpgradePercent) return;
    if (percent == 0) return;  // its beginning has been told
    mUpgradePercent = percent;
    if (percent == 100) mUpgradePercent.reset();
    tellRecord(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS,
               std::make_shared<uint16_t>(static_cast<uint16_t>(percent)));
}

void CamSlot::tellShown() {
    const CamDialogue::Screen& screen = mDialogue.shown();
    const int32_t condition = conditionOf(screen->kind);
    const bool enquiry = condition == QORTVAPI_CI_NFY_COND_MMI_ENQUIRY;
    tellRecord(condition, enquiry ? enquiryRecord(screen, mDialogue.id())
                                  : menuRecord(screen, mDialogue.id()));
}

void CamSlot::tellClosed(uint8_t reason) {
    const auto record = std::make_shared<CI_MMI_ENQ_CLOSE_T>();
    record->aui1_data[0] = reason;
    tellRecord(QORTVAPI_CI_NFY_COND_MMI_CLOSE, record);
}

void CamSlot::tellError(uint32_t error, uint32_t value) {
    tellRecord(QORTVAPI_CI_NFY_COND_ERROR, std::make_shared<CI_ERROR_T>(CI_ERROR_T{error, value}));
}

void CamSlot::tellValue(int32_t condition, uint32_t value) {
    for (uint32_t handle = 1; handle <= mListening.size(); ++handle) {
        tellValueTo(handle, condition, value);
    }
}

void CamSlot::tellValueTo(uint32_t handle, int32_t condition, uint32_t value) {
    // The count keeps two equal ones apart, of which the notifier would leave one out.
    mCore.notifier.post({key(handle), condition, {value, ++mValuesTold, 0, 0}});
}

void CamSlot::tellRecord(int32_t condition, const std::shared_ptr<void>& record) {
    for (uint32_t handle = 1; handle <= mListening.size(); ++handle) {
        const auto call = [&core = mCore, handle, condition, record] {
            core.registrations.each<a_qortvapi_ci_nfy_fct>(
                    key(handle), [&](a_qortvapi_ci_nfy_fct handler, void* tag) {
                        handler(handle, tag, condition, record.get());
                    });
        };
        mCore.notifier.post({key(handle), condition, {}, call});
    }
}

}  // namespace television
