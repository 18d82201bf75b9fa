// The tables of whole streams, generated and made by hand, damaged ones too.
#include "television/stream/psi_collector.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "middleware/records.h"
#include "support/sections.h"
#include "television/generator/stream_writer.h"
#include "television/stream/stream_folder.h"

using namespace stream_generator;
using television::ParsedMultiplex;
using television::ParsedService;

namespace {

using Bytes = std::vector<uint8_t>;

ParsedMultiplex parse(const Bytes& bytes) {
    return television::readMultiplex([&bytes, at = size_t{0}](uint8_t* data, size_t size) mutable {
        const size_t part = std::min(size, bytes.size() - at);
        std::copy_n(bytes.begin() + static_cast<ptrdiff_t>(at), part, data);
        at += part;
        return static_cast<long>(part);
    });
}

/** The plan of the demo's multiplex with that file name. */
MultiplexPlan plan(const std::string& fileName) {
    for (const MultiplexPlan& candidate : demoPlans()) {
        if (candidate.fileName == fileName) return candidate;
    }
    throw std::logic_error(fileName);
}

const ParsedService& service(const ParsedMultiplex& multiplex, uint16_t id) {
    for (const ParsedService& candidate : multiplex.services) {
        if (candidate.serviceId == id) return candidate;
    }
    throw std::out_of_range("no such service");
}

/** A PMT of one MPEG-2 video stream. */
Bytes pmt(uint16_t program, uint16_t pid) {
    return sections::section(
            0x02, program,
            {static_cast<uint8_t>(0xE0 | pid >> 8), static_cast<uint8_t>(pid), 0xF0, 0x00, 0x02,
             static_cast<uint8_t>(0xE0 | pid >> 8), static_cast<uint8_t>(pid), 0xF0, 0x00});
}

TEST(PsiCollector, EveryServiceOfTheDemoComesThrough) {
    for (const MultiplexPlan& wanted : demoPlans()) {
        const ParsedMultiplex read = parse(buildStream(wanted, demoPlans()));
        EXPECT_EQ(read.transportStreamId, wanted.transportStreamId);
        EXPECT_EQ(read.originalNetworkId, wanted.originalNetworkId);
        EXPECT_EQ(read.networkId, wanted.networkId);
        EXPECT_EQ(read.networkName, wanted.networkName);
        EXPECT_EQ(read.networkStreams, 3u);
        EXPECT_EQ(read.delivery.frequencyKhz, wanted.frequencyKhz);
        EXPECT_EQ(read.delivery.symbolRate, wanted.symbolRate);
        EXPECT_EQ(read.damagedPackets, 0u);
        EXPECT_EQ(read.damagedSections, 0u);
        ASSERT_EQ(read.services.size(), wanted.services.size());
        for (const ServicePlan& planned : wanted.services) {
            const ParsedService& got = service(read, planned.serviceId);
            EXPECT_EQ(got.name, planned.name);
            EXPECT_EQ(got.provider, planned.provider);
            EXPECT_EQ(got.type, planned.type);
            EXPECT_EQ(got.lcn, planned.lcn);
            EXPECT_EQ(got.visible, planned.visible);
            EXPECT_EQ(got.scrambled, planned.scrambled);
            EXPECT_EQ(got.audioCount, planned.audioLanguages.size());
            EXPECT_EQ(got.audioLanguage, planned.audioLanguages.front());
            EXPECT_EQ(got.subtitleCount, planned.subtitleLanguages.size());
            EXPECT_NE(got.pmtPid, television::kNoPid);
            EXPECT_NE(got.audioPid, television::kNoPid);
            EXPECT_EQ(got.videoPid == television::kNoPid, planned.type == 0x02);
        }
    }
}

TEST(PsiCollector, DeliveryOfEachMedium) {
    const auto terrestrial = parse(buildStream(plan("dvb-t-1.ts"))).delivery;
    EXPECT_EQ(terrestrial.medium, BRDCST_MEDIUM_DIG_TERRESTRIAL);
    EXPECT_EQ(terrestrial.bandwidthHz, 8'000'000u);
    EXPECT_EQ(terrestrial.modulation, MODULATION_64QAM);
    EXPECT_EQ(terrestrial.fecInner, 2);
    const auto satellite = parse(buildStream(plan("dvb-s-2.ts"))).delivery;
    EXPECT_EQ(satellite.medium, BRDCST_MEDIUM_DIG_SATELLITE);
    EXPECT_EQ(satellite.orbitalPosition, 192);
    EXPECT_TRUE(satellite.east);
    EXPECT_TRUE(satellite.dvbS2);
    EXPECT_EQ(satellite.modulation, MODULATION_8PSK);
    EXPECT_EQ(satellite.polarization, POLARIZATION_VERTICAL);
    EXPECT_EQ(satellite.fecInner, 3);
    const auto cable = parse(buildStream(plan("dvb-c-1.ts"))).delivery;
    EXPECT_EQ(cable.medium, BRDCST_MEDIUM_DIG_CABLE);
    EXPECT_EQ(cable.modulation, MODULATION_256QAM);
}

TEST(PsiCollector, ProgramsWithoutDescriptionAreNumbered) {
    MultiplexPlan bare = plan("dvb-t-1.ts");
    bare.networkTable = false;
    bare.descriptions = false;
    const ParsedMultiplex read = parse(buildStream(bare));
    ASSERT_EQ(read.services.size(), bare.services.size());
    EXPECT_EQ(service(read, 0x101).name, "Program 257");
    EXPECT_EQ(service(read, 0x101).type, 1);
    EXPECT_EQ(service(read, 0x105).type, 2);  // no video: radio
    EXPECT_EQ(read.delivery.medium, BRDCST_MEDIUM_UNKNOWN);
}

TEST(PsiCollector, TransportErrorsAreCountedAndSkipped) {
    Bytes bytes = buildStream(plan("dvb-t-1.ts"));
    for (size_t packet : {0u, 10u, 20u}) bytes[packet * 188 + 1] |= 0x80;
    const ParsedMultiplex read = parse(bytes);
    EXPECT_GE(read.damagedPackets, 3u);
    EXPECT_EQ(read.services.size(), 5u);
    EXPECT_EQ(service(read, 0x101).name, "Première");
}

TEST(PsiCollector, BreaksInContinuityAreCounted) {
    Bytes bytes = sections::Stream()
                          .add(0, sections::pat(7, {{1, 0x100}}))
                          .add(0x100, pmt(1, 0x101))
                          .finish();
    const Bytes again = bytes;
    const uint32_t before = parse(bytes).damagedPackets;
    bytes.insert(bytes.end(), again.begin(), again.end());  // the counters go on from 0
    bytes.insert(bytes.end(), again.begin(), again.end());
    EXPECT_EQ(before, 0u);
    EXPECT_EQ(parse(bytes).damagedPackets, 0u);  // the same counter again is a repetition
    bytes[3] = 0x15;                             // PAT: 5, then 0
    EXPECT_EQ(parse(bytes).damagedPackets, 1u);
}

TEST(PsiCollector, WrongChecksumsAreCountedAndSkipped) {
    Bytes bad = sections::pat(9, {{5, 0x200}});
    bad[9] ^= 0x01;
    const ParsedMultiplex read =
            parse(sections::Stream().add(0, bad).add(0, sections::pat(7, {{1, 0x100}})).finish());
    EXPECT_EQ(read.damagedSections, 1u);
    EXPECT_EQ(read.transportStreamId, 7);
    ASSERT_EQ(read.services.size(), 1u);
    EXPECT_EQ(read.services[0].serviceId, 1);
}

TEST(PsiCollector, LengthsThatLieAreCountedAndSkipped) {
    // Checksums are right; the descriptor loops claim more bytes than there are.
    const Bytes pmtLies =
            sections::section(0x02, 1, {0xE1, 0x01, 0xFF, 0xFF, 0x02, 0xE1, 0x01, 0xF0, 0x00});
    const Bytes sdtLies =
            sections::section(0x42, 7, {0x00, 0x01, 0xFF, 0x00, 0x01, 0xFC, 0x8F, 0xFF, 0x48});
    const Bytes nitLies = sections::section(0x40, 3, {0xFF, 0xFF, 0x40, 0x01});
    const ParsedMultiplex read = parse(sections::Stream()
                                               .add(0, sections::pat(7, {{0, 0x10}, {1, 0x100}}))
                                               .add(0x100, pmtLies)
                                               .add(0x11, sdtLies)
                                               .add(0x10, nitLies)
                                               .finish());
    EXPECT_EQ(read.damagedSections, 3u);
    ASSERT_EQ(read.services.size(), 1u);
    EXPECT_EQ(read.services[0].name, "Program 1");
}

TEST(PsiCollector, PointerAndAdaptationBeyondThePacketAreDamage) {
    Bytes bytes = sections::Stream().add(0, sections::pat(7, {{1, 0x100}})).finish();
    Bytes pointer = bytes;
    pointer[4] = 0xFF;
    EXPECT_EQ(parse(pointer).damagedPackets, 1u);
    EXPECT_TRUE(parse(pointer).services.empty());
    Bytes adaptation = bytes;
    adaptation[3] |= 0x20;
    adaptation[4] = 0xFF;
    EXPECT_EQ(parse(adaptation).damagedPackets, 1u);
}

TEST(PsiCollector, ALaterPatReplacesTheFirst) {
    const Bytes second = sections::section(0x00, 7, {0x00, 0x02, 0xE1, 0x10}, 2);
    const ParsedMultiplex read = parse(sections::Stream()
                                               .add(0, sections::pat(7, {{1, 0x100}}))
                                               .add(0x100, pmt(1, 0x101))
                                               .add(0, second)
                                               .add(0x110, pmt(2, 0x111))
                                               .finish());
    ASSERT_EQ(read.services.size(), 1u);
    EXPECT_EQ(read.services[0].serviceId, 2);
    EXPECT_EQ(read.services[0].videoPid, 0x111);
}

TEST(PsiCollector, TablesForLaterAreNotTaken) {
    const Bytes next = sections::section(0x00, 8, {0x00, 0x02, 0xE1, 0x10}, 2, false);
    const ParsedMultiplex read =
            parse(sections::Stream().add(0, next).add(0, sections::pat(7, {{1, 0x100}})).finish());
    EXPECT_EQ(read.transportStreamId, 7);
}

TEST(PsiCollector, SeveralProgramsOnOnePid) {
    const ParsedMultiplex read = parse(sections::Stream()
                                               .add(0, sections::pat(7, {{1, 0x100}, {2, 0x100}}))
                                               .add(0x100, pmt(1, 0x101))
                                               .add(0x100, pmt(2, 0x102))
                                               .finish());
    ASSERT_EQ(read.services.size(), 2u);
    EXPECT_EQ(read.services[0].videoPid, 0x101);
    EXPECT_EQ(read.services[1].videoPid, 0x102);
}

TEST(PsiCollector, NumbersOfFourteenBitsUnderTheirSpecifier) {
    // NIT of one stream: private-data specifier 0x29, then a logical channel number of 5000,
    // hidden.
    const Bytes nit = sections::section(
            0x40, 3, {0xF0, 0x00, 0xF0, 0x12, 0x00, 0x07, 0x00, 0x09, 0xF0, 0x0C, 0x5F,
                      0x04, 0x00, 0x00, 0x00, 0x29, 0x83, 0x04, 0x00, 0x01, 0x53, 0x88});
    const ParsedMultiplex read = parse(sections::Stream()
                                               .add(0, sections::pat(7, {{0, 0x10}, {1, 0x100}}))
                                               .add(0x10, nit)
                                               .finish());
    ASSERT_EQ(read.services.size(), 1u);
    EXPECT_EQ(read.services[0].lcn, 5000);
    EXPECT_FALSE(read.services[0].visible);
    EXPECT_EQ(read.originalNetworkId, 9);
}

TEST(PsiCollector, SecondGenerationTerrestrial) {
    const Bytes nit =
            sections::section(0x40, 3, {0xF0, 0x00, 0xF0, 0x16, 0x00, 0x07, 0x00, 0x09, 0xF0,
                                        0x10, 0x7F, 0x0E, 0x04, 0x00, 0x12, 0x34, 0x04, 0x00,
                                        0x00, 0x01, 0x02, 0xD5, 0x7E, 0x80, 0x00, 0x00});
    const ParsedMultiplex read = parse(sections::Stream()
                                               .add(0, sections::pat(7, {{0, 0x10}, {1, 0x100}}))
                                               .add(0x10, nit)
                                               .finish());
    EXPECT_EQ(read.delivery.medium, BRDCST_MEDIUM_DIG_TERRESTRIAL);
    EXPECT_EQ(read.delivery.bandwidthHz, 7'000'000u);
}

TEST(PsiCollector, AHugePatIsBounded) {
    sections::Stream stream;
    constexpr uint8_t kLast = 9;
    for (uint8_t number = 0; number <= kLast; ++number) {
        Bytes payload;
        for (unsigned i = 0; i < 200; ++i) {
            const unsigned program = 1 + number * 200u + i;
            for (const unsigned value : {program >> 8, program, 0xE1u, 0x00u}) {
                payload.push_back(static_cast<uint8_t>(value));
            }
        }
        stream.add(0, sections::section(0x00, 7, payload, 1, true, number, kLast));
    }
    EXPECT_EQ(parse(stream.finish()).services.size(), 1024u);
}

}  // namespace
