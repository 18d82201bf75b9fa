/** qortv-mkstreams: writes a folder of transport streams for the software television. */
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "multiplex_plan.h"
#include "stream_writer.h"

namespace {

int run(const std::string& folder, unsigned multiplexes, unsigned services, bool large) {
    const auto plans = large ? stream_generator::largePlans(multiplexes, services)
                             : stream_generator::demoPlans();
    stream_generator::writeStreams(folder, plans);
    size_t total = 0;
    for (const auto& plan : plans) total += plan.services.size();
    std::printf("%zu multiplexes with %zu services in %s\n", plans.size(), total, folder.c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app(
            "Writes transport streams for the software television: without options the demo's "
            "nine\n"
            "multiplexes of three networks, else a large list.",
            "qortv-mkstreams");
    std::string folder;
    unsigned multiplexes = 0;
    unsigned services = 0;
    app.add_option("DIR", folder, "Folder to write into; made when missing")->required();
    auto* multiplexOption =
            app.add_option("--multiplexes", multiplexes, "Multiplexes of a large list")
                    ->check(CLI::Range(1u, 10000u));
    auto* serviceOption = app.add_option("--services", services,
                                         "Services of a large list, in all its multiplexes")
                                  ->check(CLI::Range(0u, 180000u));
    multiplexOption->needs(serviceOption);
    serviceOption->needs(multiplexOption);
    CLI11_PARSE(app, argc, argv);
    try {
        return run(folder, multiplexes, services, multiplexOption->count() > 0);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "qortv-mkstreams: %s\n", error.what());
        return 1;
    }
}
