/** The description of a Common Interface module (CAM): its properties, and the dialogues it offers.
 */
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "television/cam/cam_text.h"

namespace television {

struct CamScreen;

/** A line of a menu or list, and what choosing it does. */
struct CamItem {
    CamText text;
    std::shared_ptr<const CamScreen> opens;  ///< null: none
    bool upgrades = false;                   ///< starts a firmware upgrade of the module
};

/** What a module shows at one time. */
struct CamScreen {
    enum Kind {
        kMenu,
        kList,     ///< its items are only read: every answer leads back
        kEnquiry,  ///< asks for a text
        kPin,      ///< an enquiry that asks for the module's PIN
    };

    Kind kind = kMenu;
    // Menus and lists.
    CamText title;
    CamText subtitle;
    CamText bottom;
    std::vector<CamItem> items;
    // Enquiries.
    CamText prompt;
    uint8_t length = 0;  ///< UTF-16 units of the longest answer
    bool blind = false;  ///< the answer is not to be shown while it is typed
    CamText accept;      ///< the only right answer; no text: every answer is right
    std::shared_ptr<const CamScreen> then;  ///< follows the right answer; null: the screen before
};

/** A module. */
struct CamCard {
    static constexpr size_t kPinDigits = 4;

    CamText name;
    std::array<uint8_t, 8> id = {};
    std::string language = "eng";                  ///< three letters of ISO 639-2
    CamText profile = {0};                         ///< operator profile; an empty text by default
    std::vector<uint8_t> hostId;                   ///< empty: the television's own host id
    std::string pin;                               ///< digits; empty: the module has no PIN
    uint8_t pinRetries = 3;                        ///< wrong PINs until the module is locked
    std::shared_ptr<const CamScreen> menu;         ///< null: none
    uint32_t firmwareVersion = 1;                  ///< after an upgrade
    std::chrono::milliseconds firmwareTime{2000};  ///< that an upgrade takes
};

/** A fault of a description. `what()` is its place in the description (a JSON pointer, or line and
 * column) and what is wrong there; it quotes no value, which might be a PIN. */
class CamFault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/** Reads a description in JSON, in the format of docs/cam.md. Throws CamFault. */
std::shared_ptr<const CamCard> parseCamCard(const std::string& description);

}  // namespace television
