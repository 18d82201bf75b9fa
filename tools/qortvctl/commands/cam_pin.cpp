// qortvctl cam pin: gives the CAM the PIN that is on standard input.
#include <fmt/format.h>

#include <chrono>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "qortv/cam.h"
#include "qortvctl/commands/cam_common.h"
#include "qortvctl/commands/cam_session.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/terminal/standard_output.h"

namespace qortvctl {

namespace {

constexpr char kCamPinHelp[] =
        R"(The PIN is the first line of standard input, never an argument, and is not shown while it is typed.
Exit status: 0 right; 4 wrong; 5 locked.

Examples:
  qortvctl cam pin
  qortvctl cam pin < pin.txt)";

/** Longest that a CAM takes to check a PIN. */
constexpr std::chrono::seconds kPinTimeout{10};

/** The PIN from standard input; nothing when the input ends or a signal comes first. */
std::optional<std::string> readPin(CamSession& session) {
    session.input().setEcho(false);
    if (session.input().isTerminal()) {
        std::fputs("PIN (not shown): ", stderr);
        std::fflush(stderr);
    }
    for (;;) {
        auto occurrence = session.wait(true, std::nullopt);
        if (auto* line = std::get_if<CamSession::Line>(&occurrence)) {
            session.input().setEcho(true);
            return std::move(line->text);
        }
        if (!std::holds_alternative<qortv::CamEvent>(occurrence)) return std::nullopt;
    }
}

int exitStatusAfter(qortv::CamPin state) {
    switch (state) {
        case qortv::CamPin::kRight:
            return kOk;
        case qortv::CamPin::kLocked:
            return kPinLocked;
        case qortv::CamPin::kWrong:
            break;
    }
    return kPinWrong;
}

/** Prints what the CAM says of the PIN. Returns the exit status. */
int report(const CommonOptions& common, qortv::CamPin state) {
    if (common.json) {
        printLine(nlohmann::json{{"pin", name(state)}}.dump());
    } else {
        printLine(fmt::format("PIN {}", name(state)));
    }
    return exitStatusAfter(state);
}

/** Waits for the answer of the CAM. Returns the exit status. */
int waitForReply(const CommonOptions& common, CamSession& session) {
    for (;;) {
        const auto occurrence = session.wait(false, kPinTimeout);
        if (std::holds_alternative<CamSession::TimeIsUp>(occurrence)) {
            return camFailure("the CAM does not answer");
        }
        if (std::holds_alternative<CamSession::Interrupted>(occurrence)) return kFailure;
        const auto* event = std::get_if<qortv::CamEvent>(&occurrence);
        if (event == nullptr) continue;
        if (const auto* reply = std::get_if<qortv::CamPinReply>(event)) {
            return report(common, reply->state);
        }
        const auto* card = std::get_if<qortv::CamCard>(event);
        if (card != nullptr && !card->inserted) return camFailure("the CAM was removed");
    }
}

int camPin(const CommonOptions& common) {
    CamSession session(common.timeout);
    if (session.cam().slot() == qortv::CamSlot::kEmpty) return camMissing();
    if (!session.cam().pinTries()) return camFailure("the CAM has no PIN");
    const auto pin = readPin(session);
    if (!pin) return camFailure("standard input holds no PIN");
    session.clearEvents();  // they may hold the reply to another program
    session.cam().enterPin(*pin);
    return waitForReply(common, session);
}

}  // namespace

void addCamPin(CommandLine& commandLine, CLI::App& cam) {
    commandLine.addCommand(cam, "pin", "Give it its PIN", kCamPinHelp, camPin);
}

}  // namespace qortvctl
