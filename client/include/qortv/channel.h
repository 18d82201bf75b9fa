/** A channel, with the properties of its service and its multiplex that applications use. */
#pragma once

#include <cstdint>
#include <string>

#include "qortv/utf8.h"

struct SVL_REC_T;
struct TSL_REC_T;

namespace qortv {

/** How a channel reaches the television. */
enum class Medium { kUnknown, kTerrestrial, kCable, kSatellite };

/** The kind of programme that a channel carries. */
enum class ChannelType { kOther, kTelevision, kRadio, kHdTelevision, kUhdTelevision };

/** The middleware's id of the service list of each medium. */
constexpr uint16_t kTerrestrialList = 1;
constexpr uint16_t kCableList = 2;
constexpr uint16_t kSatelliteList = 3;

struct Channel {
    uint32_t id = 0;      ///< unique in all lists; identifies the channel in calls
    uint16_t number = 0;  ///< the number that the viewer enters
    std::string name;     ///< valid UTF-8
    std::string provider;
    Medium medium = Medium::kUnknown;
    ChannelType type = ChannelType::kOther;
    uint16_t list = 0;          ///< service list, such as kCableList
    uint16_t record = 0;        ///< id of its record in that list
    uint16_t serviceId = 0;     ///< program number in the multiplex
    uint16_t networkId = 0;     ///< original network id
    uint16_t multiplexId = 0;   ///< transport stream id
    std::string multiplex;      ///< name of the network, else of the file with its stream
    uint32_t frequencyKhz = 0;  ///< 0 when unknown
    std::string audioLanguage;  ///< ISO 639-2 of the first audio stream; may be empty
    bool scrambled = false;
    bool visible = false;
    bool favourite = false;  ///< in at least one favourite list
};

/** Returns the channel of a service and its multiplex. Bytes that are not UTF-8 become U+FFFD. */
Channel toChannel(const SVL_REC_T& service, const TSL_REC_T& multiplex);

/** Returns "terrestrial", "cable", "satellite" or "unknown". */
const char* name(Medium medium);

/** Returns "tv", "hd", "uhd", "radio" or "other". */
const char* name(ChannelType type);

}  // namespace qortv
