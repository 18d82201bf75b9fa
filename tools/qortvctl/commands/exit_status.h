/** Exit statuses, as the help texts explain them. */
#pragma once

namespace qortvctl {

enum ExitStatus {
    kOk = 0,
    kFailure = 1,
    kUsage = 2,
    kNoService = 3,
    kPinWrong = 4,
    kPinLocked = 5
};

}  // namespace qortvctl
