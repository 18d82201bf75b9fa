#include "qortvctl/commands/commands.h"

namespace qortvctl {

void addCommands(CommandLine& commandLine) {
    addList(commandLine);
    addChannels(commandLine);
    addSelect(commandLine);
    addWatch(commandLine);
    addCam(commandLine);
    addScan(commandLine);
    addZap(commandLine);
    addNow(commandLine);
    addEpg(commandLine);
    addTime(commandLine);
    addRecord(commandLine);
    addRecordings(commandLine);
    addConfig(commandLine);
}

}  // namespace qortvctl
