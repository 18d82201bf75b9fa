// qortvctl scan.
#include "qortv/scan.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <optional>

#include "channel_choice.h"
#include "commands.h"
#include "event_queue.h"
#include "output.h"
#include "progress_bar.h"
#include "qortv/subscription.h"

namespace qortvctl {

namespace {

using qortv::ScanEvent;

class ScanEvents : public qortv::ScanListener {
  public:
    explicit ScanEvents(const WakeUp& wakeUp) : mQueue(wakeUp) {}

    void onScanEvent(const ScanEvent& event) override { mQueue.push(event); }
    void onDisconnected() override { mQueue.lose(); }

    EventQueue<ScanEvent>& queue() { return mQueue; }

  private:
    EventQueue<ScanEvent> mQueue;
};

nlohmann::ordered_json toJson(const ScanEvent& event) {
    nlohmann::ordered_json line = {{"event", qortv::name(event)}};
    if (const auto* started = std::get_if<qortv::ScanStarted>(&event)) {
        const bool all = started->medium == qortv::Medium::kUnknown;
        line["medium"] = all ? "all" : qortv::name(started->medium);
        line["multiplexes"] = started->multiplexes;
    } else if (const auto* progress = std::get_if<qortv::ScanProgress>(&event)) {
        line["percent"] = progress->percent;
        line["tv"] = progress->television;
        line["radio"] = progress->radio;
        line["frequencyKhz"] = progress->frequencyKhz;
    } else if (const auto* completed = std::get_if<qortv::ScanCompleted>(&event)) {
        line["services"] = completed->services;
        line["tv"] = completed->television;
        line["radio"] = completed->radio;
        line["multiplexes"] = completed->multiplexes;
    } else if (const auto* cancelled = std::get_if<qortv::ScanCancelled>(&event)) {
        line["percent"] = cancelled->percent;
    } else if (const auto* failed = std::get_if<qortv::ScanFailed>(&event)) {
        line["code"] = failed->code;
    }
    return line;
}

/** Shows a scan: as JSON lines, on a bar or as lines of text. */
class ScanView {
  public:
    explicit ScanView(bool json) : mJson(json) {
        if (!json && ProgressBar::possible()) mBar.emplace("Scanning");
    }

    void show(const ScanEvent& event) {
        if (mJson) {
            printLine(toJson(event).dump());
        } else {
            std::visit([this](const auto& what) { tell(what); }, event);
        }
    }

    /** Something for standard error, between two lines. */
    void remark(const char* text) {
        if (mBar) mBar->clear();
        fmt::print(stderr, "qortvctl: {}\n", text);
    }

  private:
    void tell(const qortv::ScanStarted& started) {
        const bool all = started.medium == qortv::Medium::kUnknown;
        if (mBar) {
            tell(qortv::ScanProgress{});
        } else {
            printLine(fmt::format("scanning {}: {} multiplexes",
                                  all ? "all media" : qortv::name(started.medium),
                                  started.multiplexes));
        }
    }
    void tell(const qortv::ScanProgress& progress) {
        const std::string frequency =
                progress.frequencyKhz == 0 ? "" : frequencyText(progress.frequencyKhz);
        if (mBar) {
            // Always as wide, so that the bar keeps its length.
            mBar->draw(progress.percent,
                       fmt::format("{:3} tv, {:3} radio  {:>13}", progress.television,
                                   progress.radio, frequency));
        } else {
            printLine(fmt::format("{:3} %  {} tv, {} radio{}{}", progress.percent,
                                  progress.television, progress.radio,
                                  frequency.empty() ? "" : ", ", frequency));
        }
    }
    void tell(const qortv::ScanCompleted& completed) {
        mBar.reset();
        printLine(fmt::format("scan complete: {} services ({} tv, {} radio) in {} multiplexes",
                              completed.services, completed.television, completed.radio,
                              completed.multiplexes));
    }
    void tell(const qortv::ScanCancelled& cancelled) {
        mBar.reset();
        printLine(fmt::format("scan cancelled at {} %: the channel lists are as they were",
                              cancelled.percent));
    }
    void tell(const qortv::ScanFailed& failed) {
        mBar.reset();
        fmt::print(stderr,
                   "qortvctl: the scan failed (code {}): the channel lists are as they were\n",
                   failed.code);
    }

    const bool mJson;
    std::optional<ProgressBar> mBar;
};

/** What a person pressed: the first time calls the scan off, the second time ends us. */
class Ending {
  public:
    Ending(qortv::Scanner& scanner, ScanView& view) : mScanner(scanner), mView(view) {}

    /** False when we are to end at once. */
    bool interrupt(int signal) {
        const bool again = mStatus.has_value();
        mStatus = statusOf(signal);
        if (again) return false;
        mView.remark(mScanner.cancel() ? "cancelling the scan" : "too late to cancel the scan");
        return true;
    }

    /** Exit status of a scan that was called off, by us or by another application. */
    int status() const { return mStatus.value_or(kFailure); }

  private:
    qortv::Scanner& mScanner;
    ScanView& mView;
    std::optional<int> mStatus;
};

/** Shows an event. Where that fails, nobody waits for the scan any more: it is called off. */
void showOrCancel(ScanView& view, const ScanEvent& event, qortv::Scanner& scanner) {
    try {
        view.show(event);
    } catch (...) {
        try {
            scanner.cancel();
        } catch (const qortv::Error&) {
            // What is told is the first failure.
        }
        throw;
    }
}

int statusOf(const ScanEvent& end, const Ending& ending) {
    if (std::holds_alternative<qortv::ScanCompleted>(end)) return kOk;
    if (std::holds_alternative<qortv::ScanCancelled>(end)) return ending.status();
    return kFailure;
}

}  // namespace

int scan(const Common& common, const ScanOptions& options) {
    const WakeUp wakeUp;
    ScanEvents events(wakeUp);
    const qortv::Subscription subscription(events, common.timeout);
    qortv::Scanner scanner(qortv::connect<qortv::Scanner::Interface>(common.timeout));
    ScanView view(common.json);
    Interrupts interrupts(wakeUp);
    events.queue().forget();  // of a scan before ours
    scanner.start(
            {options.medium.value_or(qortv::Medium::kUnknown), options.update, options.clear});

    Ending ending(scanner, view);
    bool started = false;
    for (;;) {
        if (const auto signal = interrupts.take()) {
            if (!ending.interrupt(*signal)) return ending.status();
        }
        while (const auto event = events.queue().take()) {
            started = started || std::holds_alternative<qortv::ScanStarted>(*event);
            if (!started) continue;
            showOrCancel(view, *event, scanner);
            if (qortv::isEnd(*event)) return statusOf(*event, ending);
        }
        if (events.queue().lost()) {
            throw qortv::Error(qortv::Error::Kind::kLost, "the service went away during the scan");
        }
        wakeUp.waitUntil(std::chrono::steady_clock::time_point::max());
    }
}

}  // namespace qortvctl
