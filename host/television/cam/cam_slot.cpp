#include "television/cam/cam_slot.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/cam/cam_file.h"
#include "television/cam/cam_mmi_records.h"

namespace television {
namespace {

/** Bytes of the largest description. */
constexpr size_t kLargestFile = 256 * 1024;
/** Steps of ten per cent in an upgrade. */
constexpr int kUpgradeSteps = 10;

/** QORTVAPI_CI_NFY_COND_… of the notification that shows a screen. */
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

/** CI_MMI_KIND_…. */
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

/** The module that a changed file describes; null, with a line on the log, when the file could not
 * be read or used. `error`: errno of reading it, or 0. With mReading held. */
std::shared_ptr<const CamCard> CamSlot::usableCard(int error, const std::string& bytes) {
    if (error != 0) {
        LOG_TV_ERROR("cannot read the CAM in {}: {}", mPath, std::strerror(error));
        return nullptr;
    }
    mReadBytes = bytes;
    try {
        return parseCamCard(bytes);
    } catch (const CamFault& fault) {
        LOG_TV_ERROR("cannot use the CAM in {}: {}", mPath, fault.what());
        return nullptr;
    }
}

void CamSlot::readDescription() {
    if (mPath.empty()) return;
    std::lock_guard<std::mutex> reading(mReading);
    std::string bytes;
    const int error = readCamFile(mPath, kLargestFile, bytes);
    if (error == ENOENT || error == ENOTDIR) {
        mReadBytes.reset();
        std::lock_guard<std::mutex> lock(mMutex);
        mDescribed.reset();
        removeCard();
        return;
    }
    if (error == 0 && mReadBytes == bytes) return;
    const std::shared_ptr<const CamCard> card = usableCard(error, bytes);
    std::lock_guard<std::mutex> lock(mMutex);
    if (card == nullptr) {
        notifyError(CI_ERROR_UNUSABLE_MODULE, 0);
        return;
    }
    mDescribed = card;
    removeCard();
    insertCard(card);
}

int32_t CamSlot::insert() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mDescribed == nullptr) return TV_NOT_FOUND;
    if (mCard == nullptr) insertCard(mDescribed);
    return TV_OK;
}

int32_t CamSlot::remove() {
    std::lock_guard<std::mutex> lock(mMutex);
    removeCard();
    return TV_OK;
}

void CamSlot::insertCard(const std::shared_ptr<const CamCard>& card) {
    mCard = card;
    ++mInsertion;
    mPin = CamPin(card->pinRetries);
    LOG_TV_INFO("the CAM in {} is inserted", mPath);
    notifyValue(QORTVAPI_CI_NFY_COND_CARD_INSERT, CI_CARD_INSERTED);
}

void CamSlot::removeCard() {
    if (mCard == nullptr) return;
    if (mDialogue.isOpen()) {
        mDialogue.close();
        notifyClosed(CI_MMI_CLOSE_REMOVED);
    }
    if (mUpgradePercent) {
        mProgress->stop();
        notifyError(CI_ERROR_UPGRADE_BROKEN, static_cast<uint32_t>(*mUpgradePercent));
        mUpgradePercent.reset();
    }
    mCard.reset();
    mPin = CamPin();
    LOG_TV_INFO("the CAM in {} is removed", mPath);
    notifyValue(QORTVAPI_CI_NFY_COND_CARD_INSERT, CI_CARD_REMOVED);
}

int32_t CamSlot::registerHandler(uint32_t number, uint32_t tag, a_qortvapi_ci_nfy_fct handler,
                                 uint32_t& handle) {
    if (handler == nullptr) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    const auto known = std::find_if(mHandlers.begin(), mHandlers.end(), [&](const Handler& entry) {
        return entry.number == number && entry.function == handler;
    });
    handle = static_cast<uint32_t>(known - mHandlers.begin()) + 1;
    if (known == mHandlers.end()) mHandlers.push_back({number, handler});
    const int32_t result =
            mCore.registrations.add(key(handle), reinterpret_cast<Registrations::Function>(handler),
                                    reinterpret_cast<void*>(uintptr_t{tag}));
    if (mCard != nullptr) {
        notifyValueTo(handle, QORTVAPI_CI_NFY_COND_CARD_INSERT, CI_CARD_INSERTED);
    }
    return result;
}

int32_t CamSlot::enterMenu() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mCard == nullptr) return TV_NOT_FOUND;
    if (mUpgradePercent) return TV_BUSY;
    if (mCard->menu == nullptr) return TV_NOT_SUPPORTED;
    mDialogue.open(mCard->menu);
    notifyScreen();
    return TV_OK;
}

int32_t CamSlot::closeDialogue() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (!mDialogue.isOpen()) return TV_NOT_FOUND;
    mDialogue.close();
    notifyClosed(CI_MMI_CLOSE_BY_HOST);
    return TV_OK;
}

int32_t CamSlot::choose(const CI_MMI_MENU_ANS_T& answer) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto next = CamDialogue::Next::kShow;
    const int32_t result = mDialogue.choose(answer, mPin, next);
    return continueDialogue(result, next);
}

int32_t CamSlot::answer(const CI_MMI_ENQ_ANS_T& answer) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto next = CamDialogue::Next::kShow;
    const int32_t result = mDialogue.answer(answer, mPin, next);
    return continueDialogue(result, next);
}

/** Does what an answer leads to; `result` is that of the dialogue, and is returned. */
int32_t CamSlot::continueDialogue(int32_t result, CamDialogue::Next next) {
    if (result != TV_OK) return result;
    if (next == CamDialogue::Next::kShow) {
        notifyScreen();
        return result;
    }
    notifyClosed(CI_MMI_CLOSE_BY_MODULE);
    if (next == CamDialogue::Next::kUpgrade) startUpgrade();
    return result;
}

int32_t CamSlot::enterPin(const std::string& digits) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mCard == nullptr) return TV_NOT_FOUND;
    if (mCard->pin.empty()) return TV_NOT_SUPPORTED;
    notifyValue(QORTVAPI_CI_NFY_COND_PIN_REPLY, mPin.enter(digits == mCard->pin));
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
    notifyRecord(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE,
                 std::make_shared<uint32_t>(mCard->firmwareVersion));
    mProgress->start([self = shared_from_this(), insertion = mInsertion](
                             int32_t percent) { self->advanceUpgrade(insertion, percent); },
                     mCard->firmwareTime / kUpgradeSteps);
}

/** The upgrade of the module inserted as the `insertion`-th has come to `percent`. The module may
 * have been removed meanwhile. */
void CamSlot::advanceUpgrade(uint32_t insertion, int32_t percent) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (insertion != mInsertion || !mUpgradePercent) return;
    if (percent == 0) return;  // handlers were notified of the start
    mUpgradePercent = percent;
    if (percent == 100) mUpgradePercent.reset();
    notifyRecord(QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS,
                 std::make_shared<uint16_t>(static_cast<uint16_t>(percent)));
}

void CamSlot::notifyScreen() {
    const CamDialogue::Screen& screen = mDialogue.shown();
    const int32_t condition = conditionOf(screen->kind);
    const bool enquiry = condition == QORTVAPI_CI_NFY_COND_MMI_ENQUIRY;
    notifyRecord(condition, enquiry ? enquiryRecord(screen, mDialogue.id())
                                    : menuRecord(screen, mDialogue.id()));
}

void CamSlot::notifyClosed(uint8_t reason) {
    const auto record = std::make_shared<CI_MMI_ENQ_CLOSE_T>();
    record->aui1_data[0] = reason;
    notifyRecord(QORTVAPI_CI_NFY_COND_MMI_CLOSE, record);
}

void CamSlot::notifyError(uint32_t error, uint32_t value) {
    notifyRecord(QORTVAPI_CI_NFY_COND_ERROR,
                 std::make_shared<CI_ERROR_T>(CI_ERROR_T{error, value}));
}

void CamSlot::notifyValue(int32_t condition, uint32_t value) {
    for (uint32_t handle = 1; handle <= mHandlers.size(); ++handle) {
        notifyValueTo(handle, condition, value);
    }
}

void CamSlot::notifyValueTo(uint32_t handle, int32_t condition, uint32_t value) {
    // The count makes each one different: of two equal ones in a row the notifier drops the second.
    mCore.notifier.post({key(handle), condition, {value, ++mValueCount, 0, 0}});
}

void CamSlot::notifyRecord(int32_t condition, const std::shared_ptr<void>& record) {
    for (uint32_t handle = 1; handle <= mHandlers.size(); ++handle) {
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
