#include "television/cam/cam_dialogue.h"

#include <fmt/format.h>

#include "middleware/result_codes.h"
#include "television/base/utf16.h"

namespace television {
namespace {

/** Returns a screen with which the module informs the viewer. */
CamDialogue::Screen notice(const std::string& text) {
    auto screen = std::make_shared<CamScreen>();
    screen->kind = CamScreen::kList;
    screen->title = utf16FromUtf8(text);
    return screen;
}

bool isMenuOrList(const CamScreen& screen) {
    return screen.kind == CamScreen::kMenu || screen.kind == CamScreen::kList;
}

CamDialogue::Screen lockedNotice() {
    return notice("PIN locked");
}

}  // namespace

uint32_t CamPin::enter(bool right) {
    if (mLeft == 0) return CI_PIN_STATE_LOCKED;
    if (right) {
        mLeft = mTries;
        mKnown = true;
        return CI_PIN_STATE_RIGHT;
    }
    --mLeft;
    return mLeft == 0 ? CI_PIN_STATE_LOCKED : CI_PIN_STATE_WRONG;
}

void CamDialogue::open(const Screen& screen) {
    mShown.clear();
    show(screen);
}

/** Shows a screen on top of the current one. */
void CamDialogue::show(const Screen& screen) {
    mShown.push_back(screen);
    ++mId;
}

CamDialogue::Next CamDialogue::back() {
    mShown.pop_back();
    ++mId;
    return mShown.empty() ? Next::kClose : Next::kShow;
}

/** Shows a screen in place of the current one; null: goes back. */
CamDialogue::Next CamDialogue::replace(const Screen& screen) {
    if (screen == nullptr) return back();
    mShown.pop_back();
    show(screen);
    return Next::kShow;
}

int32_t CamDialogue::choose(const CI_MMI_MENU_ANS_T& answer, const CamPin& pin, Next& next) {
    if (!isOpen() || answer.ui4_id != mId || !isMenuOrList(*shown())) return TV_NOT_FOUND;
    const Screen screen = shown();
    if (answer.ui1_answer > screen->items.size()) return TV_INVALID_ARGUMENT;
    next = Next::kShow;
    if (answer.ui1_answer == CI_MMI_MENU_BACK || screen->kind == CamScreen::kList) {
        next = back();
        return TV_OK;
    }
    const CamItem& item = screen->items[answer.ui1_answer - 1u];
    if (item.upgrades) {
        close();
        next = Next::kUpgrade;
    } else if (item.opens == nullptr) {
        ++mId;  // the same menu is shown again
    } else {
        const bool locked = item.opens->kind == CamScreen::kPin && pin.triesLeft() == 0;
        show(locked ? lockedNotice() : item.opens);
    }
    return TV_OK;
}

int32_t CamDialogue::answer(const CI_MMI_ENQ_ANS_T& answer, CamPin& pin, Next& next) {
    if (!isOpen() || answer.ui4_id != mId || isMenuOrList(*shown())) return TV_NOT_FOUND;
    const Screen screen = shown();
    next = Next::kShow;
    if (answer.ui1_answer == CI_MMI_ENQ_CANCELLED) {
        next = back();
        return TV_OK;
    }
    if (answer.ui1_answer != CI_MMI_ENQ_ANSWERED) return TV_INVALID_ARGUMENT;
    const bool right =
            screen->accept.empty() || isText(answer.w2s_text, screen->length, screen->accept);
    if (screen->kind == CamScreen::kPin) {
        enterPin(right, pin);
    } else if (right) {
        next = replace(screen->then);
    } else {
        show(notice("wrong answer"));
    }
    return TV_OK;
}

/** Enters the PIN; some screen is shown in each case. */
void CamDialogue::enterPin(bool right, CamPin& pin) {
    switch (pin.enter(right)) {
        case CI_PIN_STATE_RIGHT: {
            const Screen then = shown()->then;
            replace(then == nullptr ? notice("PIN correct") : then);
            return;
        }
        case CI_PIN_STATE_WRONG:
            show(notice(fmt::format("wrong PIN, {} {} left", pin.triesLeft(),
                                    pin.triesLeft() == 1 ? "try" : "tries")));
            return;
        default:
            replace(lockedNotice());
    }
}

}  // namespace television
