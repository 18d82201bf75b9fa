#include <fmt/format.h>
#include <hidl/Services.h>

#include <cstdio>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "output.h"
#include "qortv/connect.h"

namespace qortvctl {

namespace {

/** A number that the process may not have told. */
std::string shown(int number) {
    return number < 0 ? "?" : std::to_string(number);
}

std::string state(const android::hardware::ServiceInfo& service) {
    if (!service.alive) return fmt::format("stale: process {} is gone", service.pid);
    return service.threads < 0 ? "does not answer" : "alive";
}

}  // namespace

int list(const Common& common) {
    const auto services = android::hardware::listServices();
    if (common.json) {
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
    if (services.empty()) {
        fmt::print(stderr, "qortvctl: no service: nothing is registered in {}\n",
                   qortv::runtimeFolder());
        return kNoService;
    }
    if (common.json) return kOk;

    using Align = Table::Align;
    Table table({{"INTERFACE"},
                 {"INSTANCE"},
                 {"PID", Align::kRight},
                 {"THREADS", Align::kRight},
                 {"BUSY", Align::kRight},
                 {"CLIENTS", Align::kRight},
                 {"STATE"}});
    for (const auto& service : services) {
        table.add({service.interface, service.instance, shown(service.pid),
                   fmt::format("{}/{}", shown(service.threads), shown(service.maxThreads)),
                   shown(service.busyThreads), shown(service.clients), state(service)});
    }
    table.print();
    return kOk;
}

}  // namespace qortvctl
