// The message that is on the screen in place of a picture.
#include "middleware/screensaver.h"
#include "television/modules/modules.h"
#include "television/settings/input_sources.h"

namespace television {

void plugScreensaver(switchboard::Switchboard& board, const InputSources& inputs) {
    board.on<&a_qortvapi_screensaver_get_msgID>([&inputs] { return inputs.screenMessage(); });
}

}  // namespace television
