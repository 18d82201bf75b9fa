#include <cstdlib>

#include "custom/qortvapicustom.h"

// Returns $QORTV_DEBUG, the debug level of the service; 0 (no debug lines) if it is not set.
uint32_t hh_init_debug_level() {
    const char* level = std::getenv("QORTV_DEBUG");
    return level == nullptr ? 0 : static_cast<uint32_t>(std::strtoul(level, nullptr, 0));
}

int32_t hh_qortvapi_tvapi_custom_init() {
    return 0;
}
