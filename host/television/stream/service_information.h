/** Reads the service description table (SDT) and the network information table (NIT), and completes
 * a multiplex with them. */
#pragma once

#include <map>

#include "television/stream/descriptors.h"
#include "television/stream/multiplex.h"
#include "television/stream/psi_tables.h"

namespace television {

/** One service of the SDT. */
struct ServiceDescription {
    ServiceDescriptor descriptor;
    bool scrambled = false;
    bool presentFollowing = false;  ///< the stream carries its present and following event
    bool schedule = false;          ///< the stream carries its later events
};

/** The SDT of the actual transport stream. */
struct ServiceDescriptions {
    uint16_t transportStreamId = 0;
    uint16_t originalNetworkId = 0;
    std::map<uint16_t, ServiceDescription> services;  ///< by service id
};
ServiceDescriptions readServiceDescriptions(const dvbpsi_sdt_t& sdt);

/** Completes a service, whose program map is applied already, with its description. Where the
 * description lacks them, the name becomes "Program N" and the type is guessed from the streams. */
void describe(const ServiceDescriptions& descriptions, ParsedService& service);

/** What the NIT says of one transport stream. */
struct NetworkStream {
    uint16_t transportStreamId = 0;
    uint16_t originalNetworkId = 0;
    Delivery delivery;
    std::map<uint16_t, LogicalChannel> channels;  ///< by service id
    std::map<uint16_t, uint8_t> serviceTypes;     ///< by service id
};

/** The NIT of the actual network. */
struct Network {
    uint16_t id = 0;
    uint8_t version = 0;
    std::string name;
    std::vector<NetworkStream> streams;
};
Network readNetwork(const dvbpsi_nit_t& nit);

/**
 * Completes a multiplex, whose transport-stream id and services are known, with what its network
 * says. Where the NIT does not list the stream, its medium is that of the network's other streams.
 */
void applyNetwork(const Network& network, ParsedMultiplex& multiplex);

}  // namespace television
