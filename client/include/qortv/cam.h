/** The Common Interface module (CAM) in the television's slot. */
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApi.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCI.h>

#include "qortv/cam_events.h"
#include "qortv/connect.h"

namespace qortv {

/** State of the slot. */
enum class CamSlot {
    kEmpty,
    kReady,     ///< a module is in it
    kUpgrading  ///< the module installs new firmware and opens no dialogue meanwhile
};

/** Returns "empty", "ready" or "upgrading". */
const char* name(CamSlot slot);

/**
 * The module in the slot: its properties, its dialogues with the viewer and its PIN. Requests
 * return before the module has reacted; its reaction is received by a CamListener whose
 * Subscription was made before.
 *
 *     qortv::Subscription subscription(listener);
 *     qortv::Cam cam(qortv::connect<qortv::Cam::Interface>());
 *     cam.listen();
 *     cam.openMenu();
 *
 * Methods may be called by several threads at once. All throw Error kLost, kTransport and
 * kRefused. The television refuses, for example, all requests without a module, and the answer to
 * a menu or enquiry that is no longer open.
 */
class Cam {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiCI;

    /** @param proxy the interface, from connect<Cam::Interface>() */
    explicit Cam(android::sp<Interface> proxy);

    /** Returns the state of the slot. */
    CamSlot slot();

    /** Returns the name of the module, UTF-8. */
    std::string name();

    /** Returns the identifier of the module. */
    std::array<uint8_t, 8> id();

    /** Returns the language of the module, ISO 639-2. May be empty. */
    std::string language();

    /** Returns the name of the module's operator profile, UTF-8. May be empty. */
    std::string profile();

    /** Returns how many wrong PINs the module still accepts before it locks, 0 when it is locked.
     * Returns nothing for a module without a PIN. */
    std::optional<uint8_t> pinTries();

    /** Makes the television send the notifications of the module. One call of any application makes
     * it send them to all. */
    void listen();

    /**
     * Opens the main menu of the module.
     *
     * @throws Error kRefused also when the module has none; the message says so
     */
    void openMenu();

    /**
     * Chooses an item of a menu or list.
     *
     * @param item counted from 1
     * @throws Error also kArgument when there is no such item
     */
    void choose(const CamMenu& menu, uint8_t item);

    /** Goes back from a menu or list to the one before. */
    void back(const CamMenu& menu);

    /**
     * Answers an enquiry.
     *
     * @param text UTF-8
     * @throws Error also kArgument when the text is longer than the enquiry allows
     */
    void answer(const CamEnquiry& enquiry, const std::string& text);

    /** Cancels an enquiry. */
    void back(const CamEnquiry& enquiry);

    /** Ends the dialogue. */
    void close();

    /**
     * Sends a PIN to the module, which replies with a CamPinReply.
     *
     * @param digits one digit or more
     * @throws Error also kArgument for anything but digits
     */
    void enterPin(const std::string& digits);

  private:
    struct Property;

    /**
     * Reads a property of the module. Does not check its result code.
     *
     * @param type QORTVAPI_CI_GET_TYPE_...
     * @param units of a name: maximum length in UTF-16 units, or 0 to read the length only
     */
    Property get(uint32_t type, uint32_t units);
    /** Returns the result code. @param type QORTVAPI_CI_SET_TYPE_... */
    int32_t request(uint32_t type, const std::vector<uint8_t>& data);
    void set(uint32_t type, const std::vector<uint8_t>& data, const char* what);
    void answerMenu(uint32_t id, uint8_t answer, const char* what);
    void answerEnquiry(uint32_t id, uint8_t answer, const std::vector<uint16_t>& text,
                       const char* what);

    android::sp<Interface> mProxy;
};

/**
 * Inserts the module of the software television into its slot, or removes it.
 *
 * @param television the core interface, from connect<IQorTvApi>()
 * @throws Error kLost, kTransport, kRefused (there is no module to insert)
 */
void setCamInserted(const android::sp<vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi>& television,
                    bool inserted);

}  // namespace qortv
