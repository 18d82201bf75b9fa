// qortvctl cam menu: walks through the menus of the CAM.
#include "qortv/cam.h"
#include "qortvctl/commands/cam_common.h"
#include "qortvctl/commands/cam_dialogue.h"
#include "qortvctl/commands/cam_session.h"
#include "qortvctl/commands/commands.h"

namespace qortvctl {

namespace {

constexpr char kCamMenuHelp[] =
        R"(A line is an answer: the number of an item; nothing or b to go back; q to close the dialogue.
Where the CAM asks for a text, the line is that text, and nothing goes back. What the CAM wants
hidden is not shown while it is typed. The end of the input and Ctrl-C close the dialogue.
With --json, what the CAM shows is one line each. From a pipe a line is read when an answer is due.

Examples:
  qortvctl cam menu
  printf '2\n\n' | qortvctl cam menu
  printf '1\n' | qortvctl cam menu --json | jq -r 'select(.event == "list") | .items[]')";

}  // namespace

int camMenu(const CommonOptions& common) {
    CamSession session(common.timeout);
    if (session.cam().slot() == qortv::CamSlot::kEmpty) return camMissing();
    return CamDialogue(session, common.json).run();
}

void addCamMenu(CommandLine& commandLine, CLI::App& cam) {
    commandLine.addCommand(cam, "menu", "Walk through its menus", kCamMenuHelp, camMenu);
}

}  // namespace qortvctl
