// The password dialog: checking the password, and notifications of its messages.
#include <memory>
#include <mutex>
#include <string>

#include "middleware/pwddlg.h"
#include "middleware/result_codes.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/modules/password.h"

namespace television {

void plugPasswordDialog(switchboard::Switchboard& board, Core& core) {
    struct Dialog {
        std::mutex mutex;
        uint32_t wrong = 0;  ///< wrong passwords since the last right one; guarded by mutex
    };
    const auto dialog = std::make_shared<Dialog>();
    const auto notify = [&core](int32_t message, uint32_t wrong) {
        core.notifier.post({registration<&a_qortvapi_pwddlg_register_msg_callback>(),
                            message,
                            {wrong, 0, 0, 0}});
    };
    board.on<&a_qortvapi_PWDDLG_show>([=] {
        std::lock_guard<std::mutex> lock(dialog->mutex);
        notify(PWDDLG_MSG_SHOW, dialog->wrong);
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_PWDDLG_checkPWD>([=, &core](const char* password) -> int32_t {
        const std::string kept = core.remembered(kPasswordName);
        const auto given = readText(password, kLongestPassword);
        const bool right = given && *given == (kept.empty() ? PWDDLG_DEFAULT_PASSWORD : kept);
        std::lock_guard<std::mutex> lock(dialog->mutex);
        dialog->wrong = right ? 0 : dialog->wrong + 1;
        notify(right ? PWDDLG_MSG_ACCEPTED : PWDDLG_MSG_WRONG, dialog->wrong);
        return right ? TV_OK : TV_INVALID_ARGUMENT;
    });
}

}  // namespace television
