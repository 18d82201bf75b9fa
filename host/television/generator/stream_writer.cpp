#include "television/generator/stream_writer.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "television/generator/guide_sections.h"
#include "television/generator/network_table.h"
#include "television/generator/packetizer.h"
#include "television/generator/service_tables.h"
#include "television/generator/time_sections.h"

namespace stream_generator {
namespace {

/** Files are filled up with null packets to about this size, in bytes. */
constexpr size_t kFileSize = 200'000;
/** How often the tables come in a file. */
constexpr unsigned kRepetitions = 3;
/** Earliest and latest time of a stream. The Modified Julian Date has sixteen bits, which end in
 * 2038; the guide and the next change of the offset have to fit as well. */
constexpr int64_t kFirstTime = 0;
constexpr int64_t kLastTime = 2'114'380'800;  // 2037-01-01

/** Keeps the first error message of libdvbpsi, as of a table that does not fit. */
void onMessage(dvbpsi_t* handle, dvbpsi_msg_level_t, const char* message) {
    auto* fault = static_cast<std::string*>(handle->p_sys);
    if (fault != nullptr && fault->empty()) *fault = message;
}

/** Returns false, with errno set, when the file could not be written whole. */
bool writeFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wbe");
    if (file == nullptr) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return (std::fclose(file) == 0) && written;
}

/** Throws std::invalid_argument when the plan cannot become a stream. */
void checkPlan(const MultiplexPlan& plan) {
    if (plan.time < kFirstTime || plan.time > kLastTime) {
        throw std::invalid_argument(
                fmt::format("{}: the time tables cannot tell {}", plan.fileName, plan.time));
    }
    if (plan.guideHours > kMostGuideHours) {
        throw std::invalid_argument(fmt::format("{}: a guide of {} hours, but {} are the most",
                                                plan.fileName, plan.guideHours, kMostGuideHours));
    }
    if (plan.services.size() > kMaxServicesPerMultiplex) {
        throw std::invalid_argument(fmt::format("{}: {} services, but a multiplex holds {} at most",
                                                plan.fileName, plan.services.size(),
                                                kMaxServicesPerMultiplex));
    }
    for (const ServicePlan& service : plan.services) {
        if (service.lcn > 999) {
            throw std::invalid_argument(fmt::format("{}: logical channel number {} is above 999",
                                                    service.name, service.lcn));
        }
    }
}

/** The PAT, SDT, NIT and PMTs of a plan. */
std::vector<Table> tablesOf(dvbpsi_t* handle, const MultiplexPlan& plan,
                            const std::vector<MultiplexPlan>& network) {
    std::vector<Table> tables;
    tables.push_back(patTable(handle, plan));
    if (plan.descriptions) tables.push_back(sdtTable(handle, plan));
    if (plan.networkTable) tables.push_back(nitTable(handle, plan, network));
    for (size_t i = 0; i < plan.services.size(); ++i) {
        tables.push_back(pmtTable(handle, plan.services[i], i));
    }
    return tables;
}

/** The sections of the time and event tables of a plan. */
std::vector<RawSection> guideOf(const MultiplexPlan& plan,
                                const std::vector<MultiplexPlan>& network) {
    std::vector<RawSection> guide = timeSections(plan.time);
    for (RawSection& section : eventSections(plan, network)) guide.push_back(std::move(section));
    return guide;
}

/** Appends all tables, and a packet of each elementary stream, once. */
void addRepetition(Packetizer& packets, const std::vector<Table>& tables,
                   const std::vector<RawSection>& guide, const MultiplexPlan& plan,
                   unsigned repetition) {
    for (const Table& table : tables) {
        for (const auto* s = table.sections.get(); s != nullptr; s = s->p_next) {
            packets.section(table.pid, s->p_data, s->i_length + 3u);
        }
        packets.stuffing(1);
    }
    for (const RawSection& section : guide) {
        packets.section(section.pid, section.bytes.data(), section.bytes.size());
    }
    for (size_t i = 0; i < plan.services.size(); ++i) {
        if (!isRadio(plan.services[i])) {
            packets.payload(servicePid(i, ServicePid::kVideo), 0xE0, repetition);
        }
        packets.payload(servicePid(i, ServicePid::kAudio), 0xC0, repetition);
    }
}

}  // namespace

std::vector<uint8_t> buildStream(const MultiplexPlan& plan,
                                 const std::vector<MultiplexPlan>& network) {
    checkPlan(plan);
    const std::unique_ptr<dvbpsi_t, Deleter<dvbpsi_delete>> handle(
            dvbpsi_new(&onMessage, DVBPSI_MSG_ERROR));
    if (handle == nullptr) throw std::bad_alloc();
    std::string fault;
    handle->p_sys = &fault;
    const std::vector<Table> tables = tablesOf(handle.get(), plan, network);
    const std::vector<RawSection> guide = guideOf(plan, network);
    if (!fault.empty()) throw std::invalid_argument(fmt::format("{}: {}", plan.fileName, fault));
    Packetizer packets;
    for (unsigned repetition = 1; repetition <= kRepetitions; ++repetition) {
        addRepetition(packets, tables, guide, plan, repetition);
        const size_t wanted = kFileSize / kRepetitions * repetition;
        if (packets.size() < wanted) {
            packets.stuffing(static_cast<unsigned>((wanted - packets.size()) / 188));
        }
    }
    return packets.take();
}

void writeStreams(const std::string& folder, const std::vector<MultiplexPlan>& plans) {
    if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) {
        throw std::runtime_error(
                fmt::format("cannot make the folder {}: {}", folder, std::strerror(errno)));
    }
    for (const MultiplexPlan& plan : plans) {
        const std::vector<uint8_t> stream = buildStream(plan, plans);
        const std::string path = folder + "/" + plan.fileName;
        // Written under another name first: a television that watches the folder must not see half
        // a file.
        const std::string draft = path + ".part";
        if (!writeFile(draft, stream) || std::rename(draft.c_str(), path.c_str()) != 0) {
            const std::string reason = std::strerror(errno);
            std::remove(draft.c_str());
            throw std::runtime_error(fmt::format("cannot write {}: {}", path, reason));
        }
    }
}

}  // namespace stream_generator
