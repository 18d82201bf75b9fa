// qortvctl scan: searches for channels.
#include <chrono>
#include <memory>
#include <optional>
#include <variant>

#include "qortv/scan.h"
#include "qortv/subscription.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/commands/scan_view.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/waiting/event_queue.h"
#include "qortvctl/waiting/interrupts.h"

namespace qortvctl {

namespace {

using qortv::ScanEvent;

constexpr char kScanHelp[] =
        R"(Shows a progress bar on a terminal, a line for each multiplex otherwise. Ctrl-C calls the scan off:
the channel lists stay as they were (exit status 130). One whose output
nobody reads any more is called off too.
With --json, a line for each event: {"event": "started", "medium", "multiplexes"},
{"event": "progress", "percent", "tv", "radio", "frequencyKhz"}, then {"event": "completed",
"services", "tv", "radio", "multiplexes"}, {"event": "cancelled", "percent"} or
{"event": "failed", "code"}.

Examples:
  qortvctl scan
  qortvctl scan --medium cable --clear
  qortvctl scan --update --json | jq -c 'select(.event == "completed")')";

struct ScanOptions {
    std::optional<qortv::Medium> medium;  ///< nothing: all of them
    bool update = false;
    bool clear = false;
};

/** Hands the events of scans to the main thread. */
class ScanEvents : public qortv::ScanListener {
  public:
    explicit ScanEvents(const WakeUp& wakeUp) : mQueue(wakeUp) {}

    void onScanEvent(const ScanEvent& event) override { mQueue.push(event); }
    void onDisconnected() override { mQueue.setDisconnected(); }

    EventQueue<ScanEvent>& queue() { return mQueue; }

  private:
    EventQueue<ScanEvent> mQueue;
};

/** What Ctrl-C does: the first time it cancels the scan, the second time it ends the program. */
class Cancellation {
  public:
    Cancellation(qortv::Scanner& scanner, ScanView& view) : mScanner(scanner), mView(view) {}

    /** Handles a signal. Returns false when the program is to end at once. */
    bool handle(int signal) {
        const bool again = mStatus.has_value();
        mStatus = exitStatusOfSignal(signal);
        if (again) return false;
        mView.remark(mScanner.cancel() ? "cancelling the scan" : "too late to cancel the scan");
        return true;
    }

    /** Exit status of a cancelled scan, whether a signal or another application cancelled it. */
    int exitStatus() const { return mStatus.value_or(kFailure); }

  private:
    qortv::Scanner& mScanner;
    ScanView& mView;
    std::optional<int> mStatus;  ///< after a signal
};

/** Shows an event. If that fails, nobody can see the scan any more, and it is cancelled. */
void showOrCancel(ScanView& view, const ScanEvent& event, qortv::Scanner& scanner) {
    try {
        view.show(event);
    } catch (...) {
        try {
            scanner.cancel();
        } catch (const qortv::Error&) {
            // The failure to show is the one to report.
        }
        throw;
    }
}

int exitStatusAfter(const ScanEvent& end, const Cancellation& cancellation) {
    if (std::holds_alternative<qortv::ScanCompleted>(end)) return kOk;
    if (std::holds_alternative<qortv::ScanCancelled>(end)) return cancellation.exitStatus();
    return kFailure;
}

int scan(const CommonOptions& common, const ScanOptions& options) {
    const WakeUp wakeUp;
    ScanEvents events(wakeUp);
    const qortv::Subscription subscription(events, common.timeout);
    auto scanner = connectTo<qortv::Scanner>(common.timeout);
    ScanView view(common.json);
    Interrupts interrupts(wakeUp);
    events.queue().clear();  // they belong to an earlier scan
    scanner.start(
            {options.medium.value_or(qortv::Medium::kUnknown), options.update, options.clear});

    Cancellation cancellation(scanner, view);
    bool started = false;
    for (;;) {
        if (const auto signal = interrupts.takeSignal()) {
            if (!cancellation.handle(*signal)) return cancellation.exitStatus();
        }
        while (const auto event = events.queue().take()) {
            started = started || std::holds_alternative<qortv::ScanStarted>(*event);
            if (!started) continue;
            showOrCancel(view, *event, scanner);
            if (qortv::isEnd(*event)) return exitStatusAfter(*event, cancellation);
        }
        if (events.queue().disconnected()) {
            throw qortv::Error(qortv::Error::Kind::kLost, "the service went away during the scan");
        }
        wakeUp.waitUntil(std::chrono::steady_clock::time_point::max());
    }
}

}  // namespace

void addScan(CommandLine& commandLine) {
    const auto options = std::make_shared<ScanOptions>();
    auto& command = commandLine.addCommand(
            commandLine.program(), "scan", "Search for channels", kScanHelp,
            [options](const CommonOptions& common) { return scan(common, *options); });
    addMedium(command, options->medium, "Only this medium");
    auto* update = command.add_flag("--update", options->update,
                                    "Only add and refresh: keep what is no longer broadcast");
    command.add_flag("--clear", options->clear,
                     "Also forget names, numbers and favourites that viewers gave")
            ->excludes(update);
}

}  // namespace qortvctl
