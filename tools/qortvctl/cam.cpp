// qortvctl cam: what the CAM is, its PIN, and putting it into the slot. Its menus: cam_menu.cpp.
#include <fmt/format.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <variant>

#include "cam_output.h"
#include "cam_session.h"
#include "commands.h"
#include "output.h"

namespace qortvctl {

namespace {

using qortv::CamSlot;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi;

/** Longest that a CAM looks at a PIN. */
constexpr std::chrono::seconds kPinPatience{10};

std::string hex(const std::array<uint8_t, 8>& id) {
    std::string text;
    for (const uint8_t byte : id) text += fmt::format("{:02x}", byte);
    return text;
}

int failed(const char* message) {
    fmt::print(stderr, "qortvctl: {}\n", message);
    return kFailure;
}

int setInserted(const Common& common, bool inserted) {
    qortv::Cam cam(qortv::connect<qortv::Cam::Interface>(common.timeout));
    if (!inserted && cam.slot() == CamSlot::kEmpty) return noCam();
    qortv::setCamInserted(qortv::connect<IQorTvApi>(common.timeout), inserted);
    if ((cam.slot() != CamSlot::kEmpty) != inserted) {
        return failed(inserted ? "the slot stays empty" : "the CAM stays in the slot");
    }
    if (common.json) {
        printLine(nlohmann::json{{"inserted", inserted}}.dump());
    } else {
        printLine(inserted ? "inserted" : "removed");
    }
    return kOk;
}

/** The PIN from standard input, or nothing when none came. */
std::optional<std::string> askForPin(CamSession& session) {
    session.input().setBlind(true);
    if (session.input().isTerminal()) {
        std::fputs("PIN (not shown): ", stderr);
        std::fflush(stderr);
    }
    for (;;) {
        auto happening = session.wait(true, std::nullopt);
        if (auto* line = std::get_if<CamSession::Line>(&happening)) {
            session.input().setBlind(false);
            return std::move(line->text);
        }
        if (!std::holds_alternative<qortv::CamEvent>(happening)) return std::nullopt;
    }
}

int reply(const Common& common, qortv::CamPin state) {
    if (common.json) {
        printLine(nlohmann::json{{"pin", name(state)}}.dump());
    } else {
        printLine(fmt::format("PIN {}", name(state)));
    }
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

}  // namespace

int noCam() {
    return failed("there is no CAM in the slot");
}

int camStatus(const Common& common) {
    qortv::Cam cam(qortv::connect<qortv::Cam::Interface>(common.timeout));
    const CamSlot slot = cam.slot();
    if (slot == CamSlot::kEmpty) {
        if (common.json) printLine(nlohmann::json{{"slot", name(slot)}}.dump());
        return noCam();
    }
    const std::string camName = cam.name();
    const std::string id = hex(cam.id());
    const std::string language = cam.language();
    const std::string profile = cam.profile();
    const auto tries = cam.pinTries();
    if (common.json) {
        const nlohmann::ordered_json status = {
                {"slot", name(slot)},
                {"name", camName},
                {"id", id},
                {"language", language},
                {"profile", profile},
                {"pinTries", tries ? nlohmann::ordered_json(*tries) : nullptr}};
        printLine(status.dump(2));
        return kOk;
    }
    Table table({{"NAME"},
                 {"ID"},
                 {"LANGUAGE"},
                 {"PROFILE"},
                 {"PIN TRIES", Table::Align::kRight},
                 {"STATE"}});
    table.add({camName, id, language, profile, tries ? std::to_string(*tries) : "-", name(slot)});
    table.print();
    return kOk;
}

int camPin(const Common& common) {
    CamSession session(common.timeout);
    if (session.cam().slot() == CamSlot::kEmpty) return noCam();
    if (!session.cam().pinTries()) return failed("the CAM has no PIN");
    const auto pin = askForPin(session);
    if (!pin) return failed("standard input holds no PIN");
    session.forgetEvents();  // such as replies to others
    session.cam().enterPin(*pin);
    for (;;) {
        const auto happening = session.wait(false, kPinPatience);
        if (std::holds_alternative<CamSession::TimeIsUp>(happening)) {
            return failed("the CAM does not answer");
        }
        if (std::holds_alternative<CamSession::Interrupted>(happening)) return kFailure;
        const auto* event = std::get_if<qortv::CamEvent>(&happening);
        if (event == nullptr) continue;
        if (const auto* answer = std::get_if<qortv::CamPinReply>(event)) {
            return reply(common, answer->state);
        }
        const auto* card = std::get_if<qortv::CamCard>(event);
        if (card != nullptr && !card->inserted) return failed("the CAM was removed");
    }
}

int camInsert(const Common& common) {
    return setInserted(common, true);
}

int camRemove(const Common& common) {
    return setInserted(common, false);
}

}  // namespace qortvctl
