// qortvctl recordings: what is on the television's disk.
#include <fmt/format.h>

#include <nlohmann/json.hpp>

#include "commands.h"
#include "output.h"
#include "qortv/recordings.h"
#include "record_output.h"

namespace qortvctl {

namespace {

qortv::Recordings connectRecordings(const Common& common) {
    return qortv::Recordings(qortv::connect<qortv::Recordings::Interface>(common.timeout));
}

}  // namespace

int recordings(const Common& common) {
    const auto list = connectRecordings(common).list();
    if (common.json) {
        auto array = nlohmann::ordered_json::array();
        for (const auto& recording : list) array.push_back(toJson(recording));
        printLine(array.dump(2));
        return kOk;
    }
    Table table({{"INDEX", Table::Align::kRight},
                 {"DATE"},
                 {"TIME"},
                 {"CHANNEL"},
                 {"PROGRAMME"},
                 {"DURATION", Table::Align::kRight},
                 {"SIZE", Table::Align::kRight},
                 {"STATE"}});
    for (const auto& recording : list) {
        table.add({std::to_string(recording.index), recording.date, recording.time,
                   recording.channel, recording.program, durationText(recording.duration),
                   sizeText(recording.bytes), stateText(recording)});
    }
    table.print();
    return kOk;
}

int recordingsDelete(const Common& common, uint32_t index) {
    auto browser = connectRecordings(common);
    const auto list = browser.list();
    if (index >= list.size()) {
        fmt::print(stderr, "qortvctl: there is no recording {}: there are {}\n", index,
                   list.size());
        return kFailure;
    }
    browser.remove(list[index]);
    if (common.json) {
        printLine(nlohmann::json{{"deleted", list[index].path}}.dump());
    } else {
        printLine(withoutControls("deleted " + list[index].path));
    }
    return kOk;
}

}  // namespace qortvctl
