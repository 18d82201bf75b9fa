/**
 * Feeds the parser of transport streams with inputs that no broadcaster sends. Built with libFuzzer
 * (QORTV_LIBFUZZER) it takes them from there; otherwise it mutates generated streams, the same
 * ones every time, as many as its argument says. The sanitizers find the faults.
 */
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>
#include <stdexcept>
#include <vector>

#include "television/generator/packetizer.h"
#include "television/generator/stream_writer.h"
#include "television/stream/event_tables.h"
#include "television/stream/multiplex.h"
#include "television/stream/stream_folder.h"

namespace {

using Bytes = std::vector<uint8_t>;

// The functions below read every field of a result, so that the sanitizers find what is not set,
// and abort when it breaks a rule. They return some sum, so that no read is left out.

size_t weigh(const television::ServiceEvents& service) {
    size_t sum = 0;
    if (service.events.empty() || service.events.size() > television::EventTables::kMostEvents) {
        std::abort();
    }
    for (const television::GuideEvent& event : service.events) {
        for (const std::string* text :
             {&event.language, &event.title, &event.text, &event.extended}) {
            for (const char c : *text) {
                if (c == '\0') std::abort();
                sum += static_cast<unsigned char>(c);
            }
        }
        sum += event.minimumAge() + event.contents.size();
        for (const auto& audio : event.audio) sum += audio.text.size() + audio.language.size();
        for (const auto& identifier : event.identifiers) sum += identifier.text.size();
    }
    return sum;
}

size_t weigh(const television::ParsedMultiplex& multiplex) {
    size_t sum = multiplex.networkName.size() + multiplex.services.size();
    for (const television::ParsedService& service : multiplex.services) {
        for (const std::string* text : {&service.name, &service.provider, &service.audioLanguage}) {
            for (const char c : *text) {
                if (c == '\0') std::abort();
                sum += static_cast<unsigned char>(c);
            }
        }
        if (service.name.empty()) std::abort();
    }
    if (multiplex.events != nullptr) {
        for (const television::ServiceEvents& service : *multiplex.events) sum += weigh(service);
    }
    return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    size_t at = 0;
    try {
        weigh(television::readMultiplex([&](uint8_t* to, size_t room) {
            const size_t part = std::min(room, size - at);
            if (part > 0) std::memcpy(to, data + at, part);
            at += part;
            return static_cast<long>(part);
        }));
    } catch (const std::runtime_error&) {
        // Correct for an input that is no transport stream.
    }
    return 0;
}

#ifndef QORTV_LIBFUZZER
namespace {

constexpr size_t kPacket = 188;

struct Section {
    uint16_t pid;
    Bytes bytes;
};

/** The sections of a generated stream: each starts in a packet of its own. */
std::vector<Section> sectionsOf(const Bytes& stream) {
    std::vector<Section> sections;
    std::map<uint16_t, size_t> open;  // PID to the section that is still being read
    for (size_t at = 0; at + kPacket <= stream.size(); at += kPacket) {
        const uint8_t* packet = stream.data() + at;
        const auto pid = static_cast<uint16_t>((packet[1] & 0x1F) << 8 | packet[2]);
        const bool start = (packet[1] & 0x40) != 0;
        const bool elementary = packet[5] == 0 && packet[6] == 1;  // not a section
        if (start && !elementary) {
            open[pid] = sections.size();
            sections.push_back({pid, Bytes(packet + 5, packet + kPacket)});
        } else if (!start && open.count(pid) != 0) {
            Bytes& bytes = sections[open[pid]].bytes;
            bytes.insert(bytes.end(), packet + 4, packet + kPacket);
        }
    }
    for (Section& section : sections) {
        const size_t length = 3u + ((section.bytes[1] & 0x0Fu) << 8 | section.bytes[2]);
        section.bytes.resize(std::min(section.bytes.size(), length));
    }
    return sections;
}

void fixChecksum(Bytes& section) {
    if (section.size() < 4) return;
    uint32_t crc = 0xFFFFFFFF;
    for (size_t i = 0; i + 4 < section.size(); ++i) {
        crc ^= uint32_t{section[i]} << 24;
        for (int bit = 0; bit < 8; ++bit) crc = (crc << 1) ^ ((crc >> 31) != 0 ? 0x04C11DB7u : 0u);
    }
    for (size_t i = 0; i < 4; ++i) {
        section[section.size() - 4 + i] = static_cast<uint8_t>(crc >> (24 - 8 * i));
    }
}

/** Changes bytes in sections and corrects their checksums, so that the tables are read. */
Bytes mutateSections(const std::vector<Section>& seed, std::mt19937& random) {
    stream_generator::Packetizer packets;
    for (Section section : seed) {
        if (random() % 3 == 0) {
            for (unsigned i = 0; i <= random() % 4; ++i) {
                const size_t at = random() % section.bytes.size();
                section.bytes[at] = random() % 2 == 0 ? 0xFF : static_cast<uint8_t>(random());
            }
            if (random() % 8 == 0) section.bytes.resize(1 + random() % section.bytes.size());
            fixChecksum(section.bytes);
        }
        if (random() % 16 == 0) section.pid = static_cast<uint16_t>(random() % 0x20);
        packets.section(section.pid, section.bytes.data(), section.bytes.size());
    }
    packets.stuffing(5);
    return packets.take();
}

/** Changes, drops and repeats bytes anywhere. */
Bytes mutateBytes(Bytes stream, std::mt19937& random) {
    stream.resize(std::min<size_t>(stream.size(), kPacket * 120));
    for (unsigned i = 0; i <= random() % 30; ++i) {
        const size_t at = random() % stream.size();
        switch (random() % 5) {
            case 0:  // a packet's header
                stream[at - at % kPacket + random() % 6] = static_cast<uint8_t>(random());
                break;
            case 1: {
                const size_t end = std::min(stream.size(), at + random() % 400);
                stream.erase(stream.begin() + static_cast<ptrdiff_t>(at),
                             stream.begin() + static_cast<ptrdiff_t>(end));
                if (stream.size() < kPacket) return stream;
                break;
            }
            case 2:
                stream.insert(stream.begin() + static_cast<ptrdiff_t>(at), random() % 300, 0x47);
                break;
            default:
                stream[at] = static_cast<uint8_t>(random());
        }
    }
    return stream;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 1'200;
    std::vector<Bytes> streams;
    std::vector<std::vector<Section>> sections;
    for (const auto& plan : stream_generator::demoPlans()) {
        streams.push_back(stream_generator::buildStream(plan, stream_generator::demoPlans()));
        sections.push_back(sectionsOf(streams.back()));
        if (sections.back().size() < 8) {
            std::fprintf(stderr, "stream_fuzz: the seed %s has no sections\n",
                         plan.fileName.c_str());
            return 1;
        }
    }
    std::mt19937 random(20240131);  // NOLINT: the same mutations every time
    for (int i = 0; i < count; ++i) {
        const size_t seed = random() % streams.size();
        const Bytes input = i % 2 == 0 ? mutateSections(sections[seed], random)
                                       : mutateBytes(streams[seed], random);
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    std::printf("%d mutated streams\n", count);
    return 0;
}
#endif
