/** A channel as applications want it: the service record and its multiplex, joined and named. */
#pragma once

#include <cstdint>
#include <string>

struct SVL_REC_T;
struct TSL_REC_T;

namespace qortv {

/** How a channel reaches the set. */
enum class Medium { kUnknown, kTerrestrial, kCable, kSatellite };

/** What a channel carries. */
enum class ChannelType { kOther, kTelevision, kRadio, kHdTelevision, kUhdTelevision };

/** The middleware's id of the service list of each medium. */
constexpr uint16_t kTerrestrialList = 1;
constexpr uint16_t kCableList = 2;
constexpr uint16_t kSatelliteList = 3;

struct Channel {
    uint32_t id = 0;      ///< unique over all lists; what select() takes
    uint16_t number = 0;  ///< what the viewer types
    std::string name;     ///< valid UTF-8
    std::string provider;
    Medium medium = Medium::kUnknown;
    ChannelType type = ChannelType::kOther;
    uint16_t list = 0;          ///< service list, such as kCableList
    uint16_t record = 0;        ///< record id in that list
    uint16_t serviceId = 0;     ///< program number in the multiplex
    uint16_t networkId = 0;     ///< original network
    uint16_t multiplexId = 0;   ///< transport stream id
    std::string multiplex;      ///< name of the network, else the file it was read from
    uint32_t frequencyKhz = 0;  ///< 0 when unknown
    std::string audioLanguage;  ///< ISO 639-2 of the first audio stream; may be empty
    bool scrambled = false;
    bool visible = false;
    bool favourite = false;  ///< in any favourite list
};

/** Joins a service record with the record of its multiplex. Bytes that are not UTF-8 become U+FFFD.
 */
Channel toChannel(const SVL_REC_T& service, const TSL_REC_T& multiplex);

/** "terrestrial", "cable", "satellite" or "unknown". */
const char* name(Medium medium);

/** "tv", "hd", "uhd", "radio" or "other". */
const char* name(ChannelType type);

/** `text` with every byte that does not belong to well-formed UTF-8 replaced by U+FFFD. */
std::string validUtf8(const std::string& text);

}  // namespace qortv
