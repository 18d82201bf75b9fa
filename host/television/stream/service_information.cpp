#include "television/stream/service_information.h"

#include "television/stream/dvb_text.h"

namespace television {
namespace {

constexpr uint8_t kTypeTelevision = 0x01;
constexpr uint8_t kTypeRadio = 0x02;

NetworkStream readStream(const dvbpsi_nit_ts_t& stream) {
    NetworkStream result;
    result.transportStreamId = stream.i_ts_id;
    result.originalNetworkId = stream.i_orig_network_id;
    uint32_t specifier = 0;  // of the private descriptors that follow
    forEachDescriptor(stream.p_first_descriptor, [&](uint8_t tag, ByteView content) {
        if (tag == kDescriptorPrivateData) {
            specifier = content.u32(0);
        } else if (tag == kDescriptorLogicalChannel) {
            for (size_t at = 0; at + 4 <= content.size(); at += 4) {
                const LogicalChannel channel = readLogicalChannel(content, at, specifier);
                result.channels.emplace(channel.serviceId, channel);
            }
        } else if (tag == kDescriptorServiceList) {
            for (size_t at = 0; at + 3 <= content.size(); at += 3) {
                result.serviceTypes.emplace(content.u16(at), content.u8(at + 2));
            }
        } else {
            readDelivery(tag, content, result.delivery);
        }
    });
    return result;
}

/** The entry of the multiplex in the NIT; null when there is none. */
const NetworkStream* streamOf(const Network& network, const ParsedMultiplex& multiplex) {
    for (const NetworkStream& stream : network.streams) {
        if (stream.transportStreamId != multiplex.transportStreamId) continue;
        if (multiplex.originalNetworkId == 0 ||
            stream.originalNetworkId == multiplex.originalNetworkId) {
            return &stream;
        }
    }
    return nullptr;
}

}  // namespace

ServiceDescriptions readServiceDescriptions(const dvbpsi_sdt_t& sdt) {
    ServiceDescriptions result;
    result.transportStreamId = sdt.i_extension;
    result.originalNetworkId = sdt.i_network_id;
    for (const auto* service = sdt.p_first_service; service != nullptr; service = service->p_next) {
        ServiceDescription& description = result.services[service->i_service_id];
        description.scrambled = service->b_free_ca;
        description.presentFollowing = service->b_eit_present;
        description.schedule = service->b_eit_schedule;
        forEachDescriptor(service->p_first_descriptor, [&](uint8_t tag, ByteView content) {
            if (tag == kDescriptorService) description.descriptor = readService(content);
        });
    }
    return result;
}

void describe(const ServiceDescriptions& descriptions, ParsedService& service) {
    const auto found = descriptions.services.find(service.serviceId);
    if (found != descriptions.services.end()) {
        service.name = found->second.descriptor.name;
        service.provider = found->second.descriptor.provider;
        service.type = found->second.descriptor.type;
        service.scrambled = service.scrambled || found->second.scrambled;
    }
    if (service.name.empty()) service.name = "Program " + std::to_string(service.serviceId);
    if (service.type == 0 && service.videoPid != kNoPid) service.type = kTypeTelevision;
    if (service.type == 0 && service.audioPid != kNoPid) service.type = kTypeRadio;
}

Network readNetwork(const dvbpsi_nit_t& nit) {
    Network network;
    network.id = nit.i_network_id;
    network.version = nit.i_version;
    forEachDescriptor(nit.p_first_descriptor, [&](uint8_t tag, ByteView content) {
        if (tag == kDescriptorNetworkName) network.name = dvbTextToUtf8(content);
    });
    for (const auto* stream = nit.p_first_ts; stream != nullptr; stream = stream->p_next) {
        network.streams.push_back(readStream(*stream));
    }
    return network;
}

void applyNetwork(const Network& network, ParsedMultiplex& multiplex) {
    multiplex.networkId = network.id;
    multiplex.networkVersion = network.version;
    multiplex.networkName = network.name;
    multiplex.networkStreams = static_cast<unsigned>(network.streams.size());
    const NetworkStream* stream = streamOf(network, multiplex);
    if (stream == nullptr) {
        for (const NetworkStream& other : network.streams) {
            if (multiplex.delivery.medium == 0) multiplex.delivery.medium = other.delivery.medium;
        }
        return;
    }
    multiplex.originalNetworkId = stream->originalNetworkId;
    multiplex.delivery = stream->delivery;
    for (ParsedService& service : multiplex.services) {
        const auto channel = stream->channels.find(service.serviceId);
        if (channel != stream->channels.end()) {
            service.lcn = channel->second.number;
            service.visible = channel->second.visible;
        }
        const auto type = stream->serviceTypes.find(service.serviceId);
        if (service.type == 0 && type != stream->serviceTypes.end()) service.type = type->second;
    }
}

}  // namespace television
