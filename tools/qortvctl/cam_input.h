/** Standard input line by line, from a terminal or a pipe; on a terminal also without echo. */
#pragma once

#include <termios.h>

#include <optional>
#include <string>

namespace qortvctl {

/** One object at a time, used by one thread. Leaves the terminal as it was found. */
class CamInput {
  public:
    CamInput();
    ~CamInput();
    CamInput(const CamInput&) = delete;
    CamInput& operator=(const CamInput&) = delete;

    /** Whether a person may be typing. */
    bool isTerminal() const { return mIsTerminal; }

    /**
     * Whether what is typed from now on is kept from the screen. A change forgets what was typed
     * ahead, so that nothing meant for one question is shown by or given to another. No effect on
     * a pipe.
     */
    void setBlind(bool blind);

    /** The terminal was somebody else's for a while: sets it again as setBlind() said. */
    void restoreBlindness();

    /** The next line that was read, without its end; the last one may have none. */
    std::optional<std::string> takeLine();

    /** Whether everything was read and taken. */
    bool ended() const { return mEnded && mRead.empty(); }

    /**
     * Reads what there is, waiting if there is nothing; to be called when poll() says so.
     *
     * @throws std::runtime_error for an error, and for a line without end
     */
    void read();

  private:
    termios mFound = {};
    const bool mIsTerminal;
    bool mBlind = false;
    std::string mRead;
    bool mEnded = false;
};

}  // namespace qortvctl
