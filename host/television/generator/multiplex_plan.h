/** What the stream generator is to write, as plain data: plans of services and multiplexes, those
 * of the demo, and those of large lists. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace stream_generator {

enum class Medium { kTerrestrial, kCable, kSatellite };

/** The character table in which the texts of a service are written. */
enum class TextTable { kIso6937, kIso8859_2, kIso8859_5, kIso8859_7, kIso8859_9, kUcs2, kUtf8 };

/** What the event tables say of a service: nothing, titles and short texts, or details too. */
enum class GuideKind { kNone, kShort, kExtended };

/** One service. Texts are UTF-8; the name's characters must be in `table`. */
struct ServicePlan {
    uint16_t serviceId = 0;
    std::string name;
    TextTable table = TextTable::kIso6937;
    std::string provider = "Corvanta Media";
    uint8_t type = 0x01;  ///< service_type: 1 television, 2 radio, 0x19 HD television…
    bool scrambled = false;
    uint16_t lcn = 0;  ///< logical channel number, 999 at most; 0: none
    bool visible = true;
    GuideKind guide = GuideKind::kShort;
    std::vector<std::string> audioLanguages = {"eng"};  ///< three letters each
    std::vector<std::string> subtitleLanguages;         ///< three letters each
};

/** The time in streams for which no other is given, seconds since 1970: 10 May 2024, 18:40 UTC. */
constexpr int64_t kUsualTime = 1'715'366'400;
/** Hours of events of the demo's services. */
constexpr unsigned kUsualGuideHours = 24;
/** The most hours of events that the generator writes. */
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
    bool networkTable = true;   ///< write the NIT
    bool descriptions = true;   ///< write the SDT
    int64_t time = kUsualTime;  ///< of its time tables, seconds since 1970
    unsigned guideHours = 0;    ///< hours of events from `time` on
    std::vector<ServicePlan> services;
};

/** Three networks (terrestrial, satellite, cable) of three multiplexes each: the television of the
 * demo. Most services have a guide, those of high definition with long texts. */
std::vector<MultiplexPlan> demoPlans(int64_t time = kUsualTime,
                                     unsigned guideHours = kUsualGuideHours);

/** `services` services, spread over the `multiplexes` multiplexes of one terrestrial network: one
 * large list, for timings. They have no guide while `guideHours` is 0. */
std::vector<MultiplexPlan> largePlans(unsigned multiplexes, unsigned services,
                                      int64_t time = kUsualTime, unsigned guideHours = 0);

}  // namespace stream_generator
