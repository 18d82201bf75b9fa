/** What the stream generator writes, as plain data, and the plans of the demo and of large lists.
 */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace stream_generator {

enum class Medium { kTerrestrial, kCable, kSatellite };

/** How a name is coded in the tables. */
enum class TextTable { kIso6937, kIso8859_2, kIso8859_5, kIso8859_7, kIso8859_9, kUcs2, kUtf8 };

/** One service. Names are UTF-8 and must be expressible in `table`. */
struct ServicePlan {
    uint16_t serviceId = 0;
    std::string name;
    TextTable table = TextTable::kIso6937;
    std::string provider = "Corvanta Media";
    uint8_t type = 0x01;  ///< service_type: 1 television, 2 radio, 0x19 HD television…
    bool scrambled = false;
    uint16_t lcn = 0;  ///< 0: none
    bool visible = true;
    std::vector<std::string> audioLanguages = {"eng"};  ///< three letters each
    std::vector<std::string> subtitleLanguages;         ///< three letters each
};

/** One multiplex: a file. */
struct MultiplexPlan {
    std::string fileName;
    Medium medium = Medium::kTerrestrial;
    std::string networkName;
    uint16_t networkId = 0;
    uint16_t originalNetworkId = 0;
    uint16_t transportStreamId = 0;
    uint32_t frequencyKhz = 0;
    uint32_t symbolRate = 0;       ///< symbols a second; cable and satellite
    uint16_t orbitalPosition = 0;  ///< tenths of a degree; satellite
    bool east = true;
    bool vertical = false;
    bool networkTable = true;  ///< write NIT
    bool descriptions = true;  ///< write SDT
    std::vector<ServicePlan> services;
};

/** Three networks (terrestrial, satellite, cable) of three multiplexes each: the television of the
 * demo. */
std::vector<MultiplexPlan> demoPlans();

/** `services` services spread over the `multiplexes` multiplexes of one terrestrial network: one
 * large list, for timings. */
std::vector<MultiplexPlan> largePlans(unsigned multiplexes, unsigned services);

}  // namespace stream_generator
