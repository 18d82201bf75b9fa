/** The slot for a Common Interface module (CAM): inserts the module that `cam.json` describes. */
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "middleware/ci.h"
#include "television/cam/cam_card.h"
#include "television/cam/cam_dialogue.h"
#include "television/core/core.h"
#include "television/core/progress.h"

namespace television {

/** The name of the file that describes the module. */
constexpr char kCamFileName[] = "cam.json";

/**
 * The module is in the slot while its description file is in the folder, unless `remove` was
 * called. The registered handlers are notified of what happens to the module and of what it shows.
 * Functions that return int32_t return a code of middleware/result_codes.h. Any thread; two locks,
 * of which the inner one is held while notifications are queued and the outer one while the file is
 * read.
 */
class CamSlot : public std::enable_shared_from_this<CamSlot> {
  public:
    /** `core` outlives this. `folder`: where the file may be; empty: nowhere. */
    CamSlot(Core& core, std::string folder);

    /**
     * Reads the description file again. When its bytes have changed, the module that it describes
     * is inserted in place of the one in the slot; when the file is gone, the module is removed.
     * When it cannot be used, nothing changes but that the log names the fault and the handlers are
     * notified of an error.
     */
    void readDescription();

    /** Inserts the described module; nothing happens when it is in the slot already. TV_NOT_FOUND
     * when none is described. */
    int32_t insert();
    /** Removes the module until `insert` or a new description. */
    int32_t remove();

    /** Registers a handler under the client's number and tag, and returns its handle. When a module
     * is in the slot, the handler is notified of it. */
    int32_t registerHandler(uint32_t number, uint32_t tag, a_qortvapi_ci_nfy_fct handler,
                            uint32_t& handle);

    /** Opens the main menu; a dialogue that is open ends. */
    int32_t enterMenu();
    int32_t closeDialogue();
    /** The client's answer to a menu or list. */
    int32_t choose(const CI_MMI_MENU_ANS_T& answer);
    /** The client's answer to an enquiry. */
    int32_t answer(const CI_MMI_ENQ_ANS_T& answer);
    /** Enters the PIN outside a dialogue; handlers are notified of the result. */
    int32_t enterPin(const std::string& digits);

    /** The state of the slot. */
    struct Status {
        std::shared_ptr<const CamCard> card;  ///< null: the slot is empty
        CamPin pin;
        CI_MMI_STATE_T dialogue = {};  ///< zeros while none is open
        bool upgrading = false;
    };
    Status status() const;

  private:
    struct Handler {
        uint32_t number;
        a_qortvapi_ci_nfy_fct function;
    };

    std::shared_ptr<const CamCard> usableCard(int error, const std::string& bytes);
    // With mMutex held:
    void insertCard(const std::shared_ptr<const CamCard>& card);
    void removeCard();
    int32_t continueDialogue(int32_t result, CamDialogue::Next next);
    void notifyScreen();
    void notifyClosed(uint8_t reason);
    void notifyError(uint32_t error, uint32_t value);
    void notifyValue(int32_t condition, uint32_t value);
    void notifyValueTo(uint32_t handle, int32_t condition, uint32_t value);
    void notifyRecord(int32_t condition, const std::shared_ptr<void>& record);
    void startUpgrade();
    void advanceUpgrade(uint32_t insertion, int32_t percent);

    static RegistrationKey key(uint32_t handle);

    Core& mCore;
    const std::string mPath;                    ///< of the description file; empty: there is none
    const std::shared_ptr<Progress> mProgress;  ///< of an upgrade

    std::mutex mReading;                    ///< one reader of the file; taken before mMutex
    std::optional<std::string> mReadBytes;  ///< of the file last time; guarded by mReading

    mutable std::mutex mMutex;                  // guards all below
    std::shared_ptr<const CamCard> mDescribed;  ///< in the slot or removed by command; null: none
    std::shared_ptr<const CamCard> mCard;       ///< in the slot; null: none
    uint32_t mInsertion = 0;                    ///< counts insertions
    CamPin mPin;
    CamDialogue mDialogue;
    std::optional<int32_t> mUpgradePercent;  ///< while an upgrade runs
    std::vector<Handler> mHandlers;          ///< the handle of each is its index + 1
    uint32_t mValueCount = 0;                ///< counts notifications that carry a value
};

}  // namespace television
