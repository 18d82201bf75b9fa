// A program that links the boot object: waits for the television that starts by itself, and exits
// with the number of terrestrial channels, or with 99 when no television starts.
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "middleware/channellist.h"
#include "vendor_tmp.h"

int main() {
    const std::string file = std::string(qortv_vendor_tmp()) + "/tv_api_is_init";
    const char* television = std::getenv("QORTV_TELEVISION");
    // Milliseconds. Where no television is to start the wait is short: one that starts is seen by
    // then.
    const int patience = television == nullptr ? 120'000 : 200;
    for (int waited = 0; !std::filesystem::exists(file); waited += 5) {
        if (waited > patience) return 99;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return a_qortvapi_channellist_get_number_by_filter(SVL_ID_TERRESTRIAL, 0);
}
