// Scans of a folder: which files are read, and how others are reported.
#include "television/stream/stream_folder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "support/log_capture.h"
#include "support/temp_folder.h"
#include "television/generator/stream_writer.h"

using namespace stream_generator;
using television::readMultiplexFile;
using television::ScanResult;
using television::StreamFolder;

namespace {

std::vector<uint8_t> demoStream() {
    return buildStream(demoPlans().front());
}

/** A stream whose packets have `before` bytes in front and `behind` after them. */
std::vector<uint8_t> widened(const std::vector<uint8_t>& stream, size_t before, size_t behind) {
    std::vector<uint8_t> result;
    for (size_t at = 0; at < stream.size(); at += 188) {
        result.insert(result.end(), before, 0x5A);
        result.insert(result.end(), stream.begin() + static_cast<ptrdiff_t>(at),
                      stream.begin() + static_cast<ptrdiff_t>(at + 188));
        result.insert(result.end(), behind, 0xA5);
    }
    return result;
}

TEST(StreamFolder, ReadsTheDemoInTheOrderOfNames) {
    const TempFolder folder;
    writeStreams(folder.path(), demoPlans());
    const ScanResult result = StreamFolder(folder.path()).scan();
    EXPECT_TRUE(result.folderRead);
    EXPECT_TRUE(result.unreadable.empty());
    ASSERT_EQ(result.multiplexes.size(), 9u);
    EXPECT_EQ(result.multiplexes.front().source, "dvb-c-1.ts");
    EXPECT_EQ(result.multiplexes.back().source, "dvb-t-3.ts");
}

TEST(StreamFolder, PacketsOf192And204Bytes) {
    const TempFolder folder;
    folder.write("a.ts", widened(demoStream(), 4, 0));
    folder.write("b.ts", widened(demoStream(), 0, 16));
    const ScanResult result = StreamFolder(folder.path()).scan();
    ASSERT_EQ(result.multiplexes.size(), 2u);
    for (const auto& multiplex : result.multiplexes) {
        EXPECT_EQ(multiplex.services.size(), 5u);
        EXPECT_EQ(multiplex.services.front().name, "Première");
        EXPECT_EQ(multiplex.damagedPackets, 0u);
    }
}

TEST(StreamFolder, MissingFolderIsNamed) {
    const LogCapture log;
    const TempFolder folder;
    const std::string missing = folder / "nothing";
    const ScanResult result = StreamFolder(missing).scan();
    EXPECT_FALSE(result.folderRead);
    EXPECT_TRUE(log.has("cannot read the folder", missing, "No such file"));
}

TEST(StreamFolder, EmptyFolderIsNamed) {
    const LogCapture log;
    const TempFolder folder;
    const ScanResult result = StreamFolder(folder.path()).scan();
    EXPECT_TRUE(result.folderRead);
    EXPECT_TRUE(result.multiplexes.empty());
    EXPECT_TRUE(log.has("no streams", folder.path()));
}

TEST(StreamFolder, WhatIsNoStreamIsNamedAndTheRestIsRead) {
    const LogCapture log;
    const TempFolder folder;
    folder.write("a-garbage.ts", std::vector<uint8_t>(50'000, 0x20));
    folder.write("b-empty.ts", {});
    mkdir((folder / "c-folder.ts").c_str(), 0700);
    mkfifo((folder / "d-pipe.ts").c_str(), 0600);
    folder.write("e-good.ts", demoStream());
    folder.write("f-other.txt", demoStream());
    folder.write(".hidden.ts", demoStream());
    const ScanResult result = StreamFolder(folder.path()).scan();
    ASSERT_EQ(result.multiplexes.size(), 1u);
    EXPECT_EQ(result.multiplexes[0].source, "e-good.ts");
    EXPECT_TRUE(log.has("a-garbage.ts", "not a transport stream"));
    EXPECT_TRUE(log.has("b-empty.ts", "empty file"));
    EXPECT_TRUE(log.has("c-folder.ts", "not a regular file"));
    EXPECT_TRUE(log.has("d-pipe.ts", "not a regular file"));
}

TEST(StreamFolder, FileThatCannotBeOpenedIsUnreadable) {
    const LogCapture log;
    const TempFolder folder;
    // Whoever runs the tests may be allowed to read everything; nobody can follow this link.
    std::filesystem::create_symlink("loop.ts", folder / "loop.ts");
    const ScanResult result = StreamFolder(folder.path()).scan();
    EXPECT_EQ(result.unreadable.count("loop.ts"), 1u);
    EXPECT_TRUE(log.has("cannot read the stream", folder / "loop.ts"));
}

TEST(StreamFolder, TruncatedFileGivesWhatItHas) {
    const TempFolder folder;
    std::vector<uint8_t> stream = demoStream();
    stream.resize(stream.size() / 2 + 77);
    folder.write("a.ts", stream);
    const ScanResult result = StreamFolder(folder.path()).scan();
    ASSERT_EQ(result.multiplexes.size(), 1u);
    EXPECT_EQ(result.multiplexes[0].services.size(), 5u);
}

TEST(StreamFolder, StreamWithoutTablesIsNamed) {
    const LogCapture log;
    const TempFolder folder;
    std::vector<uint8_t> stream = demoStream();
    for (size_t at = 0; at < stream.size(); at += 188) {
        stream[at + 1] = 0x1F;
        stream[at + 2] = 0xFF;
    }
    folder.write("a.ts", stream);
    EXPECT_TRUE(StreamFolder(folder.path()).scan().multiplexes[0].services.empty());
    EXPECT_TRUE(log.has("no services in the stream", "a.ts"));
}

TEST(StreamFolder, UnchangedFilesAreNotReadAgain) {
    const TempFolder folder;
    folder.write("a.ts", demoStream());
    StreamFolder streams(folder.path());
    EXPECT_EQ(streams.scan().multiplexes[0].services.size(), 5u);
    // Other bytes under the same name, size, time and inode: only reading would tell.
    const std::string path = folder / "a.ts";
    struct stat before = {};
    ASSERT_EQ(stat(path.c_str(), &before), 0);
    folder.write("a.ts", std::vector<uint8_t>(demoStream().size(), 0));
    const timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    EXPECT_EQ(streams.scan().multiplexes.size(), 1u);
    // A changed one is.
    folder.write("a.ts", buildStream(demoPlans()[2]));
    EXPECT_EQ(streams.scan().multiplexes[0].transportStreamId, 3);
}

TEST(StreamFolder, ALargeFileIsNotReadWhole) {
    const TempFolder folder;
    std::vector<uint8_t> stream = demoStream();
    folder.write("a.ts", stream);
    // Three gigabytes, most of them never written.
    std::filesystem::resize_file(folder / "a.ts", 3ull << 30);
    const auto multiplex = readMultiplexFile(folder / "a.ts");
    EXPECT_EQ(multiplex.services.size(), 5u);
    EXPECT_LT(multiplex.damagedPackets, 400'000u);
}

TEST(StreamFolder, ReadingOneFileThrowsWhatIsWrong) {
    const TempFolder folder;
    EXPECT_THROW(readMultiplexFile(folder / "none.ts"), std::system_error);
    folder.write("garbage.ts", {1, 2, 3});
    EXPECT_THROW(readMultiplexFile(folder / "garbage.ts"), std::runtime_error);
}

}  // namespace
