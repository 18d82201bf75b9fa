// The stream generator as a library and as the program qortv-mkstreams.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <stdexcept>

#include "support/temp_folder.h"
#include "television/generator/stream_writer.h"
#include "television/generator/text_encoder.h"
#include "television/stream/stream_folder.h"

using namespace stream_generator;

namespace {

/** Exit code and output (both streams) of qortv-mkstreams. */
std::pair<int, std::string> run(const std::string& arguments) {
    std::FILE* pipe =
            popen((std::string(QORTV_MKSTREAMS) + " " + arguments + " 2>&1").c_str(), "r");
    std::string output;
    std::array<char, 4096> buffer;
    while (size_t got = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
        output.append(buffer.data(), got);
    }
    return {WEXITSTATUS(pclose(pipe)), output};
}

TEST(Generator, WritesTheSameBytesEveryTime) {
    for (const MultiplexPlan& plan : demoPlans()) EXPECT_EQ(buildStream(plan), buildStream(plan));
}

TEST(Generator, DemoHasThreeNetworksAndMoreThanThirtyServices) {
    size_t services = 0;
    std::array<int, 3> media = {};
    for (const MultiplexPlan& plan : demoPlans()) {
        services += plan.services.size();
        ++media[static_cast<size_t>(plan.medium)];
        const size_t size = buildStream(plan, demoPlans()).size();
        EXPECT_GT(size, 150'000u);
        EXPECT_LT(size, 250'000u);
        EXPECT_EQ(size % 188, 0u);
    }
    EXPECT_GE(services, 30u);
    EXPECT_EQ(media, (std::array<int, 3>{3, 3, 3}));
}

TEST(Generator, LargeListsHaveAsManyServicesAsAsked) {
    size_t services = 0;
    const auto plans = largePlans(7, 1000);
    for (const MultiplexPlan& plan : plans) {
        const TempFolder folder;
        folder.write("a.ts", buildStream(plan, plans));
        const auto read = television::readMultiplexFile(folder / "a.ts");
        EXPECT_EQ(read.services.size(), plan.services.size());
        services += read.services.size();
    }
    EXPECT_EQ(services, 1000u);
}

TEST(Generator, WhatDoesNotFitIsNamed) {
    MultiplexPlan plan = demoPlans().front();
    plan.services.front().name = std::string(300, 'x');
    EXPECT_THROW(buildStream(plan), std::invalid_argument);
    EXPECT_THROW(encodeText("中", TextTable::kIso8859_2), std::invalid_argument);
    plan = demoPlans().front();
    plan.services.front().lcn = 1000;
    EXPECT_THROW(buildStream(plan), std::invalid_argument);
}

TEST(Generator, ProgramWritesTheDemo) {
    const TempFolder folder;
    const auto [code, output] = run(folder / "streams");
    EXPECT_EQ(code, 0) << output;
    EXPECT_NE(output.find("9 multiplexes"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(folder / "streams/dvb-t-1.ts"));
    EXPECT_FALSE(std::filesystem::exists(folder / "streams/dvb-t-1.ts.part"));
}

TEST(Generator, ProgramWritesLargeLists) {
    const TempFolder folder;
    const auto [code, output] = run("--multiplexes 2 --services 30 " + folder.path());
    EXPECT_EQ(code, 0) << output;
    EXPECT_NE(output.find("2 multiplexes with 30 services"), std::string::npos);
}

TEST(Generator, ProgramTakesTimeAndGuide) {
    const TempFolder folder;
    ASSERT_EQ(run("--time 1715366400 --guide-hours 6 " + folder.path()).first, 0);
    const auto plan = demoPlans(1715366400, 6).front();
    const auto read = television::readMultiplexFile(folder / plan.fileName);
    EXPECT_EQ(read.time.utc, 1715366400);
    ASSERT_NE(read.events, nullptr);
    ASSERT_EQ(run("--time 1715366400 --multiplexes 1 --services 3 " + folder.path()).first, 0);
    const auto large = television::readMultiplexFile(folder / "large-0001.ts");
    EXPECT_EQ(large.time.utc, 1715366400);
    EXPECT_EQ(large.events, nullptr) << "a large list has no guide unless one is asked for";
    const auto before = std::time(nullptr);
    ASSERT_EQ(run("--multiplexes 1 --services 3 --guide-hours 2 " + folder.path()).first, 0);
    const auto now = television::readMultiplexFile(folder / "large-0001.ts");
    EXPECT_GE(now.time.utc, before);
    EXPECT_LE(now.time.utc, std::time(nullptr));
    EXPECT_NE(now.events, nullptr);
    EXPECT_NE(run("--guide-hours 169 " + folder.path()).first, 0);
    const auto [code, output] = run("--time 9999999999 " + folder.path());
    EXPECT_EQ(code, 1);
    EXPECT_NE(output.find("9999999999"), std::string::npos) << output;
}

TEST(Generator, ProgramNamesAFolderThatCannotBeWritten) {
    const TempFolder folder;
    folder.write("file", {1});
    const auto [code, output] = run(folder / "file");
    EXPECT_EQ(code, 1);
    EXPECT_NE(output.find(folder / "file/"), std::string::npos) << output;
    EXPECT_EQ(run(folder / "file/below").first, 1);
}

TEST(Generator, ProgramExplainsItself) {
    EXPECT_EQ(run("--help").first, 0);
    EXPECT_NE(run("--help").second.find("--services"), std::string::npos);
    EXPECT_NE(run("").first, 0);
    EXPECT_NE(run("--services 5 /tmp/never").first, 0);
    const auto [code, output] = run("--multiplexes 1 --services 5000 /tmp/never-written-qortv");
    EXPECT_EQ(code, 1);
    EXPECT_NE(output.find("1000 at most"), std::string::npos) << output;
    std::filesystem::remove_all("/tmp/never-written-qortv");
}

}  // namespace
