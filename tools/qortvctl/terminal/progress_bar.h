/** A progress bar on one line of a terminal. */
#pragma once

#include <cstddef>
#include <string>
#include <utility>

namespace qortvctl {

/**
 * "Scanning [#####.....]  50 %  4 tv", at most `columns` wide. The bar gets the columns that
 * `title` and `text` leave; if they are too few for a bar, it is left out, and the line is cut at
 * `columns`.
 *
 * @param percent 0 to 100; more counts as 100
 * @param title, text UTF-8
 */
std::string progressLine(const std::string& title, unsigned percent, const std::string& text,
                         size_t columns);

/** The last line of standard output, redrawn in place. For one thread. */
class ProgressBar {
  public:
    /** Whether standard output is a terminal, which a bar needs. */
    static bool possible();

    explicit ProgressBar(std::string title) : mTitle(std::move(title)) {}
    /** Erases the line. */
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /** @param text UTF-8, shown behind the bar */
    void draw(unsigned percent, const std::string& text);
    /** Erases the line until the next draw(). */
    void clear();

  private:
    const std::string mTitle;
    bool mDrawn = false;
};

}  // namespace qortvctl
