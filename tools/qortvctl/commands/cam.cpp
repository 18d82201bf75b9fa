// qortvctl cam status, insert and remove; the group that the other commands about the CAM belong
// to.
#include <fmt/format.h>

#include <array>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "qortv/cam.h"
#include "qortvctl/commands/cam_common.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/terminal/table.h"

namespace qortvctl {

namespace {

using qortv::CamSlot;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi;

constexpr char kCamHelp[] =
        R"(Without a command: menu. Without a CAM in the slot every command but insert fails (exit status 1).

Examples:
  qortvctl cam
  qortvctl cam status --json
  qortvctl cam pin < pin.txt)";

std::string hexText(const std::array<uint8_t, 8>& bytes) {
    std::string text;
    for (const uint8_t byte : bytes) text += fmt::format("{:02x}", byte);
    return text;
}

/** What `cam status` shows. */
struct Status {
    std::string name;
    std::string id;  ///< in hex
    std::string language;
    std::string profile;
    std::optional<uint8_t> pinTries;
    CamSlot slot;
};

void printJson(const Status& status) {
    using Json = nlohmann::ordered_json;
    const Json json = {{"slot", name(status.slot)},
                       {"name", status.name},
                       {"id", status.id},
                       {"language", status.language},
                       {"profile", status.profile},
                       {"pinTries", status.pinTries ? Json(*status.pinTries) : Json()}};
    printLine(json.dump(2));
}

void printTable(const Status& status) {
    Table table({{"NAME"},
                 {"ID"},
                 {"LANGUAGE"},
                 {"PROFILE"},
                 {"PIN TRIES", Table::Align::kRight},
                 {"STATE"}});
    table.add({status.name, status.id, status.language, status.profile,
               status.pinTries ? std::to_string(*status.pinTries) : "-", name(status.slot)});
    table.print();
}

int camStatus(const CommonOptions& common) {
    auto cam = connectTo<qortv::Cam>(common.timeout);
    const CamSlot slot = cam.slot();
    if (slot == CamSlot::kEmpty) {
        if (common.json) printLine(nlohmann::json{{"slot", name(slot)}}.dump());
        return camMissing();
    }
    const Status status = {cam.name(),    hexText(cam.id()), cam.language(),
                           cam.profile(), cam.pinTries(),    slot};
    if (common.json) {
        printJson(status);
    } else {
        printTable(status);
    }
    return kOk;
}

int setInserted(const CommonOptions& common, bool inserted) {
    auto cam = connectTo<qortv::Cam>(common.timeout);
    if (!inserted && cam.slot() == CamSlot::kEmpty) return camMissing();
    qortv::setCamInserted(qortv::connect<IQorTvApi>(common.timeout), inserted);
    if ((cam.slot() != CamSlot::kEmpty) != inserted) {
        return camFailure(inserted ? "the slot stays empty" : "the CAM stays in the slot");
    }
    if (common.json) {
        printLine(nlohmann::json{{"inserted", inserted}}.dump());
    } else {
        printLine(inserted ? "inserted" : "removed");
    }
    return kOk;
}

int camInsert(const CommonOptions& common) {
    return setInserted(common, true);
}

int camRemove(const CommonOptions& common) {
    return setInserted(common, false);
}

}  // namespace

void addCam(CommandLine& commandLine) {
    auto& group = commandLine.addGroup(commandLine.program(), "cam",
                                       "Talk with the Common Interface module", kCamHelp, camMenu);
    addCamMenu(commandLine, group);
    commandLine.addCommand(group, "status", "Show what it is",
                           "Example:\n  qortvctl cam status --json", camStatus);
    addCamPin(commandLine, group);
    commandLine.addCommand(group, "insert", "Put the software television's CAM into the slot",
                           "Example:\n  qortvctl cam insert", camInsert);
    commandLine.addCommand(group, "remove", "Take it out", "Example:\n  qortvctl cam remove",
                           camRemove);
}

}  // namespace qortvctl
