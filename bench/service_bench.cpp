// Timings against a running service: the bulk read of its channel list, and whether a million calls
// leave its memory and descriptors as they were. scripts/bench starts the service and places it.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "middleware/records.h"
#include "qortv/connect.h"
#include "qortv/shared_region.h"
#include "ratio.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiChannelList.h"

using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiChannelList;

namespace {

constexpr int kRounds = 15;

int32_t bulkRead(IQorTvApiChannelList& list, const qortv::SharedRegion& services,
                 const qortv::SharedRegion& multiplexes, uint32_t count) {
    return list.a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
            SVL_ID_TERRESTRIAL, 0, 0, 0, 0, 0, 0, 1, 0, count, services.handle(),
            multiplexes.handle());
}

/** Copies into the file through a mapping made for it. */
void copyMapped(int file, const char* source, size_t size) {
    void* target = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, file, 0);
    if (target == MAP_FAILED) {
        std::perror("service_bench: mmap");
        std::exit(1);
    }
    std::memcpy(target, source, size);
    munmap(target, size);
}

int benchBulk(IQorTvApiChannelList& list, uint32_t count) {
    qortv::SharedRegion services(count * sizeof(SVL_REC_T));
    qortv::SharedRegion multiplexes(count * sizeof(TSL_REC_T));
    const int32_t filled = bulkRead(list, services, multiplexes, count);
    if (filled != static_cast<int32_t>(count)) {
        std::fprintf(stderr, "service_bench: asked for %u services, got %d\n", count, filled);
        return 1;
    }
    const std::vector<char> source(count * (sizeof(SVL_REC_T) + sizeof(TSL_REC_T)), 1);
    std::vector<char> target(source.size());
    const bench::Pair pair = bench::inTurns(
            kRounds, 20, [&] { bulkRead(list, services, multiplexes, count); },
            [&] {
                std::memcpy(target.data(), source.data(), source.size());
                asm volatile("" : : "r"(target.data()) : "memory");
            });
    std::printf(
            "%u services (%zu bytes)  bulk read %6.0f us, plain copy         %6.0f us, ratio "
            "%.2f\n",
            count, source.size(), pair.subject / 1000, pair.peer / 1000, pair.ratio());

    // What no bulk read can go below: the service maps and unmaps what it fills, each time.
    const int file = services.handle()->data[0];
    const int otherFile = multiplexes.handle()->data[0];
    const size_t split = count * sizeof(SVL_REC_T);
    const bench::Pair mapped = bench::inTurns(
            kRounds, 20, [&] { bulkRead(list, services, multiplexes, count); },
            [&] {
                copyMapped(file, source.data(), split);
                copyMapped(otherFile, source.data() + split, source.size() - split);
            });
    std::printf(
            "%u services (%zu bytes)  bulk read %6.0f us, map, copy, unmap  %6.0f us, ratio %.2f\n",
            count, source.size(), mapped.subject / 1000, mapped.peer / 1000, mapped.ratio());
    return 0;
}

struct Usage {
    long residentKb = 0;
    long descriptors = 0;
};

Usage usageOf(pid_t pid) {
    Usage usage;
    const std::string proc = "/proc/" + std::to_string(pid);
    std::ifstream status(proc + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.rfind("VmRSS:", 0) == 0) usage.residentKb = std::atol(line.c_str() + 6);
    }
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(proc + "/fd")) {
        ++usage.descriptors;
    }
    return usage;
}

int benchMillion(IQorTvApiChannelList& list, pid_t service) {
    constexpr int kCalls = 1000000;
    const auto call = [&](int i) {
        if (i % 2 == 0) {
            const int32_t ignored = list.a_hidl_a_qortvapi_channellist_get_channel_number(1);
            (void)ignored;
        } else {
            list.a_hidl_a_qortvapi_channellist_get_channel_by_id(
                    1, SVL_ID_TERRESTRIAL, [](const auto&, const auto&, int32_t) {});
        }
    };
    for (int i = 0; i < kCalls / 100; ++i) call(i);
    const Usage before = usageOf(service);
    for (int i = 0; i < kCalls; ++i) call(i);
    const Usage after = usageOf(service);
    std::printf("%d calls: resident memory %ld kB -> %ld kB, descriptors %ld -> %ld\n", kCalls,
                before.residentKb, after.residentKb, before.descriptors, after.descriptors);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "bulk") == 0) {
        return benchBulk(*qortv::connect<IQorTvApiChannelList>(), std::atoi(argv[2]));
    }
    if (argc == 3 && std::strcmp(argv[1], "million") == 0) {
        return benchMillion(*qortv::connect<IQorTvApiChannelList>(), std::atoi(argv[2]));
    }
    std::fprintf(stderr, "Usage: service_bench bulk SERVICES | million SERVICE_PID\n");
    return 2;
}
