/** The commands of qortvctl. */
#pragma once

#include "qortvctl/commands/command_line.h"

namespace qortvctl {

/** Adds all commands, in the order of the help text. */
void addCommands(CommandLine& commandLine);

// Each adds one command, or a group of commands.

void addList(CommandLine& commandLine);
void addChannels(CommandLine& commandLine);
void addSelect(CommandLine& commandLine);
void addWatch(CommandLine& commandLine);
void addCam(CommandLine& commandLine);
void addScan(CommandLine& commandLine);
void addZap(CommandLine& commandLine);
void addNow(CommandLine& commandLine);
void addEpg(CommandLine& commandLine);
void addTime(CommandLine& commandLine);
void addRecord(CommandLine& commandLine);
void addRecordings(CommandLine& commandLine);
void addConfig(CommandLine& commandLine);

// Each adds one command to the group it belongs to.

void addCamMenu(CommandLine& commandLine, CLI::App& cam);
void addCamPin(CommandLine& commandLine, CLI::App& cam);
void addRecordAt(CommandLine& commandLine, CLI::App& record);
void addRecordList(CommandLine& commandLine, CLI::App& record);
void addRecordStop(CommandLine& commandLine, CLI::App& record);
void addRecordCancel(CommandLine& commandLine, CLI::App& record);
void addConfigWatch(CommandLine& commandLine, CLI::App& config);

}  // namespace qortvctl
