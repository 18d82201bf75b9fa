// Sections gathered from packets, and a service filtered out of packets, faulty ones included.
#include "television/recording/service_filter.h"

#include <gtest/gtest.h>

#include <random>

#include "support/sections.h"
#include "television/recording/service_tables.h"
#include "television/stream/guide_event.h"
#include "television/stream/psi_sections.h"
#include "television/stream/section_checksum.h"

using namespace television;
using sections::Bytes;

namespace {

constexpr uint16_t kPmtPid = 0x100;
constexpr uint16_t kVideoPid = 0x101;

std::vector<Bytes> gather(const Bytes& stream, SectionGatherer& gatherer) {
    std::vector<Bytes> result;
    for (size_t at = 0; at + 188 <= stream.size(); at += 188) {
        gatherer.push(stream.data() + at, [&](ByteView section) {
            result.emplace_back(section.data(), section.data() + section.size());
        });
    }
    return result;
}

Bytes packed(const std::vector<Bytes>& all) {
    Bytes stream;
    uint8_t counter = 0;
    for (const Bytes& section : all) {
        packSection({section.data(), section.size()}, kPmtPid, counter, stream);
    }
    return stream;
}

/** A PMT of one video stream, or with other bytes behind the PCR's PID. */
Bytes pmt(uint16_t program, uint16_t pid) {
    return sections::section(
            0x02, program,
            {static_cast<uint8_t>(0xE0 | pid >> 8), static_cast<uint8_t>(pid), 0xF0, 0, 0x1B,
             static_cast<uint8_t>(0xE0 | pid >> 8), static_cast<uint8_t>(pid), 0xF0, 0});
}

Bytes packet(uint16_t pid, uint8_t counter, uint8_t flags = 0x10) {
    Bytes result(188, 0xAA);
    result[0] = 0x47;
    result[1] = static_cast<uint8_t>(pid >> 8);
    result[2] = static_cast<uint8_t>(pid);
    result[3] = static_cast<uint8_t>(flags | counter);
    if ((flags & 0x20) != 0) result[4] = 0;
    return result;
}

struct Filter {
    ServiceFilter filter{1, 7, [] { return std::vector<ServiceFilter::Table>(); }};
    Bytes out;

    Bytes push(const Bytes& stream) {
        out.clear();
        for (size_t at = 0; at + 188 <= stream.size(); at += 188) {
            filter.push(stream.data() + at, out);
        }
        return out;
    }
    /** Pushes a PAT and a PMT with the program. */
    void announce(uint16_t videoPid = kVideoPid) {
        push(sections::Stream()
                     .add(0, sections::pat(1, {{5, 0x90}, {7, kPmtPid}}))
                     .add(kPmtPid, pmt(7, videoPid))
                     .finish());
    }
    /** The continuity counter of the packet that comes out for a packet; -1 when none does. */
    int counterOf(const Bytes& in) {
        push(in);
        return out.size() == 188 ? out[3] & 0x0F : -1;
    }
};

TEST(TelevisionSections, MadeAndGathered) {
    SectionGatherer gatherer;
    std::vector<Bytes> all;
    for (const size_t size : {0u, 1u, 100u, 170u, 171u, 172u, 1000u, 4084u}) {
        all.push_back(makeSection(0x42, 9, 3, 0, 0, Bytes(size, static_cast<uint8_t>(size))));
    }
    EXPECT_EQ(gather(packed(all), gatherer), all);
    EXPECT_EQ(all[2], sections::section(0x42, 9, Bytes(100, 100), 3)) << "as others make it";
}

TEST(TelevisionSections, WhatIsDamagedIsLeftOut) {
    const Bytes good = makeSection(0x42, 9, 3, 0, 0, Bytes(400, 1));
    Bytes bad = good;
    bad[50] ^= 1;
    SectionGatherer gatherer;
    EXPECT_EQ(gather(packed({bad, good}), gatherer), std::vector<Bytes>{good});
    Bytes gap = packed({good, good});
    gap.erase(gap.begin() + 188, gap.begin() + 2 * 188);  // a packet is missing
    EXPECT_EQ(gather(gap, gatherer), std::vector<Bytes>{good});
    Bytes twice = packed({good});
    twice.insert(twice.begin() + 188, twice.begin(), twice.begin() + 188);
    EXPECT_EQ(gather(twice, gatherer), std::vector<Bytes>{good}) << "a packet sent twice";
}

TEST(TelevisionSections, AnyBytesAreHarmless) {
    std::mt19937 random(1);
    SectionGatherer gatherer;
    Filter filter;
    for (int i = 0; i < 20'000; ++i) {
        Bytes bytes(188);
        for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
        bytes[0] = 0x47;
        if (i % 3 == 0) bytes[1] &= 0x40;
        if (i % 3 == 0) bytes[2] = 0;
        gather(bytes, gatherer);
        filter.push(bytes);
    }
    filter.announce();
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 3)), 1) << "and it still works";
}

TEST(TelevisionServiceFilter, PassesItsServiceOnly) {
    Filter filter;
    EXPECT_TRUE(filter.push(packet(kVideoPid, 0)).empty()) << "nobody has named it yet";
    filter.announce();
    EXPECT_EQ(filter.push(packet(kVideoPid, 0)).size(), 188u);
    EXPECT_TRUE(filter.push(packet(0x200, 0)).empty());
    EXPECT_TRUE(filter.push(packet(0x1FFF, 0)).empty());
    Bytes damaged = packet(kVideoPid, 1);
    damaged[1] |= 0x80;
    EXPECT_TRUE(filter.push(damaged).empty());
    EXPECT_EQ(filter.filter.passed(), 1u);
}

TEST(TelevisionServiceFilter, FollowsAChangeOfThePmt) {
    Filter filter;
    filter.announce();
    filter.push(sections::Stream().add(kPmtPid, pmt(9, 0x300)).finish());
    EXPECT_FALSE(filter.push(packet(kVideoPid, 0)).empty()) << "another program's";
    filter.push(sections::Stream().add(kPmtPid, pmt(7, 0x300)).finish());
    EXPECT_TRUE(filter.push(packet(kVideoPid, 1)).empty());
    EXPECT_FALSE(filter.push(packet(0x300, 1)).empty());
}

TEST(TelevisionServiceFilter, TablesAreNoStreams) {
    for (const uint16_t pid : {uint16_t{0}, uint16_t{0x11}, uint16_t{0x12}, uint16_t{0x1FFF}}) {
        Filter filter;
        filter.announce(pid);
        EXPECT_TRUE(filter.push(packet(pid, 0)).empty()) << pid;
    }
}

TEST(TelevisionServiceFilter, CountersGoOnWhereItBeginsAnew) {
    Filter filter;
    filter.announce();
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 14)), 1);
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 15)), 2);
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 0)), 3);
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 0)), 3) << "sent twice";
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 5)), 8) << "what is wrong stays wrong";
    filter.filter.restart();
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 2)), 9);
    filter.filter.restart();
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 7, 0x20)), 9) << "no payload";
    EXPECT_EQ(filter.counterOf(packet(kVideoPid, 8)), 10);
}

TEST(TelevisionServiceTables, LongTextsFit) {
    DescribedService service{{1, 2, 3}, 1, {}, {}};
    for (int i = 0; i < 200; ++i) {
        service.name += "ä";
        service.provider += "ö";
    }
    GuideEvent event;
    event.title = service.name;
    event.text = service.provider;
    event.duration = UINT32_MAX;
    event.start = -5;
    event.language = "d";
    for (const auto& table : {serviceTable(service), eventTable(service, &event, nullptr, 255)}) {
        for (const Bytes& section : table.sections) {
            EXPECT_EQ(sectionChecksum({section.data(), section.size()}), 0u);
            EXPECT_LE(section.size(), 400u);
        }
    }
}

}  // namespace
