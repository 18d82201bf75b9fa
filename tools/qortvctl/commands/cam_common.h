/** What the commands about the CAM have in common. */
#pragma once

#include "qortvctl/commands/command_line.h"

namespace qortvctl {

/** Lets a person or a script walk through the menus of the CAM. Returns the exit status. */
int camMenu(const CommonOptions& common);

/** Prints a message on standard error. Returns the exit status of a failure. */
int camFailure(const char* message);

/** The same for an empty slot. */
int camMissing();

}  // namespace qortvctl
