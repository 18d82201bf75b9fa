#include "television/generator/multiplex_plan.h"

#include <utility>

#include <fmt/format.h>

namespace stream_generator {
namespace {

constexpr uint8_t kTelevision = 0x01;
constexpr uint8_t kRadio = 0x02;
constexpr uint8_t kHdTelevision = 0x19;
constexpr uint8_t kUhdTelevision = 0x1F;

ServicePlan service(uint16_t id, uint16_t lcn, std::string name, uint8_t type = kTelevision,
                    TextTable table = TextTable::kIso6937) {
    ServicePlan plan;
    plan.serviceId = id;
    plan.lcn = lcn;
    plan.name = std::move(name);
    plan.type = type;
    plan.table = table;
    if (type == kHdTelevision || type == kUhdTelevision) plan.guide = GuideKind::kExtended;
    return plan;
}

ServicePlan scrambled(ServicePlan plan) {
    plan.scrambled = true;
    return plan;
}

ServicePlan hidden(ServicePlan plan) {
    plan.visible = false;
    return plan;
}

ServicePlan withoutGuide(ServicePlan plan) {
    plan.guide = GuideKind::kNone;
    return plan;
}

ServicePlan languages(ServicePlan plan, std::vector<std::string> audio,
                      std::vector<std::string> subtitles) {
    plan.audioLanguages = std::move(audio);
    plan.subtitleLanguages = std::move(subtitles);
    return plan;
}

void addTerrestrial(std::vector<MultiplexPlan>& plans) {
    const std::vector<ServicePlan> services[] = {
            {languages(service(0x101, 1, "Première", kHdTelevision), {"fra", "qad"}, {"fra"}),
             service(0x102, 2, "Zweites Österreich", kHdTelevision), service(0x103, 3, "Ærø Nyt"),
             service(0x104, 4, "Canal Niño"), service(0x105, 30, "Radio Ålesund", kRadio)},
            {service(0x201, 5, "Kanał Łódź", kTelevision, TextTable::kIso8859_2),
             service(0x202, 6, "Česká Šest", kHdTelevision, TextTable::kIso8859_2),
             languages(service(0x203, 7, "Новости 24", kTelevision, TextTable::kIso8859_5), {"rus"},
                       {"rus", "eng"}),
             // A number that another multiplex has already.
             service(0x204, 3, "Number Three Too"), service(0x205, 31, "Rádio Évora", kRadio)},
            {service(0x301, 8, "Ελληνικά", kTelevision, TextTable::kIso8859_7),
             service(0x302, 9, "İstanbul Şehir", kTelevision, TextTable::kIso8859_9),
             scrambled(service(0x303, 10, "Sport Plus", kHdTelevision)),
             hidden(withoutGuide(service(0x304, 99, "Engineering Test"))),
             withoutGuide(service(0x305, 0, "No Number"))}};
    uint16_t number = 1;
    for (const auto& list : services) {
        MultiplexPlan plan;
        plan.fileName = fmt::format("dvb-t-{}.ts", number);
        plan.networkName = "Corvanta Antenna";
        plan.networkId = 0x3101;
        plan.originalNetworkId = 0x2101;
        plan.transportStreamId = number;
        plan.frequencyKhz = 474'000 + 8'000u * number;
        plan.services = list;
        plans.push_back(std::move(plan));
        ++number;
    }
}

void addSatellite(std::vector<MultiplexPlan>& plans) {
    const std::vector<ServicePlan> services[] = {
            {service(0x1001, 0, "中央电视台", kHdTelevision, TextTable::kUcs2),
             service(0x1002, 0, "日本の旅", kUhdTelevision, TextTable::kUtf8),
             scrambled(service(0x1003, 0, "Cinéma Un", kHdTelevision)),
             scrambled(service(0x1004, 0, "Cinéma Deux", kHdTelevision)),
             service(0x1005, 0, "Радио Орфей", kRadio, TextTable::kIso8859_5)},
            {languages(service(0x1101, 0, "World News HD", kHdTelevision), {"eng", "spa", "ara"},
                       {}),
             service(0x1102, 0, "Música Clásica", kRadio),
             service(0x1103, 0, "Dětský svět", kTelevision, TextTable::kIso8859_2),
             withoutGuide(service(0x1104, 0, "Meteo Alpen"))},
            {service(0x1201, 0, "Documentário"),
             service(0x1202, 0, "Garðurinn", kTelevision, TextTable::kUtf8),
             service(0x1203, 0, "Shopping €uro"), service(0x1204, 0, "Radio Zürisee", kRadio)}};
    uint16_t number = 1;
    for (const auto& list : services) {
        MultiplexPlan plan;
        plan.fileName = fmt::format("dvb-s-{}.ts", number);
        plan.medium = Medium::kSatellite;
        plan.networkName = "Corvanta Orbit";
        plan.networkId = 0x0047;
        plan.originalNetworkId = 0x0047;
        plan.transportStreamId = static_cast<uint16_t>(0x0400 + number);
        plan.frequencyKhz = 10'714'250 + 39'000u * number;
        plan.symbolRate = 22'000'000;
        plan.orbitalPosition = number == 3 ? 130 : 192;
        plan.vertical = number % 2 == 0;
        plan.services = list;
        plans.push_back(std::move(plan));
        ++number;
    }
}

void addCable(std::vector<MultiplexPlan>& plans) {
    const std::vector<ServicePlan> services[] = {
            {service(0x2001, 101, "Cable One", kHdTelevision),
             languages(service(0x2002, 102, "Français Langue", kTelevision), {"fra"},
                       {"fra", "nld"}),
             service(0x2003, 103, "Curaçao TV"), service(0x2004, 130, "Jazz Radio", kRadio)},
            {service(0x2101, 104, "Ouvrir l'Œil"), scrambled(service(0x2102, 105, "Movies 1")),
             scrambled(service(0x2103, 106, "Movies 2")),
             service(0x2104, 131, "Volksmusik", kRadio)},
            {service(0x2201, 107, "Ελλάδα", kTelevision, TextTable::kUtf8),
             service(0x2202, 108, "Türkçe", kTelevision, TextTable::kIso8859_9),
             withoutGuide(service(0x2203, 109, "Local Channel")),
             service(0x2204, 132, "Nyhetsradio", kRadio)}};
    uint16_t number = 1;
    for (const auto& list : services) {
        MultiplexPlan plan;
        plan.fileName = fmt::format("dvb-c-{}.ts", number);
        plan.medium = Medium::kCable;
        plan.networkName = "Corvanta Cable";
        plan.networkId = 0xA011;
        plan.originalNetworkId = 0xF011;
        plan.transportStreamId = static_cast<uint16_t>(0x0800 + number);
        plan.frequencyKhz = 306'000 + 8'000u * number;
        plan.symbolRate = 6'900'000;
        plan.services = list;
        plans.push_back(std::move(plan));
        ++number;
    }
}

}  // namespace

std::vector<MultiplexPlan> demoPlans(int64_t time, unsigned guideHours) {
    std::vector<MultiplexPlan> plans;
    addTerrestrial(plans);
    addSatellite(plans);
    addCable(plans);
    for (MultiplexPlan& plan : plans) {
        plan.time = time;
        plan.guideHours = guideHours;
    }
    return plans;
}

std::vector<MultiplexPlan> largePlans(unsigned multiplexes, unsigned services, int64_t time,
                                      unsigned guideHours) {
    std::vector<MultiplexPlan> plans;
    unsigned made = 0;
    for (unsigned i = 0; i < multiplexes; ++i) {
        MultiplexPlan plan;
        plan.fileName = fmt::format("large-{:04}.ts", i + 1);
        plan.networkName = "Large Network";
        plan.networkId = 0x3000;
        plan.originalNetworkId = 0x3000;
        plan.transportStreamId = static_cast<uint16_t>(i + 1);
        plan.frequencyKhz = 300'000 + 1'000 * i;
        plan.time = time;
        plan.guideHours = guideHours;
        const unsigned end = static_cast<unsigned>(uint64_t{services} * (i + 1) / multiplexes);
        for (uint16_t id = 1; made < end; ++made, ++id) {
            const bool radio = made % 10 == 9;
            plan.services.push_back(service(id, 0, fmt::format("Große Liste {:05}", made + 1),
                                            radio ? kRadio : kHdTelevision));
            plan.services.back().scrambled = made % 7 == 0;
        }
        plans.push_back(std::move(plan));
    }
    return plans;
}

}  // namespace stream_generator
