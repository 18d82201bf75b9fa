/** The dialogue of a Common Interface module with the viewer, and the module's PIN. */
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "cam_card.h"
#include "middleware/ci.h"

namespace television {

/** What the PIN has been through since the module was inserted. One thread at a time. */
class CamPin {
  public:
    explicit CamPin(uint8_t tries = 0) : mTries(tries), mLeft(tries) {}

    /** One was entered; answers CI_PIN_STATE_…. Once it is locked none is right. */
    uint32_t enter(bool right);
    /** Wrong ones that are still taken. */
    uint8_t triesLeft() const { return mLeft; }
    /** Whether the right one has been entered. */
    bool known() const { return mKnown; }

  private:
    uint8_t mTries;
    uint8_t mLeft;
    bool mKnown = false;
};

/**
 * Which screen is shown, and where answers lead. Every showing of a screen has an id of its own,
 * never given twice. A negative code says that an answer was refused: the same is still asked. One
 * thread at a time.
 */
class CamDialogue {
  public:
    using Screen = std::shared_ptr<const CamScreen>;

    /** What an accepted answer leads to. */
    enum class Next { kShow, kClose, kUpgrade };

    /** Shows `screen`; what was shown before is forgotten. */
    void open(const Screen& screen);
    void close() { mShown.clear(); }

    bool isOpen() const { return !mShown.empty(); }
    /** What is asked now; only while it is open. */
    const Screen& shown() const { return mShown.back(); }
    uint32_t id() const { return mId; }

    /** The answer to a menu or list. */
    int32_t choose(const CI_MMI_MENU_ANS_T& answer, const CamPin& pin, Next& next);
    /** The answer to an enquiry; its text is read only as far as the enquiry needs. */
    int32_t answer(const CI_MMI_ENQ_ANS_T& answer, CamPin& pin, Next& next);

  private:
    void show(const Screen& screen);
    Next back();
    Next follow(const Screen& screen);
    void enterPin(bool right, CamPin& pin);

    std::vector<Screen> mShown;  ///< the last one is asked now; the others are where "back" leads
    uint32_t mId = 0;
};

}  // namespace television
