// Packets of all sizes, lost and damaged ones, and sources that are no stream.
#include "television/stream/packet_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

using television::kPacketSize;
using television::PacketReader;

namespace {

using Bytes = std::vector<uint8_t>;

/** A source that hands out `bytes` in pieces of `piece`. */
PacketReader::Source source(const Bytes& bytes, size_t piece = 1000) {
    return [&bytes, piece, at = size_t{0}](uint8_t* data, size_t size) mutable {
        const size_t part = std::min({piece, size, bytes.size() - at});
        std::memcpy(data, bytes.data() + at, part);
        at += part;
        return static_cast<long>(part);
    };
}

/** Packets numbered in their second byte, `before` bytes in front of each and `behind` after. */
Bytes stream(size_t count, size_t before = 0, size_t behind = 0) {
    Bytes bytes;
    for (size_t i = 0; i < count; ++i) {
        bytes.insert(bytes.end(), before, 0x11);
        Bytes packet(kPacketSize, 0x22);
        packet[0] = 0x47;
        packet[1] = static_cast<uint8_t>(i);
        bytes.insert(bytes.end(), packet.begin(), packet.end());
        bytes.insert(bytes.end(), behind, 0x33);
    }
    return bytes;
}

std::vector<int> numbers(PacketReader& reader) {
    std::vector<int> result;
    while (const uint8_t* packet = reader.next()) {
        EXPECT_EQ(packet[0], 0x47);
        result.push_back(packet[1]);
    }
    return result;
}

std::vector<int> upTo(int count) {
    std::vector<int> result(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) result[static_cast<size_t>(i)] = i;
    return result;
}

TEST(PacketReader, ReadsPlainPackets) {
    const Bytes bytes = stream(100);
    PacketReader reader(source(bytes));
    EXPECT_EQ(numbers(reader), upTo(100));
    EXPECT_EQ(reader.stride(), 188u);
    EXPECT_EQ(reader.lost(), 0u);
    EXPECT_EQ(reader.bytes(), bytes.size());
}

TEST(PacketReader, ReadsPacketsWithTimeStamps) {
    const Bytes bytes = stream(50, 4);
    PacketReader reader(source(bytes));
    EXPECT_EQ(numbers(reader), upTo(50));
    EXPECT_EQ(reader.stride(), 192u);
}

TEST(PacketReader, ReadsPacketsWithErrorCorrection) {
    const Bytes bytes = stream(50, 0, 16);
    PacketReader reader(source(bytes));
    EXPECT_EQ(numbers(reader), upTo(50));
    EXPECT_EQ(reader.stride(), 204u);
}

TEST(PacketReader, SkipsWhatComesBeforeTheFirstPacket) {
    Bytes bytes(50, 0x47);  // looks like synchronisation, and is not
    bytes.insert(bytes.end(), 383, 0x00);
    const Bytes packets = stream(20);
    bytes.insert(bytes.end(), packets.begin(), packets.end());
    PacketReader reader(source(bytes));
    EXPECT_EQ(numbers(reader), upTo(20));
}

TEST(PacketReader, OneBadSyncByteCostsOnePacket) {
    Bytes bytes = stream(20);
    bytes[7 * kPacketSize] = 0x00;
    PacketReader reader(source(bytes));
    std::vector<int> expected = upTo(20);
    expected.erase(expected.begin() + 7);
    EXPECT_EQ(numbers(reader), expected);
    EXPECT_EQ(reader.lost(), 1u);
}

TEST(PacketReader, FindsPacketsAgainAfterLostBytes) {
    Bytes bytes = stream(20);
    bytes.erase(bytes.begin() + 5 * kPacketSize + 10, bytes.begin() + 5 * kPacketSize + 60);
    PacketReader reader(source(bytes));
    std::vector<int> read = numbers(reader);
    EXPECT_EQ(read.back(), 19);
    EXPECT_GE(read.size(), 18u);
    EXPECT_GE(reader.lost(), 1u);
}

TEST(PacketReader, StopsAtAPartOfAPacket) {
    Bytes bytes = stream(10);
    bytes.resize(bytes.size() - 1);
    PacketReader reader(source(bytes, 7));
    EXPECT_EQ(numbers(reader), upTo(9));
}

TEST(PacketReader, LastPacketMayLackWhatFollowsIt) {
    Bytes bytes = stream(10, 0, 16);
    bytes.resize(bytes.size() - 16);
    PacketReader reader(source(bytes));
    EXPECT_EQ(numbers(reader), upTo(10));
}

TEST(PacketReader, GarbageIsNoStream) {
    Bytes bytes(500'000);
    uint32_t state = 1;
    for (uint8_t& byte : bytes)
        byte = static_cast<uint8_t>((state = state * 1664525 + 1013904223) >> 24);
    PacketReader reader(source(bytes, 100'000));
    EXPECT_EQ(reader.next(), nullptr);
    EXPECT_FALSE(reader.isTransportStream());
    EXPECT_FALSE(reader.failed());
}

TEST(PacketReader, GarbageBehindAStreamEnds) {
    Bytes bytes = stream(10);
    bytes.insert(bytes.end(), 700'000, 0x00);
    PacketReader reader(source(bytes, 65'536));
    EXPECT_EQ(numbers(reader), upTo(10));
    EXPECT_NEAR(reader.lost(), 700'000 / 188, 20);
}

TEST(PacketReader, SaysThatReadingFailed) {
    PacketReader reader([](uint8_t*, size_t) { return -1L; });
    EXPECT_EQ(reader.next(), nullptr);
    EXPECT_TRUE(reader.failed());
}

}  // namespace
