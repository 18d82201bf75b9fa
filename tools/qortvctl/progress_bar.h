/** Progress on one line of a terminal. */
#pragma once

#include <cstddef>
#include <string>

namespace qortvctl {

/**
 * "Scanning [#####.....]  50 %  4 tv", as wide as `columns` at most: the bar takes what `title` and
 * `text` leave; where that is too little for a bar it is left out, and then the end of the text.
 *
 * @param percent 0 to 100; more counts as 100
 * @param title, text UTF-8
 */
std::string progressLine(const std::string& title, unsigned percent, const std::string& text,
                         size_t columns);

/** A line at the end of a terminal that is drawn again and again. Standard output; one thread. */
class ProgressBar {
  public:
    /** Whether standard output is a terminal, and can have one. */
    static bool possible();

    explicit ProgressBar(std::string title) : mTitle(std::move(title)) {}
    /** Takes the line away. */
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /** @param text UTF-8, shown behind the bar */
    void draw(unsigned percent, const std::string& text);
    /** Takes the line away until it is drawn again. */
    void clear();

  private:
    const std::string mTitle;
    bool mDrawn = false;
};

}  // namespace qortvctl
