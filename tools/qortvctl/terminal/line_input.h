/** Standard input line by line, from a terminal or a pipe; a terminal's echo can be switched off.
 */
#pragma once

#include <termios.h>

#include <optional>
#include <string>

namespace qortvctl {

/** One object at a time, used by one thread. Restores the terminal's settings in the end. */
class LineInput {
  public:
    LineInput();
    ~LineInput();
    LineInput(const LineInput&) = delete;
    LineInput& operator=(const LineInput&) = delete;

    /** Whether standard input is a terminal, where a person may be typing. */
    bool isTerminal() const { return mIsTerminal; }

    /**
     * Switches the terminal's echo: whether it shows what is typed. A change discards what was
     * typed ahead, so that the answer to one question is neither shown by nor given to the next
     * one. No effect on a pipe.
     */
    void setEcho(bool echo);

    /**
     * Applies setEcho() to the terminal again, after another program has used it. Discards what
     * was typed ahead.
     */
    void restoreEcho();

    /** The oldest line that was read and not yet taken, without its end; nothing when no complete
     * line is there. The last line of the input needs no end. */
    std::optional<std::string> takeLine();

    /** Whether the end of the input was reached and every line taken. */
    bool ended() const { return mEnded && mBuffer.empty(); }

    /**
     * Reads what is available, and waits if nothing is: call it when poll() reports input.
     *
     * @throws std::runtime_error for an error, and for a line that is absurdly long
     */
    void read();

  private:
    termios mOriginal = {};  ///< the terminal's settings at the start
    const bool mIsTerminal;
    bool mEcho = true;
    std::string mBuffer;  ///< read, and not yet taken
    bool mEnded = false;
};

}  // namespace qortvctl
