#include "television/recording/service_tables.h"

#include <algorithm>

#include "television/base/calendar.h"

namespace television {
namespace {

constexpr uint16_t kPidSdt = 0x11;
constexpr uint16_t kPidEit = 0x12;
constexpr uint8_t kTableSdt = 0x42;
constexpr uint8_t kTableEit = 0x4E;
constexpr uint8_t kServiceDescriptor = 0x48;
constexpr uint8_t kShortEventDescriptor = 0x4D;
constexpr uint8_t kUtf8Text = 0x15;  ///< first byte of a text in UTF-8
constexpr uint8_t kRunning = 4;
constexpr uint8_t kNotRunning = 1;
/** Bytes: two texts share a descriptor of 255 bytes. */
constexpr size_t kLongestText = 110;
/** Seconds: 99:59:59, the longest that has six digits. */
constexpr uint32_t kLongestDuration = 99 * 3600 + 59 * 60 + 59;

using Bytes = std::vector<uint8_t>;

void put16(Bytes& out, unsigned value) {
    out.push_back(static_cast<uint8_t>(value >> 8));
    out.push_back(static_cast<uint8_t>(value));
}

/** Appends a text with its length in front, cut where it is too long. */
void putText(Bytes& out, const std::string& text) {
    size_t size = std::min(text.size(), kLongestText);
    while (size < text.size() && size > 0 && (static_cast<uint8_t>(text[size]) & 0xC0) == 0x80) {
        --size;
    }
    out.push_back(static_cast<uint8_t>(size == 0 ? 0 : size + 1));
    if (size == 0) return;
    out.push_back(kUtf8Text);
    out.insert(out.end(), text.begin(), text.begin() + static_cast<ptrdiff_t>(size));
}

/** Appends a loop of one descriptor: its length in twelve bits, below four others, then the
 * descriptor. */
void putLoop(Bytes& out, unsigned highBits, uint8_t tag, const Bytes& descriptor) {
    put16(out, highBits << 12 | static_cast<unsigned>(descriptor.size() + 2));
    out.push_back(tag);
    out.push_back(static_cast<uint8_t>(descriptor.size()));
    out.insert(out.end(), descriptor.begin(), descriptor.end());
}

void putEvent(Bytes& out, const GuideEvent& event, bool present) {
    const int64_t day = floorDivide(event.start, kSecondsOfDay);
    put16(out, event.eventId);
    put16(out, static_cast<unsigned>(day + kMjdOfEpoch));
    const uint32_t time = bcdFromSeconds(static_cast<uint32_t>(event.start - day * kSecondsOfDay));
    const uint32_t duration = bcdFromSeconds(std::min(event.duration, kLongestDuration));
    for (const uint32_t digits : {time, duration}) {
        out.push_back(static_cast<uint8_t>(digits >> 16));
        put16(out, digits & 0xFFFF);
    }
    std::string language = event.language;
    language.resize(3, ' ');
    Bytes descriptor(language.begin(), language.end());
    putText(descriptor, event.title);
    putText(descriptor, event.text);
    const unsigned state = present ? kRunning : kNotRunning;
    putLoop(out, state << 1, kShortEventDescriptor, descriptor);
}

}  // namespace

ServiceFilter::Table serviceTable(const DescribedService& service) {
    Bytes descriptor{service.type};
    putText(descriptor, service.provider);
    putText(descriptor, service.name);
    Bytes payload;
    put16(payload, service.key.originalNetworkId);
    payload.push_back(0xFF);
    put16(payload, service.key.serviceId);
    payload.push_back(0xFD);  // EIT_present_following_flag: there is an EIT with these events
    putLoop(payload, kRunning << 1, kServiceDescriptor, descriptor);
    return {kPidSdt, {makeSection(kTableSdt, service.key.transportStreamId, 1, 0, 0, payload)}};
}

ServiceFilter::Table eventTable(const DescribedService& service, const GuideEvent* present,
                                const GuideEvent* following, uint8_t version) {
    ServiceFilter::Table table{kPidEit, {}};
    for (const uint8_t number : {uint8_t{0}, uint8_t{1}}) {
        Bytes payload;
        put16(payload, service.key.transportStreamId);
        put16(payload, service.key.originalNetworkId);
        payload.push_back(1);  // last section
        payload.push_back(kTableEit);
        const GuideEvent* event = number == 0 ? present : following;
        if (event != nullptr) putEvent(payload, *event, number == 0);
        table.sections.push_back(
                makeSection(kTableEit, service.key.serviceId, version, number, 1, payload));
    }
    return table;
}

}  // namespace television
