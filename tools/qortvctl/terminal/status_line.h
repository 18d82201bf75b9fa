/** A status on one line of a terminal, such as how long a recording is. */
#pragma once

#include <string>

namespace qortvctl {

/** The last line of standard error, redrawn in place. For one thread. */
class StatusLine {
  public:
    StatusLine();
    /** Erases the line. */
    ~StatusLine();
    StatusLine(const StatusLine&) = delete;
    StatusLine& operator=(const StatusLine&) = delete;

    /** Whether standard error is a terminal, which the line needs. */
    bool possible() const { return mTerminal; }

    /** Replaces what the line shows. */
    void show(const std::string& text);

    /** Erases the line until the next show(). */
    void clear();

  private:
    const bool mTerminal;
    bool mShown = false;
};

}  // namespace qortvctl
