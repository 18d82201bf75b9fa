#include "qortvctl/commands/cam_dialogue.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "qortvctl/commands/exit_status.h"
#include "qortvctl/presentation/cam_event_text.h"
#include "qortvctl/terminal/standard_output.h"

namespace qortvctl {

namespace {

using qortv::CamClosed;
using qortv::CamEnquiry;
using qortv::CamEvent;
using qortv::CamList;
using qortv::CamMenu;

/** Longest that the CAM takes to show something, or to close the dialogue. */
constexpr std::chrono::seconds kTimeout{10};

constexpr char kTimeoutMessage[] = "the CAM does not answer";

/** Whether the CAM was taken out of its slot. */
bool isRemoval(const CamEvent& event) {
    const auto* card = std::get_if<qortv::CamCard>(&event);
    return card != nullptr && !card->inserted;
}

}  // namespace

int CamDialogue::run() {
    mSession.clearEvents();  // they belong to earlier dialogues
    mSession.cam().openMenu();
    while (!mClosing) {
        prepareInput();
        auto occurrence = mSession.wait(readsLines(), timeout());
        if (auto* event = std::get_if<CamEvent>(&occurrence)) {
            if (handleEvent(*event)) return exitStatus();
        } else if (auto* line = std::get_if<CamSession::Line>(&occurrence)) {
            handleLine(line->text);
        } else {
            // The time is up, a signal came, or the input ended.
            mFailed = std::holds_alternative<CamSession::TimeIsUp>(occurrence);
            if (mFailed) reportError(kTimeoutMessage);
            mClosing = true;
        }
    }
    return close();
}

int CamDialogue::exitStatus() const {
    return mFailed ? kFailure : kOk;
}

CamDialogue::Question CamDialogue::questionOf(const CamEvent& event) {
    if (const auto* menu = std::get_if<CamMenu>(&event)) return *menu;
    if (const auto* list = std::get_if<CamList>(&event)) return *list;
    if (const auto* enquiry = std::get_if<CamEnquiry>(&event)) return *enquiry;
    return std::monostate{};
}

/** A line of a script is the answer to the next question; a person may type q at any time. */
bool CamDialogue::readsLines() const {
    return asked() || mSession.input().isTerminal();
}

/** How long to wait for the next occurrence; for ever where it may be a line. */
std::optional<std::chrono::milliseconds> CamDialogue::timeout() const {
    if (readsLines()) return std::nullopt;
    return kTimeout;
}

/** Sets the echo as the question demands, and prints the prompt where a person is to answer. */
void CamDialogue::prepareInput() {
    const auto* enquiry = std::get_if<CamEnquiry>(&mQuestion);
    mSession.input().setEcho(enquiry == nullptr || !enquiry->blind);
    if (!mPromptDue || !asked() || mJson || !mSession.input().isTerminal()) return;
    mPromptDue = false;
    std::fputs(prompt().c_str(), stdout);
    std::fflush(stdout);
}

std::string CamDialogue::prompt() const {
    if (const auto* enquiry = std::get_if<CamEnquiry>(&mQuestion)) {
        return fmt::format("Up to {} characters{}, Enter: back> ", enquiry->answerLength,
                           enquiry->blind ? ", not shown" : "");
    }
    if (std::holds_alternative<CamMenu>(mQuestion)) return "Number, Enter: back, q: close> ";
    return "Enter: back, q: close> ";
}

/** Shows an event. Returns whether it is the end. */
bool CamDialogue::handleEvent(const CamEvent& event) {
    const Question question = questionOf(event);
    const bool asks = !std::holds_alternative<std::monostate>(question);
    mOpened = mOpened || asks;
    if (!mOpened && !isRemoval(event)) return false;
    show(event);
    mPromptDue = true;
    if (asks) mQuestion = question;
    return checkEnd(event);
}

/** Returns whether an event ends the dialogue, and notes whether that is a failure. */
bool CamDialogue::checkEnd(const CamEvent& event) {
    if (const auto* closed = std::get_if<CamClosed>(&event)) {
        mQuestion = std::monostate{};
        mFailed = mFailed || closed->by == CamClosed::By::kRemoval;
        // A CAM that closes the dialogue for a firmware upgrade goes on to report its progress.
        mUpgrading = closed->by == CamClosed::By::kModule &&
                     mSession.cam().slot() == qortv::CamSlot::kUpgrading;
        return !mUpgrading;
    }
    if (isRemoval(event)) {
        mFailed = true;
        return true;
    }
    const auto* progress = std::get_if<qortv::CamUpgradeProgress>(&event);
    return mUpgrading && progress != nullptr && progress->percent >= 100;
}

void CamDialogue::show(const CamEvent& event) const {
    if (mJson) {
        printLine(toJsonLine(event));
    } else {
        for (const auto& line : toLines(event)) printLine(line);
    }
}

/** Sends a line as the answer. If the CAM refuses it, the same question can be answered again. */
void CamDialogue::handleLine(const std::string& line) {
    mPromptDue = true;
    try {
        const Question question = mQuestion;
        if (std::visit([&](const auto& shown) { return answer(shown, line); }, question)) {
            mQuestion = std::monostate{};
        }
    } catch (const qortv::Error& error) {
        const bool refused = error.kind() == qortv::Error::Kind::kRefused ||
                             error.kind() == qortv::Error::Kind::kArgument;
        if (!refused) throw;
        reportError(error.what());
    }
}

// Each answer() returns whether the question is answered.

bool CamDialogue::answer(const CamMenu& menu, const std::string& line) {
    if (answerBackOrClose(menu, line)) return !mClosing;
    uint8_t item = 0;
    const char* const end = line.data() + line.size();
    const auto [rest, failure] = std::from_chars(line.data(), end, item);
    if (failure != std::errc{} || rest != end) {
        reportError("a number, an empty line or q is needed");
        return false;
    }
    mSession.cam().choose(menu, item);
    return true;
}

bool CamDialogue::answer(const CamList& list, const std::string& line) {
    if (answerBackOrClose(list, line)) return !mClosing;
    reportError("there is nothing to choose: an empty line or q is needed");
    return false;
}

bool CamDialogue::answer(const CamEnquiry& enquiry, const std::string& line) {
    if (line.empty()) {
        mSession.cam().back(enquiry);
    } else {
        mSession.cam().answer(enquiry, line);
    }
    return true;
}

bool CamDialogue::answer(std::monostate, const std::string& line) {
    mClosing = line == "q";
    if (!mClosing) reportError("the CAM has not answered yet");
    return false;
}

/** Does what every menu and list can be told: to close or to go back. Returns whether the line was
 * one of these. */
bool CamDialogue::answerBackOrClose(const CamMenu& menu, const std::string& line) {
    mClosing = line == "q";
    if (mClosing) return true;
    if (!line.empty() && line != "b") return false;
    mSession.cam().back(menu);
    return true;
}

/** To standard error; with --json as an event, because a script reads those. */
void CamDialogue::reportError(const std::string& message) const {
    if (mJson) {
        printLine(nlohmann::ordered_json{{"event", "error"}, {"message", message}}.dump());
    } else {
        fmt::print(stderr, "qortvctl: {}\n", message);
    }
}

/** Closes the dialogue and waits until it is closed. Returns the exit status. */
int CamDialogue::close() {
    mSession.input().setEcho(true);
    try {
        mSession.cam().close();
    } catch (const qortv::Error& error) {
        if (error.kind() != qortv::Error::Kind::kRefused) throw;
        return exitStatus();  // it was closed already
    }
    mOpened = true;
    for (;;) {
        const auto occurrence = mSession.wait(false, kTimeout);
        const auto* event = std::get_if<CamEvent>(&occurrence);
        if (event == nullptr) {
            if (std::holds_alternative<CamSession::TimeIsUp>(occurrence)) {
                reportError(kTimeoutMessage);
            }
            return kFailure;
        }
        if (handleEvent(*event)) return exitStatus();
    }
}

}  // namespace qortvctl
