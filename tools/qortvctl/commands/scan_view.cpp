#include "qortvctl/commands/scan_view.h"

#include <fmt/format.h>

#include <cstdio>
#include <variant>

#include "qortvctl/presentation/scan_text.h"
#include "qortvctl/terminal/standard_output.h"

namespace qortvctl {

ScanView::ScanView(bool json) : mJson(json) {
    if (!json && ProgressBar::possible()) mBar.emplace("Scanning");
}

void ScanView::show(const qortv::ScanEvent& event) {
    if (mJson) {
        printLine(toJson(event).dump());
    } else if (mBar && !qortv::isEnd(event)) {
        drawBar(event);
    } else {
        mBar.reset();
        printText(event);
    }
}

void ScanView::remark(const char* text) {
    if (mBar) mBar->clear();
    fmt::print(stderr, "qortvctl: {}\n", text);
}

void ScanView::drawBar(const qortv::ScanEvent& event) {
    // An empty bar when the scan starts.
    const auto* reported = std::get_if<qortv::ScanProgress>(&event);
    const auto progress = reported == nullptr ? qortv::ScanProgress{} : *reported;
    mBar->draw(progress.percent, barText(progress));
}

void ScanView::printText(const qortv::ScanEvent& event) {
    if (std::holds_alternative<qortv::ScanFailed>(event)) {
        fmt::print(stderr, "qortvctl: {}\n", toLine(event));
    } else {
        printLine(toLine(event));
    }
}

}  // namespace qortvctl
