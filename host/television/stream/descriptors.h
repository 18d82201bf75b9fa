/** The tags of the descriptors that the television reads in PMT, SDT, NIT, EIT and TOT, and the
 * descriptors of services and of their delivery. `content` is what follows a descriptor's tag and
 * length. */
#pragma once

#include <string>

#include "television/base/byte_view.h"
#include "television/stream/multiplex.h"

namespace television {

constexpr uint8_t kDescriptorConditionalAccess = 0x09;
constexpr uint8_t kDescriptorLanguage = 0x0A;
constexpr uint8_t kDescriptorNetworkName = 0x40;
constexpr uint8_t kDescriptorServiceList = 0x41;
constexpr uint8_t kDescriptorSatellite = 0x43;
constexpr uint8_t kDescriptorCable = 0x44;
constexpr uint8_t kDescriptorService = 0x48;
constexpr uint8_t kDescriptorShortEvent = 0x4D;
constexpr uint8_t kDescriptorExtendedEvent = 0x4E;
constexpr uint8_t kDescriptorComponent = 0x50;
constexpr uint8_t kDescriptorContent = 0x54;
constexpr uint8_t kDescriptorParentalRating = 0x55;
constexpr uint8_t kDescriptorTeletext = 0x56;
constexpr uint8_t kDescriptorLocalTimeOffset = 0x58;
constexpr uint8_t kDescriptorSubtitling = 0x59;
constexpr uint8_t kDescriptorTerrestrial = 0x5A;
constexpr uint8_t kDescriptorPrivateData = 0x5F;
constexpr uint8_t kDescriptorAc3 = 0x6A;
constexpr uint8_t kDescriptorContentIdentifier = 0x76;
constexpr uint8_t kDescriptorEnhancedAc3 = 0x7A;
constexpr uint8_t kDescriptorDts = 0x7B;
constexpr uint8_t kDescriptorAac = 0x7C;
constexpr uint8_t kDescriptorExtension = 0x7F;
constexpr uint8_t kDescriptorLogicalChannel = 0x83;

/** Service descriptor: type, provider and name. */
struct ServiceDescriptor {
    uint8_t type = 0;
    std::string provider;
    std::string name;
};
ServiceDescriptor readService(ByteView content);

/** Reads a delivery-system descriptor into `delivery`. Returns false, with nothing written, when
 * `tag` is that of another descriptor or the content is too short. */
bool readDelivery(uint8_t tag, ByteView content, Delivery& delivery);

/** One entry of a logical-channel descriptor: the channel number that the network assigns to a
 * service. */
struct LogicalChannel {
    uint16_t serviceId;
    bool visible;
    uint16_t number;
};
/** Reads the entry of four bytes at the offset `at`. `specifier` is the value of the private-data
 * specifier descriptor in front, 0 without one: it decides how many bits the number has. */
LogicalChannel readLogicalChannel(ByteView content, size_t at, uint32_t specifier);

/** Whether a type of teletext page is one of the two of subtitles: plain, or for the hard of
 * hearing. */
constexpr bool isTeletextSubtitle(unsigned type) {
    return type == 2 || type == 5;
}
/** Returns how many pages of a teletext descriptor are subtitles. */
unsigned teletextSubtitles(ByteView content);

}  // namespace television
