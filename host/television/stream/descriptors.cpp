#include "television/stream/descriptors.h"

#include "middleware/records.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

constexpr uint8_t kExtensionTerrestrial2 = 0x04;
/** The private-data specifier under which a logical channel number has 14 bits instead of 10. */
constexpr uint32_t kSpecifierNordic = 0x00000029;

/** The number that the last `count` binary-coded decimals in `digits` stand for. */
uint32_t decimal(uint32_t digits, unsigned count) {
    uint32_t value = 0;
    while (count-- > 0) value = value * 10 + (digits >> 4 * count & 0xF);
    return value;
}

void readTerrestrial(ByteView content, Delivery& delivery) {
    constexpr uint32_t kBandwidths[] = {8'000'000, 7'000'000, 6'000'000, 5'000'000};
    constexpr uint8_t kModulations[] = {MODULATION_QPSK, MODULATION_16QAM, MODULATION_64QAM};
    delivery.medium = BRDCST_MEDIUM_DIG_TERRESTRIAL;
    delivery.frequencyKhz = content.u32(0) / 100;  // the field is in units of 10 Hz
    const unsigned bandwidth = content.u8(4) >> 5;
    if (bandwidth < 4) delivery.bandwidthHz = kBandwidths[bandwidth];
    const unsigned constellation = content.u8(5) >> 6;
    if (constellation < 3) delivery.modulation = kModulations[constellation];
    delivery.fecInner = content.u8(5) & 0x07;
}

/** The second-generation descriptor: its short form gives no more than the medium. */
void readTerrestrial2(ByteView content, Delivery& delivery) {
    constexpr uint32_t kBandwidths[] = {8'000'000, 7'000'000,  6'000'000,
                                        5'000'000, 10'000'000, 1'712'000};
    delivery.medium = BRDCST_MEDIUM_DIG_TERRESTRIAL;
    if (content.size() < 6) return;
    const unsigned bandwidth = content.u8(4) >> 2 & 0xF;
    if (bandwidth < 6) delivery.bandwidthHz = kBandwidths[bandwidth];
    const bool slices = (content.u8(5) & 0x01) != 0;
    const size_t frequencyAt = slices ? 9 : 8;  // after the cell id, and the loop's length
    delivery.frequencyKhz = content.u32(frequencyAt) / 100;
}

void readSatellite(ByteView content, Delivery& delivery) {
    constexpr uint8_t kModulations[] = {MODULATION_UNKNOWN, MODULATION_QPSK, MODULATION_8PSK,
                                        MODULATION_16QAM};
    delivery.medium = BRDCST_MEDIUM_DIG_SATELLITE;
    delivery.frequencyKhz = decimal(content.u32(0), 8) * 10;  // units of 10 kHz
    delivery.orbitalPosition = static_cast<uint16_t>(decimal(content.u16(4), 4));
    const uint8_t flags = content.u8(6);
    delivery.east = (flags & 0x80) != 0;
    delivery.polarization = flags >> 5 & 0x03;
    delivery.dvbS2 = (flags & 0x04) != 0;
    delivery.modulation = kModulations[flags & 0x03];
    delivery.symbolRate = decimal(content.u32(7) >> 4, 7) * 100;
    delivery.fecInner = content.u8(10) & 0x0F;
}

void readCable(ByteView content, Delivery& delivery) {
    constexpr uint8_t kModulations[] = {MODULATION_UNKNOWN, MODULATION_16QAM,  MODULATION_32QAM,
                                        MODULATION_64QAM,   MODULATION_128QAM, MODULATION_256QAM};
    delivery.medium = BRDCST_MEDIUM_DIG_CABLE;
    delivery.frequencyKhz = decimal(content.u32(0), 8) / 10;  // units of 100 Hz
    if (content.u8(6) < 6) delivery.modulation = kModulations[content.u8(6)];
    delivery.symbolRate = decimal(content.u32(7) >> 4, 7) * 100;
    delivery.fecInner = content.u8(10) & 0x0F;
}

}  // namespace

ServiceDescriptor readService(ByteView content) {
    ServiceDescriptor service;
    service.type = content.u8(0);
    const size_t providerLength = content.u8(1);
    service.provider = dvbTextToUtf8(content.part(2, providerLength));
    const size_t nameAt = 2 + providerLength;
    service.name = dvbTextToUtf8(content.part(nameAt + 1, content.u8(nameAt)));
    return service;
}

bool readDelivery(uint8_t tag, ByteView content, Delivery& delivery) {
    if (tag == kDescriptorTerrestrial && content.size() >= 11) {
        delivery = {};
        readTerrestrial(content, delivery);
    } else if (tag == kDescriptorSatellite && content.size() >= 11) {
        delivery = {};
        readSatellite(content, delivery);
    } else if (tag == kDescriptorCable && content.size() >= 11) {
        delivery = {};
        readCable(content, delivery);
    } else if (tag == kDescriptorExtension && content.size() >= 4 &&
               content.u8(0) == kExtensionTerrestrial2) {
        delivery = {};
        readTerrestrial2(content, delivery);
    } else {
        return false;
    }
    return true;
}

LogicalChannel readLogicalChannel(ByteView content, size_t at, uint32_t specifier) {
    const uint16_t bits = specifier == kSpecifierNordic ? 0x3FFF : 0x03FF;
    const uint16_t field = content.u16(at + 2);
    return {content.u16(at), (field & 0x8000) != 0, static_cast<uint16_t>(field & bits)};
}

unsigned teletextSubtitles(ByteView content) {
    unsigned count = 0;
    for (size_t at = 0; at + 5 <= content.size(); at += 5) {
        const unsigned type = content.u8(at + 3) >> 3;
        if (isTeletextSubtitle(type)) ++count;
    }
    return count;
}

}  // namespace television
