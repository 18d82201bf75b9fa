/** The description of a Common Interface module (CAM): what it is, and the dialogues it offers. */
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "cam_text.h"

namespace television {

struct CamScreen;

/** A line of a menu or list, and what choosing it does. */
struct CamItem {
    CamText text;
    std::shared_ptr<const CamScreen> opens;  ///< null: nothing opens
    bool upgrades = false;                   ///< the module takes new firmware
};

/** What a module shows at one time. */
struct CamScreen {
    enum Kind {
        kMenu,
        kList,     ///< to be read only: every answer leads back
        kEnquiry,  ///< asks for a text
        kPin,      ///< asks for the module's PIN
    };

    Kind kind = kMenu;
    // Of menus and lists.
    CamText title;
    CamText subtitle;
    CamText bottom;
    std::vector<CamItem> items;
    // Of enquiries.
    CamText prompt;
    uint8_t length = 0;  ///< units of the longest answer
    bool blind = false;
    CamText accept;                         ///< the only right answer; no text: any is
    std::shared_ptr<const CamScreen> then;  ///< follows the right answer; null: back
};

struct CamCard {
    static constexpr size_t kPinDigits = 4;

    CamText name;
    std::array<uint8_t, 8> id = {};
    std::string language = "eng";
    CamText profile = {0};
    std::vector<uint8_t> hostId;  ///< empty: the television's own
    std::string pin;              ///< digits; empty: it has none
    uint8_t pinRetries = 3;
    std::shared_ptr<const CamScreen> menu;  ///< null: none
    uint32_t firmwareVersion = 1;           ///< that an upgrade brings
    std::chrono::milliseconds firmwareTime{2000};
};

/** `what()` tells the place in the description and what is wrong there, but no value of it. */
class CamFault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/** Reads a description in JSON; docs/cam.md tells of what. Throws CamFault. */
std::shared_ptr<const CamCard> parseCamCard(const std::string& description);

}  // namespace television
