/** How a channel scan is shown while it runs. */
#pragma once

#include <optional>

#include "qortv/scan.h"
#include "qortvctl/terminal/progress_bar.h"

namespace qortvctl {

/** Shows a scan as JSON lines, as a progress bar on a terminal, or as lines of text. */
class ScanView {
  public:
    explicit ScanView(bool json);

    /** @throws as printLine() */
    void show(const qortv::ScanEvent& event);

    /** Prints a remark of ours on standard error, without disturbing the progress bar. */
    void remark(const char* text);

  private:
    void drawBar(const qortv::ScanEvent& event);
    void printText(const qortv::ScanEvent& event);

    const bool mJson;
    std::optional<ProgressBar> mBar;  ///< until the scan ends; nothing where a bar is not possible
};

}  // namespace qortvctl
