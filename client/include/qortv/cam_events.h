/** What the Common Interface module (CAM) reports, and the listener that receives it. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "qortv/listener.h"

namespace qortv {

/** The module shows items to choose from. Texts are UTF-8; a text that the module did not send is
 * nullopt. */
struct CamMenu {
    uint32_t id = 0;  ///< identifies the menu in the answer to it
    std::optional<std::string> title;
    std::optional<std::string> subtitle;
    std::optional<std::string> bottom;
    std::vector<std::string> items;  ///< at most 64
};

/** The module shows items that are for information only. */
struct CamList : CamMenu {};

/** The module asks for a text. */
struct CamEnquiry {
    uint32_t id = 0;  ///< identifies the enquiry in the answer to it
    std::optional<std::string> text;
    uint8_t answerLength = 0;  ///< maximum length of the answer in UTF-16 units
    bool blind = false;        ///< the answer is a secret: do not show, store or log it
};

/** The dialogue has ended. */
struct CamClosed {
    /** Who ended it. */
    enum class By {
        kModule,
        kHost,    ///< an application
        kRemoval  ///< the module was removed
    };
    By by = By::kModule;
};

/** The module was inserted or removed. */
struct CamCard {
    bool inserted = false;
};

/** The module's verdict on a PIN. */
enum class CamPin {
    kWrong,
    kRight,
    kLocked  ///< too many wrong PINs: the module takes no more
};

/** The answer to Cam::enterPin(). */
struct CamPinReply {
    CamPin state = CamPin::kWrong;
};

/** The module starts to install new firmware. */
struct CamUpgrade {
    uint32_t version = 0;
};

/** Progress of the installation of new firmware. */
struct CamUpgradeProgress {
    uint16_t percent = 0;
};

/** The module does not work. */
struct CamFault {
    enum class Kind {
        kUnusable,       ///< the module that was inserted cannot be used
        kUpgradeBroken,  ///< the module was removed while it installed new firmware
    };
    Kind kind = Kind::kUnusable;
    uint32_t percent = 0;  ///< of kUpgradeBroken: how much of the firmware was installed
};

using CamEvent = std::variant<CamMenu, CamList, CamEnquiry, CamClosed, CamCard, CamPinReply,
                              CamUpgrade, CamUpgradeProgress, CamFault>;

/** Returns "module", "host" or "removal". */
const char* name(CamClosed::By by);

/** Returns "wrong", "right" or "locked". */
const char* name(CamPin state);

/**
 * A listener that receives the notifications of the module as events. Notifications of the module
 * that are none of these events, and all other notifications, reach onNotification() as for any
 * listener.
 *
 * There is one module with one dialogue at a time, shared by all applications: the events include
 * dialogues that another application opens, answers or closes.
 */
class CamListener : public Listener {
  public:
    /** Called on a thread of the runtime, like the methods of Listener: must return soon. */
    virtual void onCamEvent(const CamEvent& event) = 0;

    void notifyCi(uint64_t ci, uint64_t tag, int32_t condition,
                  const hidl_vec<uint8_t>& data) override;
    void notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                            const HIDL_CI_MMI_ENQ_T& enquiry) override;
    void notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                         const HIDL_CI_MMI_MENU_T& menu) override;
};

}  // namespace qortv
