// Teletext: the selected page. Pages are not decoded.
#include <memory>
#include <mutex>

#include "middleware/result_codes.h"
#include "middleware/teletext.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Any thread; the lock is held while notifications are queued. */
struct Page {
    std::mutex mutex;
    QORTVAPI_TTX_PAGE_ADDR_T address = {1, 0x00, 0};  // guarded by mutex
};

/** The bits of a sub-page number: four hexadecimal digits, the first at most 3, the third at
 * most 7.
 */
constexpr uint16_t kSubPageBits = 0x3F7F;

bool isPage(const QORTVAPI_TTX_PAGE_ADDR_T& page) {
    return page.ui1_magazine >= 1 && page.ui1_magazine <= 8 &&
           (page.ui2_sub_page & ~kSubPageBits) == 0;
}

}  // namespace

void plugTeletext(switchboard::Switchboard& board, Core& core) {
    const auto current = std::make_shared<Page>();
    board.on<&a_qortvapi_teletext_get_cur_page>([=](QORTVAPI_TTX_PAGE_ADDR_T* page) -> int32_t {
        if (!writable(page)) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(current->mutex);
        *page = current->address;
        return TV_OK;
    });
    board.on<&a_qortvapi_teletext_set_page>(
            [=, &core](const QORTVAPI_TTX_PAGE_ADDR_T* page) -> int32_t {
                if (page == nullptr || !isPage(*page)) return TV_INVALID_ARGUMENT;
                std::lock_guard<std::mutex> lock(current->mutex);
                current->address = *page;
                core.notifier.post({registration<&a_qortvapi_teletext_register_msg_callback>(),
                                    TELETEXT_NFY_PAGE,
                                    {page->ui1_magazine, page->ui1_page, page->ui2_sub_page, 0}});
                return TV_OK;
            });
    board.on<&a_qortvapi_teletext_is_top_stream>([] { return int32_t{0}; });
    board.on<&a_qortvapi_teletext_top_get_block_content>(
            [](QORTVAPI_TTX_TOP_TABLE_T*) { return int32_t{TV_NOT_SUPPORTED}; });
    const auto noTable = [](const QORTVAPI_TTX_PAGE_ADDR_T*, QORTVAPI_TTX_TOP_TABLE_T*) {
        return int32_t{TV_NOT_SUPPORTED};
    };
    board.on<&a_qortvapi_teletext_top_get_group_content>(noTable);
    board.on<&a_qortvapi_teletext_top_get_page_content>(noTable);
    board.on<&a_qortvapi_teletext_get_ttx_rating_on>([] { return int32_t{0}; });
}

}  // namespace television
