// qortvctl list: the registered interfaces and the processes behind them.
#include <fmt/format.h>
#include <hidl/Services.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "qortv/connect.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/terminal/table.h"

namespace qortvctl {

namespace {

using android::hardware::ServiceInfo;

constexpr char kListHelp[] =
        R"(A name whose process is gone is shown as stale; it is replaced when the service comes back.

Examples:
  qortvctl list
  qortvctl list --json | jq '.[].pid')";

/** A number that is negative when the process did not tell it. */
std::string numberText(int number) {
    return number < 0 ? "?" : std::to_string(number);
}

std::string serviceStateText(const ServiceInfo& service) {
    if (!service.alive) return fmt::format("stale: process {} is gone", service.pid);
    return service.threads < 0 ? "does not answer" : "alive";
}

void printJson(const std::vector<ServiceInfo>& services) {
    auto array = nlohmann::json::array();
    for (const auto& service : services) {
        array.push_back({{"interface", service.interface},
                         {"instance", service.instance},
                         {"pid", service.pid},
                         {"alive", service.alive},
                         {"threads", service.threads},
                         {"busyThreads", service.busyThreads},
                         {"maxThreads", service.maxThreads},
                         {"clients", service.clients}});
    }
    printLine(array.dump(2));
}

void printTable(const std::vector<ServiceInfo>& services) {
    using Align = Table::Align;
    Table table({{"INTERFACE"},
                 {"INSTANCE"},
                 {"PID", Align::kRight},
                 {"THREADS", Align::kRight},
                 {"BUSY", Align::kRight},
                 {"CLIENTS", Align::kRight},
                 {"STATE"}});
    for (const auto& service : services) {
        table.add(
                {service.interface, service.instance, numberText(service.pid),
                 fmt::format("{}/{}", numberText(service.threads), numberText(service.maxThreads)),
                 numberText(service.busyThreads), numberText(service.clients),
                 serviceStateText(service)});
    }
    table.print();
}

int list(const CommonOptions& common) {
    const auto services = android::hardware::listServices();
    if (common.json) printJson(services);
    if (services.empty()) {
        fmt::print(stderr, "qortvctl: no service: nothing is registered in {}\n",
                   qortv::runtimeFolder());
        return kNoService;
    }
    if (!common.json) printTable(services);
    return kOk;
}

}  // namespace

void addList(CommandLine& commandLine) {
    commandLine.addCommand(commandLine.program(), "list",
                           "Show what is registered, and by which process", kListHelp, list);
}

}  // namespace qortvctl
