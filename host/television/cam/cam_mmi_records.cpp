#include "television/cam/cam_mmi_records.h"

#include <algorithm>

namespace television {
namespace {

/** A record for handlers, and the screen that holds the texts to which it points. */
template <typename Record>
struct ScreenRecord {
    Record record = {};
    CamDialogue::Screen screen;
};

/** A pointer to the record that owns the screen too. */
template <typename Record>
std::shared_ptr<void> recordOf(const std::shared_ptr<ScreenRecord<Record>>& owner) {
    return {owner, &owner->record};
}

}  // namespace

std::shared_ptr<void> menuRecord(const CamDialogue::Screen& screen, uint32_t id) {
    const auto owner = std::make_shared<ScreenRecord<CI_MMI_MENU_T>>();
    owner->screen = screen;
    CI_MMI_MENU_T& menu = owner->record;
    menu.ui4_id = id;
    menu.w2s_title = pointerTo(screen->title);
    menu.w2s_subtitle = pointerTo(screen->subtitle);
    menu.w2s_bottom = pointerTo(screen->bottom);
    menu.ui1_item_count = static_cast<uint8_t>(screen->items.size());
    std::transform(screen->items.begin(), screen->items.end(), menu.aw2s_items,
                   [](const CamItem& item) { return pointerTo(item.text); });
    return recordOf(owner);
}

std::shared_ptr<void> enquiryRecord(const CamDialogue::Screen& screen, uint32_t id) {
    const auto owner = std::make_shared<ScreenRecord<CI_MMI_ENQ_T>>();
    owner->screen = screen;
    owner->record.ui4_id = id;
    owner->record.ui1_answer_length = screen->length;
    owner->record.b_blind_answer = screen->blind ? 1 : 0;
    owner->record.w2s_text = pointerTo(screen->prompt);
    return recordOf(owner);
}

}  // namespace television
