/** The records with which handlers receive a module's screens (man-machine interface, MMI). */
#pragma once

#include <cstdint>
#include <memory>

#include "middleware/ci.h"
#include "television/cam/cam_dialogue.h"

namespace television {

// The records own their screen: its texts are valid as long as the record. `id`: CamDialogue::id.

/** A CI_MMI_MENU_T for a menu or list. */
std::shared_ptr<void> menuRecord(const CamDialogue::Screen& screen, uint32_t id);

/** A CI_MMI_ENQ_T for an enquiry, which may ask for the PIN. */
std::shared_ptr<void> enquiryRecord(const CamDialogue::Screen& screen, uint32_t id);

}  // namespace television
