// qortvctl cam menu: the CAM's dialogue, as a viewer with a remote control walks through it.
#include <fmt/format.h>

#include <charconv>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <variant>

#include "cam_output.h"
#include "cam_session.h"
#include "commands.h"
#include "output.h"

namespace qortvctl {

namespace {

using qortv::CamClosed;
using qortv::CamEnquiry;
using qortv::CamEvent;
using qortv::CamList;
using qortv::CamMenu;

/** Longest that a script waits for what the CAM shows next, and anybody for the dialogue's end. */
constexpr std::chrono::seconds kPatience{10};

/** What the CAM waits for an answer to. */
using Screen = std::variant<std::monostate, CamMenu, CamList, CamEnquiry>;

class Dialogue {
  public:
    Dialogue(CamSession& session, bool json) : mSession(session), mJson(json) {}

    /** From the main menu to the end, whoever ends it. Returns the exit status. */
    int run() {
        mSession.forgetEvents();  // of dialogues before this one
        mSession.cam().openMenu();
        while (!mEnding) {
            prepareInput();
            auto happening = mSession.wait(listens(), patience());
            if (auto* event = std::get_if<CamEvent>(&happening)) {
                if (hear(*event)) return mFailed ? kFailure : kOk;
            } else if (auto* line = std::get_if<CamSession::Line>(&happening)) {
                tell(line->text);
            } else {
                if (std::holds_alternative<CamSession::TimeIsUp>(happening)) complain(kSilence);
                mFailed = std::holds_alternative<CamSession::TimeIsUp>(happening);
                mEnding = true;
            }
        }
        return end();
    }

  private:
    static constexpr char kSilence[] = "the CAM does not answer";

    bool asked() const { return !std::holds_alternative<std::monostate>(mScreen); }

    // A script's line is for the next screen; a person may have enough at any time.
    bool listens() const { return asked() || mSession.input().isTerminal(); }

    std::optional<std::chrono::milliseconds> patience() const {
        if (listens()) return std::nullopt;
        return kPatience;
    }

    void prepareInput() {
        const auto* enquiry = std::get_if<CamEnquiry>(&mScreen);
        mSession.input().setBlind(enquiry != nullptr && enquiry->blind);
        if (!mPromptDue || !asked() || mJson || !mSession.input().isTerminal()) return;
        mPromptDue = false;
        std::string prompt = "Enter: back, q: close> ";
        if (enquiry != nullptr) {
            prompt = fmt::format("Up to {} characters{}, Enter: back> ", enquiry->answerLength,
                                 enquiry->blind ? ", not shown" : "");
        } else if (std::holds_alternative<CamMenu>(mScreen)) {
            prompt = "Number, Enter: back, q: close> ";
        }
        std::fputs(prompt.c_str(), stdout);
        std::fflush(stdout);
    }

    /** Shows what the CAM says; true when there is no more to come. */
    bool hear(const CamEvent& event) {
        const Screen shown = screenOf(event);
        const auto* card = std::get_if<qortv::CamCard>(&event);
        const bool removed = card != nullptr && !card->inserted;
        mOpened = mOpened || shown.index() != 0;
        if (!mOpened && !removed) return false;  // of the time before this dialogue
        if (mJson) {
            printLine(toJsonLine(event));
        } else {
            for (const auto& line : toLines(event)) printLine(line);
        }
        mPromptDue = true;
        if (shown.index() != 0) mScreen = shown;
        if (const auto* closed = std::get_if<CamClosed>(&event)) {
            mScreen = std::monostate{};
            mFailed = mFailed || closed->by == CamClosed::By::kRemoval;
            // Of an upgrade that was chosen the progress is still to come.
            mUpgrading = closed->by == CamClosed::By::kModule &&
                         mSession.cam().slot() == qortv::CamSlot::kUpgrading;
            return !mUpgrading;
        }
        mFailed = mFailed || removed;
        const auto* progress = std::get_if<qortv::CamUpgradeProgress>(&event);
        return removed || (mUpgrading && progress != nullptr && progress->percent >= 100);
    }

    static Screen screenOf(const CamEvent& event) {
        if (const auto* menu = std::get_if<CamMenu>(&event)) return *menu;
        if (const auto* list = std::get_if<CamList>(&event)) return *list;
        if (const auto* enquiry = std::get_if<CamEnquiry>(&event)) return *enquiry;
        return std::monostate{};
    }

    /** What was typed goes to the CAM. What it refuses may be typed anew. */
    void tell(const std::string& line) {
        mPromptDue = true;
        try {
            const Screen screen = mScreen;
            if (std::visit([&](const auto& shown) { return answer(shown, line); }, screen)) {
                mScreen = std::monostate{};
            }
        } catch (const qortv::Error& error) {
            const bool mistake = error.kind() == qortv::Error::Kind::kRefused ||
                                 error.kind() == qortv::Error::Kind::kArgument;
            if (!mistake) throw;
            complain(error.what());
        }
    }

    // Each: whether the CAM was given an answer.

    bool answer(const CamMenu& menu, const std::string& line) {
        if (leaves(menu, line)) return !mEnding;
        uint8_t item = 0;
        const char* const end = line.data() + line.size();
        const auto [rest, failure] = std::from_chars(line.data(), end, item);
        if (failure != std::errc{} || rest != end) {
            complain("a number, an empty line or q is needed");
            return false;
        }
        mSession.cam().choose(menu, item);
        return true;
    }

    bool answer(const CamList& list, const std::string& line) {
        if (leaves(list, line)) return !mEnding;
        complain("there is nothing to choose: an empty line or q is needed");
        return false;
    }

    bool answer(const CamEnquiry& enquiry, const std::string& line) {
        if (line.empty()) {
            mSession.cam().back(enquiry);
        } else {
            mSession.cam().answer(enquiry, line);
        }
        return true;
    }

    bool answer(std::monostate, const std::string& line) {
        mEnding = line == "q";
        if (!mEnding) complain("the CAM has not answered yet");
        return false;
    }

    bool leaves(const CamMenu& menu, const std::string& line) {
        mEnding = line == "q";
        if (mEnding) return true;
        if (!line.empty() && line != "b") return false;
        mSession.cam().back(menu);
        return true;
    }

    /** A script learns of it where it reads the events. */
    void complain(const std::string& message) const {
        if (mJson) {
            printLine(nlohmann::ordered_json{{"event", "error"}, {"message", message}}.dump());
        } else {
            fmt::print(stderr, "qortvctl: {}\n", message);
        }
    }

    /** Closes the dialogue and waits until it is closed. */
    int end() {
        mSession.input().setBlind(false);
        try {
            mSession.cam().close();
        } catch (const qortv::Error& error) {
            // Over already.
            if (error.kind() != qortv::Error::Kind::kRefused) throw;
            return mFailed ? kFailure : kOk;
        }
        mOpened = true;
        for (;;) {
            const auto happening = mSession.wait(false, kPatience);
            const auto* event = std::get_if<CamEvent>(&happening);
            if (event == nullptr) {
                if (std::holds_alternative<CamSession::TimeIsUp>(happening)) complain(kSilence);
                return kFailure;
            }
            if (hear(*event)) return mFailed ? kFailure : kOk;
        }
    }

    CamSession& mSession;
    const bool mJson;
    Screen mScreen;
    bool mOpened = false;
    bool mUpgrading = false;
    bool mPromptDue = false;
    bool mEnding = false;
    bool mFailed = false;
};

}  // namespace

int camMenu(const Common& common) {
    CamSession session(common.timeout);
    if (session.cam().slot() == qortv::CamSlot::kEmpty) return noCam();
    return Dialogue(session, common.json).run();
}

}  // namespace qortvctl
