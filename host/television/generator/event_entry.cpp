#include "television/generator/event_entry.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "television/generator/raw_section.h"
#include "television/generator/text_encoder.h"

namespace stream_generator {
namespace {

/** Appends a text with its length in front. `service`: its name, for the exception. */
void putField(Bytes& out, const std::string& text, const std::string& service) {
    if (text.size() > 255) {
        throw std::invalid_argument(
                fmt::format("{}: a text of its guide is too long for its field", service));
    }
    out.push_back(static_cast<uint8_t>(text.size()));
    putText(out, text);
}

void putDescriptor(Bytes& out, uint8_t tag, const Bytes& content, const std::string& service) {
    if (content.size() > 255) {
        throw std::invalid_argument(
                fmt::format("{}: an event of its guide is too long for its descriptor", service));
    }
    out.push_back(tag);
    out.push_back(static_cast<uint8_t>(content.size()));
    putBytes(out, content);
}

/** Cuts a UTF-8 text between characters into parts of `most` bytes at most. */
std::vector<std::string> partsOf(const std::string& text, size_t most) {
    std::vector<std::string> parts;
    for (size_t at = 0; at < text.size();) {
        size_t end = std::min(text.size(), at + most);
        while (end < text.size() && (static_cast<uint8_t>(text[end]) & 0xC0) == 0x80) --end;
        parts.push_back(text.substr(at, end - at));
        at = end;
    }
    return parts;
}

void putDetails(Bytes& out, const EventPlan& event, const ServicePlan& service) {
    constexpr size_t kPart = 100;  // bytes of UTF-8, which the two-byte tables may double
    std::vector<std::string> parts = partsOf(event.details, kPart);
    // The items have a descriptor to themselves, the first.
    if (!event.items.empty()) parts.insert(parts.begin(), std::string());
    for (size_t i = 0; i < parts.size(); ++i) {
        Bytes content = {static_cast<uint8_t>(i << 4 | (parts.size() - 1))};
        putCode(content, event.language);
        Bytes items;
        if (i == 0) {
            for (const auto& [name, value] : event.items) {
                putField(items, encodeText(name, service.table), service.name);
                putField(items, encodeText(value, service.table), service.name);
            }
        }
        putField(content, std::string(items.begin(), items.end()), service.name);
        putField(content, encodeText(parts[i], service.table), service.name);
        putDescriptor(out, 0x4E, content, service.name);
    }
}

void putIdentifiers(Bytes& out, const EventPlan& event, const ServicePlan& service) {
    constexpr uint8_t kProgramme = 0x31;
    constexpr uint8_t kSeries = 0x32;
    Bytes content;
    for (const auto& [type, text] :
         {std::make_pair(kProgramme, event.programmeId), {kSeries, event.seriesId}}) {
        if (text.empty()) continue;
        content.push_back(static_cast<uint8_t>(type << 2));
        putField(content, text, service.name);
    }
    if (!content.empty()) putDescriptor(out, 0x76, content, service.name);
}

void putShortEvent(Bytes& out, const EventPlan& event, const ServicePlan& service) {
    Bytes content;
    putCode(content, event.language);
    putField(content, encodeText(event.title, service.table), service.name);
    putField(content, encodeText(event.text, service.table), service.name);
    putDescriptor(out, 0x4D, content, service.name);
}

void putRatings(Bytes& out, const EventPlan& event, const ServicePlan& service) {
    if (event.age == 0) return;
    Bytes content;
    for (const char* country : {"DEU", "GBR"}) {
        putCode(content, country);
        content.push_back(static_cast<uint8_t>(event.age - 3));
    }
    putDescriptor(out, 0x55, content, service.name);
}

void putAudioComponents(Bytes& out, const ServicePlan& service) {
    uint8_t tag = 1;
    for (const std::string& language : service.audioLanguages) {
        Bytes content = {0xF2, 0x03, tag++};  // MPEG audio, stereo
        putCode(content, language);
        putDescriptor(out, 0x50, content, service.name);
    }
}

Bytes descriptorsOf(const EventPlan& event, const ServicePlan& service) {
    Bytes out;
    putShortEvent(out, event, service);
    putDetails(out, event, service);
    putDescriptor(out, 0x54, {event.genre, 0x00}, service.name);
    putRatings(out, event, service);
    putAudioComponents(out, service);
    putIdentifiers(out, event, service);
    return out;
}

}  // namespace

Bytes eventEntry(const EventPlan& event, const ServicePlan& service, uint8_t runningStatus) {
    const Bytes descriptors = descriptorsOf(event, service);
    Bytes entry;
    put16(entry, event.eventId);
    putTime(entry, event.start);
    put24(entry, television::bcdFromSeconds(event.duration));
    put16(entry, static_cast<unsigned>(runningStatus << 13 | (service.scrambled ? 0x1000 : 0) |
                                       static_cast<unsigned>(descriptors.size())));
    putBytes(entry, descriptors);
    return entry;
}

}  // namespace stream_generator
