/** The Common Interface module (CAM): what it is, its dialogues with the viewer, its PIN. */
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApi.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCI.h>

#include "qortv/connect.h"
#include "qortv/listener.h"

namespace qortv {

/** The module offers items to choose from. All texts are UTF-8; one that it left out is missing. */
struct CamMenu {
    uint32_t id = 0;  ///< what the answer refers to
    std::optional<std::string> title;
    std::optional<std::string> subtitle;
    std::optional<std::string> bottom;
    std::vector<std::string> items;  ///< at most 64
};

/** The module shows items that are only to be read. */
struct CamList : CamMenu {};

/** The module asks for a text. */
struct CamEnquiry {
    uint32_t id = 0;
    std::optional<std::string> text;
    uint8_t answerLength = 0;  ///< UTF-16 units that the answer may have
    bool blind = false;        ///< what is typed must not be shown, kept or logged
};

/** The dialogue is over. */
struct CamClosed {
    enum class By { kModule, kHost, kRemoval };
    By by = By::kModule;
};

/** A module was inserted, or removed. */
struct CamCard {
    bool inserted = false;
};

/** What the module says of a PIN. */
enum class CamPin { kWrong, kRight, kLocked };

/** The answer to enterPin(). */
struct CamPinReply {
    CamPin state = CamPin::kWrong;
};

/** The module begins to take new firmware. */
struct CamUpgrade {
    uint32_t version = 0;
};

/** How far the new firmware is. */
struct CamUpgradeProgress {
    uint16_t percent = 0;
};

/** Something went wrong in the slot. */
struct CamFault {
    enum class Kind {
        kUnusable,       ///< a module came that cannot be used
        kUpgradeBroken,  ///< the module was removed before it had all of its new firmware
    };
    Kind kind = Kind::kUnusable;
    uint32_t percent = 0;  ///< of the firmware
};

using CamEvent = std::variant<CamMenu, CamList, CamEnquiry, CamClosed, CamCard, CamPinReply,
                              CamUpgrade, CamUpgradeProgress, CamFault>;

/** What is in the slot. A module that takes new firmware opens no dialogue meanwhile. */
enum class CamSlot { kEmpty, kReady, kUpgrading };

/** "module", "host" or "removal". */
const char* name(CamClosed::By by);

/** "wrong", "right" or "locked". */
const char* name(CamPin state);

/** "empty", "ready" or "upgrading". */
const char* name(CamSlot slot);

/**
 * A listener that hears the module as events. Notifications of the module that are no event, and
 * those of everything else, reach onNotification() as for any listener.
 *
 * There is one module and one dialogue: what another application opens or answers is heard too.
 */
class CamListener : public Listener {
  public:
    /** On a thread of the runtime, as the methods of Listener are: return soon. */
    virtual void onCamEvent(const CamEvent& event) = 0;

    void notifyCi(uint64_t ci, uint64_t tag, int32_t condition,
                  const hidl_vec<uint8_t>& data) override;
    void notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                            const HIDL_CI_MMI_ENQ_T& enquiry) override;
    void notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                         const HIDL_CI_MMI_MENU_T& menu) override;
};

/**
 * The module in the slot. Requests only ask: what the module makes of them is heard by a
 * CamListener whose Subscription was made before.
 *
 *     qortv::Subscription subscription(listener);
 *     qortv::Cam cam(qortv::connect<qortv::Cam::Interface>());
 *     cam.listen();
 *     cam.openMenu();
 *
 * Methods may be called by several threads at once. All throw Error kLost and kTransport, and
 * kRefused when the television answers with a negative code, as it does without a module and for
 * the answer to a question that is no longer open.
 */
class Cam {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiCI;

    /** @param proxy the interface, from connect<Cam::Interface>() */
    explicit Cam(android::sp<Interface> proxy);

    /** What is in the slot. */
    CamSlot slot();

    /** Its name, UTF-8. */
    std::string name();

    /** Its identifier. */
    std::array<uint8_t, 8> id();

    /** Three letters of ISO 639-2; may be empty. */
    std::string language();

    /** Name of its operator profile, UTF-8; may be empty. */
    std::string profile();

    /** Wrong PINs that the module still takes; 0 when it is locked, nothing when it has no PIN. */
    std::optional<uint8_t> pinTries();

    /** Makes the television listen to the module. It does so for all applications once one asked.
     */
    void listen();

    /**
     * Opens the module's main menu.
     *
     * @throws Error kRefused tells where it has none
     */
    void openMenu();

    /**
     * Chooses an item of a menu or list.
     *
     * @param item counted from 1
     * @throws Error also kArgument when there is no such item
     */
    void choose(const CamMenu& menu, uint8_t item);

    /** Leaves a menu or list for the one before. */
    void back(const CamMenu& menu);

    /**
     * Answers an enquiry.
     *
     * @param text UTF-8
     * @throws Error also kArgument when the text is longer than the enquiry allows
     */
    void answer(const CamEnquiry& enquiry, const std::string& text);

    /** Leaves an enquiry unanswered. */
    void back(const CamEnquiry& enquiry);

    /** Ends the dialogue. */
    void close();

    /**
     * Gives the module a PIN; a CamPinReply tells what it thinks of it.
     *
     * @param digits one digit or more
     * @throws Error also kArgument for anything but digits
     */
    void enterPin(const std::string& digits);

  private:
    int32_t ask(uint32_t type, const std::vector<uint8_t>& data);
    void set(uint32_t type, const std::vector<uint8_t>& data, const char* what);
    struct Answer;
    Answer get(uint32_t type, uint32_t units);
    void answerMenu(uint32_t id, uint8_t answer, const char* what);
    void answerEnquiry(uint32_t id, uint8_t answer, const std::vector<uint16_t>& text,
                       const char* what);

    android::sp<Interface> mProxy;
};

/**
 * Puts the module of the software television into its slot, or takes it out.
 *
 * @param television the core interface, from connect<IQorTvApi>()
 * @throws Error kLost, kTransport, kRefused (there is no module to insert)
 */
void setCamInserted(const android::sp<vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi>& television,
                    bool inserted);

}  // namespace qortv
