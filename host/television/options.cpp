#include "television/options.h"

#include <cstdlib>

#include "vendor_tmp.h"

namespace television {
namespace {

/** Returns an environment variable; empty when it is not set. */
std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string defaultStateFolder() {
    const std::string state = environment("XDG_STATE_HOME");
    if (!state.empty()) return state + "/qortv";
    const std::string home = environment("HOME");
    return home.empty() ? ":memory:" : home + "/.local/state/qortv";
}

}  // namespace

Options Options::fromEnvironment() {
    Options options;
    options.streams = environment("QORTV_STREAMS");
    options.state = environment("QORTV_STATE");
    if (options.state.empty()) options.state = defaultStateFolder();
    options.readiness = qortv_vendor_tmp();
    options.inputSocket = options.readiness + "/DFBInput";
    options.config = environment("QORTV_CONFIG");
    if (options.config.empty() && options.state != ":memory:") {
        options.config = options.state + "/config.ini";
    }
    options.recordings = environment("QORTV_RECORDINGS");
    if (options.recordings.empty() && options.state != ":memory:") {
        options.recordings = options.state + "/recordings";
    }
    return options;
}

}  // namespace television
