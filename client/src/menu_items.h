/** The items of a menu or list of the Common Interface module. */
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/types.h>

#include "utf16.h"

namespace qortv {

/** Returns the texts of the menu's items as UTF-8: as many as the module says there are, but no
 * more than the record holds, as nothing has checked the count before. */
inline std::vector<std::string> itemsOf(
        const vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_MENU_T& menu) {
    std::vector<std::string> items;
    const size_t count = std::min<size_t>(menu.item_count, menu.items.size());
    for (size_t i = 0; i < count; ++i) items.push_back(toUtf8(menu.items[i]));
    return items;
}

}  // namespace qortv
