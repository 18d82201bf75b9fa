#include "qortvctl/presentation/scan_text.h"

#include <fmt/format.h>

#include "qortvctl/text/units.h"

namespace qortvctl {

namespace {

using Json = nlohmann::ordered_json;

std::string frequencyOrNothing(const qortv::ScanProgress& progress) {
    return progress.frequencyKhz == 0 ? "" : frequencyText(progress.frequencyKhz);
}

struct ToLine {
    std::string operator()(const qortv::ScanStarted& started) const {
        const bool all = started.medium == qortv::Medium::kUnknown;
        return fmt::format("scanning {}: {} multiplexes",
                           all ? "all media" : qortv::name(started.medium), started.multiplexes);
    }
    std::string operator()(const qortv::ScanProgress& progress) const {
        const std::string frequency = frequencyOrNothing(progress);
        return fmt::format("{:3} %  {} tv, {} radio{}{}", progress.percent, progress.television,
                           progress.radio, frequency.empty() ? "" : ", ", frequency);
    }
    std::string operator()(const qortv::ScanCompleted& completed) const {
        return fmt::format("scan complete: {} services ({} tv, {} radio) in {} multiplexes",
                           completed.services, completed.television, completed.radio,
                           completed.multiplexes);
    }
    std::string operator()(const qortv::ScanCancelled& cancelled) const {
        return fmt::format("scan cancelled at {} %: the channel lists are as they were",
                           cancelled.percent);
    }
    std::string operator()(const qortv::ScanFailed& failed) const {
        return fmt::format("the scan failed (code {}): the channel lists are as they were",
                           failed.code);
    }
};

/** Adds what an event tells besides its name. */
struct AddFields {
    void operator()(const qortv::ScanStarted& started) const {
        const bool all = started.medium == qortv::Medium::kUnknown;
        json["medium"] = all ? "all" : qortv::name(started.medium);
        json["multiplexes"] = started.multiplexes;
    }
    void operator()(const qortv::ScanProgress& progress) const {
        json["percent"] = progress.percent;
        json["tv"] = progress.television;
        json["radio"] = progress.radio;
        json["frequencyKhz"] = progress.frequencyKhz;
    }
    void operator()(const qortv::ScanCompleted& completed) const {
        json["services"] = completed.services;
        json["tv"] = completed.television;
        json["radio"] = completed.radio;
        json["multiplexes"] = completed.multiplexes;
    }
    void operator()(const qortv::ScanCancelled& cancelled) const {
        json["percent"] = cancelled.percent;
    }
    void operator()(const qortv::ScanFailed& failed) const { json["code"] = failed.code; }

    Json& json;
};

}  // namespace

std::string toLine(const qortv::ScanEvent& event) {
    return std::visit(ToLine{}, event);
}

std::string barText(const qortv::ScanProgress& progress) {
    return fmt::format("{:3} tv, {:3} radio  {:>13}", progress.television, progress.radio,
                       frequencyOrNothing(progress));
}

Json toJson(const qortv::ScanEvent& event) {
    Json json = {{"event", qortv::name(event)}};
    std::visit(AddFields{json}, event);
    return json;
}

}  // namespace qortvctl
