/** qortv-mkstreams: writes a folder of transport streams for the software television. */
#include <cstdio>
#include <ctime>
#include <exception>

#include <CLI/CLI.hpp>

#include "television/generator/multiplex_plan.h"
#include "television/generator/stream_writer.h"

namespace {

int write(const std::string& folder, const std::vector<stream_generator::MultiplexPlan>& plans) {
    stream_generator::writeStreams(folder, plans);
    size_t total = 0;
    for (const auto& plan : plans) total += plan.services.size();
    std::printf("%zu multiplexes with %zu services in %s\n", plans.size(), total, folder.c_str());
    return 0;
}

int run(int argc, char** argv) {
    CLI::App app(
            "Writes transport streams for the software television: without options the demo's "
            "nine\n"
            "multiplexes of three networks, else one large list of terrestrial services.",
            "qortv-mkstreams");
    std::string folder;
    unsigned multiplexes = 0;
    unsigned services = 0;
    int64_t time = std::time(nullptr);
    unsigned guideHours = 0;
    app.add_option("DIR", folder, "Folder to write into; made when missing")->required();
    auto* multiplexOption =
            app.add_option("--multiplexes", multiplexes, "Multiplexes of a large list")
                    ->check(CLI::Range(1u, 1000u));
    auto* serviceOption = app.add_option("--services", services,
                                         "Services of a large list, in all its multiplexes")
                                  ->check(CLI::Range(0u, 65535u));
    app.add_option("--time", time,
                   "Time that the streams tell, in seconds since 1970-01-01 00:00 UTC; now if not "
                   "given");
    auto* guideOption = app.add_option("--guide-hours", guideHours,
                                       "Hours of events of each service; if not given, 24 for the "
                                       "demo and none for a large list")
                                ->check(CLI::Range(0u, stream_generator::kMostGuideHours));
    multiplexOption->needs(serviceOption);
    serviceOption->needs(multiplexOption);
    CLI11_PARSE(app, argc, argv);
    const bool large = multiplexOption->count() > 0;
    if (guideOption->count() == 0) guideHours = large ? 0 : stream_generator::kUsualGuideHours;
    return write(folder,
                 large ? stream_generator::largePlans(multiplexes, services, time, guideHours)
                       : stream_generator::demoPlans(time, guideHours));
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qortv-mkstreams: %s\n", error.what());
        return 1;
    }
}
