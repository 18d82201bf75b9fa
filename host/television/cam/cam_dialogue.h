/** The dialogue of a Common Interface module with the viewer, and the module's PIN. */
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "middleware/ci.h"
#include "television/cam/cam_card.h"

namespace television {

/** How often the module's PIN was entered wrongly since the module was inserted, and whether it was
 * entered rightly. One thread at a time. */
class CamPin {
  public:
    explicit CamPin(uint8_t tries = 0) : mTries(tries), mLeft(tries) {}

    /** A PIN was entered. Returns CI_PIN_STATE_…; a locked module stays locked, `right` or not. */
    uint32_t enter(bool right);
    /** Tries until the module is locked; 0: it is locked. */
    uint8_t triesLeft() const { return mLeft; }
    /** Whether the right PIN has been entered. */
    bool known() const { return mKnown; }

  private:
    uint8_t mTries;
    uint8_t mLeft;
    bool mKnown = false;
};

/**
 * Which screen is shown, and where the client's answers lead. Each time a screen is shown it gets a
 * new id, which answers have to carry. An answer that is refused, with a negative code of
 * middleware/result_codes.h, leaves the screen as it is. One thread at a time.
 */
class CamDialogue {
  public:
    using Screen = std::shared_ptr<const CamScreen>;

    /** What an accepted answer leads to: a screen to show, the end of the dialogue, or its end and
     * a firmware upgrade. */
    enum class Next { kShow, kClose, kUpgrade };

    /** Begins a dialogue with `screen`; one that is open ends. */
    void open(const Screen& screen);
    void close() { mShown.clear(); }

    bool isOpen() const { return !mShown.empty(); }
    /** The screen that is shown; only while the dialogue is open. */
    const Screen& shown() const { return mShown.back(); }
    /** Its id. */
    uint32_t id() const { return mId; }

    /** Takes the client's answer to a menu or list. */
    int32_t choose(const CI_MMI_MENU_ANS_T& answer, const CamPin& pin, Next& next);
    /** Takes the client's answer to an enquiry; its text is read only as far as the enquiry needs.
     */
    int32_t answer(const CI_MMI_ENQ_ANS_T& answer, CamPin& pin, Next& next);

  private:
    void show(const Screen& screen);
    Next back();
    Next replace(const Screen& screen);
    void enterPin(bool right, CamPin& pin);

    std::vector<Screen> mShown;  ///< the last one is shown; "back" leads to the one before it
    uint32_t mId = 0;
};

}  // namespace television
