#include "television/generator/network_table.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "television/generator/service_tables.h"
#include "television/generator/text_encoder.h"

namespace stream_generator {
namespace {

/** Services in one logical-channel descriptor (of four bytes each), and in one service-list
 * descriptor (of three). */
constexpr size_t kServicesPerDescriptor = 60;
/** With more services a stream's entry would not fit into one section together with the list of its
 * services, and goes without it. */
constexpr size_t kMostListedServices = 120;
/** Entries of other streams in one section. */
constexpr size_t kStreamsPerSection = 20;

/** `value` in `digits` binary-coded decimals. */
uint32_t bcd(uint32_t value, unsigned digits) {
    uint32_t result = 0;
    for (unsigned i = 0; i < digits; ++i, value /= 10) result |= (value % 10) << 4 * i;
    return result;
}

Bytes deliveryDescriptor(const MultiplexPlan& plan) {
    Bytes content;
    switch (plan.medium) {
        case Medium::kTerrestrial:
            put32(content, plan.frequencyKhz * 100);
            content.insert(content.end(),
                           {0x1F, 0x82, 0x58, 0xFF, 0xFF, 0xFF, 0xFF});  // 8 MHz, 64-QAM, FEC 3/4
            break;
        case Medium::kSatellite:
            put32(content, bcd(plan.frequencyKhz / 10, 8));
            put16(content, bcd(plan.orbitalPosition, 4));
            content.push_back(static_cast<uint8_t>((plan.east ? 0x80 : 0) |
                                                   (plan.vertical ? 0x20 : 0) | 0x04 |
                                                   0x02));  // DVB-S2, 8PSK
            put32(content, bcd(plan.symbolRate / 100, 7) << 4 | 0x3);
            break;
        case Medium::kCable:
            put32(content, bcd(plan.frequencyKhz * 10, 8));
            content.insert(content.end(), {0xFF, 0xF2, 0x05});  // Reed-Solomon, 256-QAM
            put32(content, bcd(plan.symbolRate / 100, 7) << 4 | 0xF);
            break;
    }
    return content;
}

uint8_t deliveryTag(Medium medium) {
    return medium == Medium::kTerrestrial ? 0x5A : medium == Medium::kSatellite ? 0x43 : 0x44;
}

/** Adds one stream's entry. `actual`: it is the stream that carries the NIT, the only one whose
 * services and channel numbers are listed. */
void addNetworkStream(dvbpsi_nit_t& nit, const MultiplexPlan& plan, bool actual) {
    dvbpsi_nit_ts_t* stream =
            dvbpsi_nit_ts_add(&nit, plan.transportStreamId, plan.originalNetworkId);
    const auto add = [&](auto... a) { dvbpsi_nit_ts_descriptor_add(stream, a...); };
    addDescriptor(deliveryTag(plan.medium), deliveryDescriptor(plan), plan.networkName, add);
    if (!actual) return;
    for (size_t begin = 0; begin < plan.services.size(); begin += kServicesPerDescriptor) {
        const size_t end = std::min(plan.services.size(), begin + kServicesPerDescriptor);
        Bytes types;
        Bytes numbers;
        for (size_t i = begin; i < end; ++i) {
            const ServicePlan& service = plan.services[i];
            put16(types, service.serviceId);
            types.push_back(service.type);
            if (service.lcn == 0) continue;
            put16(numbers, service.serviceId);
            put16(numbers, (service.visible ? 0xFC00u : 0x7C00u) | (service.lcn & 0x03FFu));
        }
        if (plan.services.size() <= kMostListedServices) {
            addDescriptor(0x41, types, plan.networkName, add);
        }
        if (numbers.empty()) continue;
        addDescriptor(0x5F, {0x00, 0x00, 0x00, 0x28}, plan.networkName, add);
        addDescriptor(0x83, numbers, plan.networkName, add);
    }
}

}  // namespace

Table nitTable(dvbpsi_t* handle, const MultiplexPlan& plan,
               const std::vector<MultiplexPlan>& network) {
    std::vector<const MultiplexPlan*> streams = {&plan};
    for (const MultiplexPlan& other : network) {
        if (other.networkId == plan.networkId &&
            other.transportStreamId != plan.transportStreamId) {
            streams.push_back(&other);
        }
    }
    Bytes name;
    putText(name, encodeText(plan.networkName, TextTable::kIso6937));
    std::vector<Sections> parts;
    for (size_t i = 0; i < streams.size();) {
        const std::unique_ptr<dvbpsi_nit_t, Deleter<dvbpsi_nit_delete>> nit(
                dvbpsi_nit_new(0x40, plan.networkId, plan.networkId, 1, true));
        addDescriptor(0x40, name, plan.networkName,
                      [&](auto... a) { dvbpsi_nit_descriptor_add(nit.get(), a...); });
        // The stream with its service lists has a section to itself.
        const size_t end = i == 0 ? 1 : std::min(streams.size(), i + kStreamsPerSection);
        for (; i < end; ++i) addNetworkStream(*nit, *streams[i], i == 0);
        parts.emplace_back(dvbpsi_nit_sections_generate(handle, nit.get(), 0x40));
    }
    return {kPidNit, numbered(handle, std::move(parts))};
}

}  // namespace stream_generator
