/** The dialogue of the CAM with a person at a terminal, or with a script. */
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>

#include "qortv/cam.h"
#include "qortvctl/commands/cam_session.h"

namespace qortvctl {

/**
 * Shows what the CAM asks, and sends the lines of standard input as answers, as a viewer with a
 * remote control would. One object for each dialogue.
 */
class CamDialogue {
  public:
    /**
     * @param session must outlive this object
     * @param json whether to print events as JSON lines instead of text
     */
    CamDialogue(CamSession& session, bool json) : mSession(session), mJson(json) {}

    /**
     * Opens the main menu and continues until either side ends the dialogue.
     *
     * @return the exit status
     * @throws qortv::Error as the methods of Cam and CamSession do
     */
    int run();

  private:
    /** What the CAM waits for an answer to; monostate: nothing. */
    using Question =
            std::variant<std::monostate, qortv::CamMenu, qortv::CamList, qortv::CamEnquiry>;

    static Question questionOf(const qortv::CamEvent& event);

    bool asked() const { return !std::holds_alternative<std::monostate>(mQuestion); }
    bool readsLines() const;
    std::optional<std::chrono::milliseconds> timeout() const;
    int exitStatus() const;

    void prepareInput();
    std::string prompt() const;

    bool handleEvent(const qortv::CamEvent& event);
    bool checkEnd(const qortv::CamEvent& event);
    void show(const qortv::CamEvent& event) const;

    void handleLine(const std::string& line);
    bool answer(const qortv::CamMenu& menu, const std::string& line);
    bool answer(const qortv::CamList& list, const std::string& line);
    bool answer(const qortv::CamEnquiry& enquiry, const std::string& line);
    bool answer(std::monostate, const std::string& line);
    bool answerBackOrClose(const qortv::CamMenu& menu, const std::string& line);

    void reportError(const std::string& message) const;
    int close();

    CamSession& mSession;
    const bool mJson;
    Question mQuestion;
    bool mOpened = false;     ///< the CAM has answered; events before that are of other dialogues
    bool mUpgrading = false;  ///< the CAM closed the dialogue to take new firmware
    bool mPromptDue = false;
    bool mClosing = false;  ///< we are to close the dialogue
    bool mFailed = false;
};

}  // namespace qortvctl
