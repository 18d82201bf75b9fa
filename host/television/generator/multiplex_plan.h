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

/** What the event tables tell of a service. */
enum class GuideKind { kNone, kShort, kExtended };

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
    GuideKind guide = GuideKind::kShort;
    std::vector<std::string> audioLanguages = {"eng"};  ///< three letters each
    std::vector<std::string> subtitleLanguages;         ///< three letters each
};

/** The time of streams for which no other is given: a May evening in 2024, 18:40 UTC. */
constexpr int64_t kUsualTime = 1'715'366'400;
/** Hours of events of the demo's services. */
constexpr unsigned kUsualGuideHours = 24;
/** As far as the event tables reach. */
constexpr unsigned kMostGuideHours = 7 * 24;

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
    bool networkTable = true;   ///< write NIT
    bool descriptions = true;   ///< write SDT
    int64_t time = kUsualTime;  ///< seconds since 1970, as the stream tells it
    unsigned guideHours = 0;    ///< of events from then on
    std::vector<ServicePlan> services;
};

/** Three networks (terrestrial, satellite, cable) of three multiplexes each: the television of the
 * demo. Most services have a guide, those of high definition with long texts. */
std::vector<MultiplexPlan> demoPlans(int64_t time = kUsualTime,
                                     unsigned guideHours = kUsualGuideHours);

/** `services` services spread over the `multiplexes` multiplexes of one terrestrial network: one
 * large list, for timings; without a guide when that has no hours. */
std::vector<MultiplexPlan> largePlans(unsigned multiplexes, unsigned services,
                                      int64_t time = kUsualTime, unsigned guideHours = 0);

}  // namespace stream_generator
