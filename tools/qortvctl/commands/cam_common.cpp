#include "qortvctl/commands/cam_common.h"

#include <fmt/format.h>

#include <cstdio>

#include "qortvctl/commands/exit_status.h"

namespace qortvctl {

int camFailure(const char* message) {
    fmt::print(stderr, "qortvctl: {}\n", message);
    return kFailure;
}

int camMissing() {
    return camFailure("there is no CAM in the slot");
}

}  // namespace qortvctl
