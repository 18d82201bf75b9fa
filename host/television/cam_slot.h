/** The slot for a Common Interface module (CAM), with the module that `cam.json` describes. */
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "cam_card.h"
#include "cam_dialogue.h"
#include "core.h"
#include "middleware/ci.h"
#include "progress.h"

namespace television {

/** The name of the file that is the module. */
constexpr char kCamFileName[] = "cam.json";

/**
 * The file is the module: while it is in the folder, and unless somebody took it out by command,
 * the module is in the slot. What happens is told to the registered handlers. Functions that
 * answer a number answer a code of middleware/result_codes.h. Any thread.
 */
class CamSlot : public std::enable_shared_from_this<CamSlot> {
  public:
    /** `core` outlives this. `folder`: where the file may be; empty: nowhere. */
    CamSlot(Core& core, std::string folder);

    /**
     * Looks at the file. One with new bytes is inserted, in place of another; one that is gone is
     * removed. A faulty one changes nothing: the log tells its fault, handlers hear of an error.
     */
    void look();

    /** By command. Nothing happens to a module that is there, or gone, already. */
    int32_t insert();
    int32_t remove();

    /** Registers a handler, which is told of a module that is in. */
    int32_t listen(uint32_t number, uint32_t tag, a_qortvapi_ci_nfy_fct handler, uint32_t& handle);

    int32_t enterMenu();
    int32_t closeDialogue();
    int32_t choose(const CI_MMI_MENU_ANS_T& answer);
    int32_t answer(const CI_MMI_ENQ_ANS_T& answer);
    int32_t enterPin(const std::string& digits);

    /** What there is to read of the slot. */
    struct Status {
        std::shared_ptr<const CamCard> card;  ///< null: the slot is empty
        CamPin pin;
        CI_MMI_STATE_T dialogue = {};
        bool upgrading = false;
    };
    Status status() const;

  private:
    struct Listening {
        uint32_t number;
        a_qortvapi_ci_nfy_fct handler;
    };

    // With mMutex held.
    void put(const std::shared_ptr<const CamCard>& card);
    void takeOut();
    int32_t follow(int32_t result, CamDialogue::Next next);
    void tellShown();
    void tellClosed(uint8_t reason);
    void tellError(uint32_t error, uint32_t value);
    void tellValue(int32_t condition, uint32_t value);
    void tellValueTo(uint32_t handle, int32_t condition, uint32_t value);
    void tellRecord(int32_t condition, const std::shared_ptr<void>& record);
    void startUpgrade();
    void advanceUpgrade(uint32_t insertion, int32_t percent);

    static RegistrationKey key(uint32_t handle);

    Core& mCore;
    const std::string mPath;  ///< empty: there is no file
    const std::shared_ptr<Progress> mProgress;

    std::mutex mLooking;               ///< held around mMutex
    std::optional<std::string> mSeen;  ///< the file's bytes last time; guarded by mLooking

    mutable std::mutex mMutex;                // guards all below
    std::shared_ptr<const CamCard> mPresent;  ///< that could be in the slot
    std::shared_ptr<const CamCard> mCard;     ///< in the slot
    uint32_t mInsertion = 0;                  ///< counts insertions
    CamPin mPin;
    CamDialogue mDialogue;
    std::optional<int32_t> mUpgradePercent;  ///< while an upgrade runs
    std::vector<Listening> mListening;       ///< the handle is the place, counted from 1
    uint32_t mValuesTold = 0;
};

}  // namespace television
