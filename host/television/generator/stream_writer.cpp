#include "stream_writer.h"

#include <fmt/format.h>
#include <iconv.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "guide_sections.h"
#include "packetizer.h"
#include "psi_tables.h"

namespace stream_generator {
namespace {

constexpr uint16_t kPidNit = 0x10;
constexpr uint16_t kPidSdt = 0x11;
constexpr uint16_t kFirstServicePid = 0x100;
constexpr unsigned kPidsPerService = 4;  // PMT, video, audio (further tracks share it), subtitles
constexpr uint8_t kStreamAvc = 0x1B;
constexpr uint8_t kStreamHevc = 0x24;
constexpr uint8_t kStreamMpeg2Video = 0x02;
constexpr uint8_t kStreamMpeg1Audio = 0x03;
constexpr uint8_t kStreamPrivate = 0x06;
/** Files are filled up with null packets to about this size. */
constexpr size_t kFileSize = 200'000;
constexpr unsigned kRepetitions = 3;
/** The Modified Julian Date has sixteen bits, which end in 2038; the guide and the next change of
 * the offset have to fit as well. */
constexpr int64_t kFirstTime = 0;
constexpr int64_t kLastTime = 2'114'380'800;  // 2037-01-01
/** Services in one logical-channel descriptor (of four bytes each), and in one service-list
 * descriptor (of three). */
constexpr size_t kServicesPerDescriptor = 60;
/** A stream's entry has to fit into one section of the NIT: with more services it goes without
 * their list. */
constexpr size_t kMostListedServices = 120;
/** Entries of other streams in one section of the NIT. */
constexpr size_t kStreamsPerSection = 20;

using Descriptor = std::vector<uint8_t>;

void put16(Descriptor& out, unsigned value) {
    out.push_back(static_cast<uint8_t>(value >> 8));
    out.push_back(static_cast<uint8_t>(value));
}

void put32(Descriptor& out, uint32_t value) {
    put16(out, value >> 16);
    put16(out, value & 0xFFFF);
}

void putText(Descriptor& out, const std::string& text, bool withLength) {
    if (withLength) out.push_back(static_cast<uint8_t>(text.size()));
    out.insert(out.end(), text.begin(), text.end());
}

/** `value` as binary-coded decimal of `digits` digits. */
uint32_t bcd(uint32_t value, unsigned digits) {
    uint32_t result = 0;
    for (unsigned i = 0; i < digits; ++i, value /= 10) result |= (value % 10) << 4 * i;
    return result;
}

struct TableName {
    const char* charset;
    const char* selector;
    size_t selectorSize;
};

TableName tableName(TextTable table) {
    switch (table) {
        case TextTable::kIso6937:
            return {"ISO6937", "", 0};
        case TextTable::kIso8859_2:
            return {"ISO-8859-2", "\x10\x00\x02", 3};
        case TextTable::kIso8859_5:
            return {"ISO-8859-5", "\x01", 1};
        case TextTable::kIso8859_7:
            return {"ISO-8859-7", "\x03", 1};
        case TextTable::kIso8859_9:
            return {"ISO-8859-9", "\x05", 1};
        case TextTable::kUcs2:
            return {"UCS-2BE", "\x11", 1};
        case TextTable::kUtf8:
            return {"UTF-8", "\x15", 1};
    }
    throw std::invalid_argument("no such text table");
}

Descriptor serviceDescriptor(const ServicePlan& service) {
    Descriptor content{service.type};
    putText(content, encodeText(service.provider, TextTable::kIso6937), true);
    putText(content, encodeText(service.name, service.table), true);
    return content;
}

Descriptor deliveryDescriptor(const MultiplexPlan& plan) {
    Descriptor content;
    switch (plan.medium) {
        case Medium::kTerrestrial:
            put32(content, plan.frequencyKhz * 100);
            content.insert(content.end(),
                           {0x1F, 0x82, 0x58, 0xFF, 0xFF, 0xFF, 0xFF});  // 8 MHz, 64-QAM, FEC 3/4
            break;
        case Medium::kSatellite:
            put32(content, bcd(plan.frequencyKhz / 10, 8));
            put16(content, bcd(plan.orbitalPosition, 4));
            content.push_back(static_cast<uint8_t>((plan.east ? 0x80 : 0) |
                                                   (plan.vertical ? 0x20 : 0) | 0x04 |
                                                   0x02));  // DVB-S2, 8PSK
            put32(content, bcd(plan.symbolRate / 100, 7) << 4 | 0x3);
            break;
        case Medium::kCable:
            put32(content, bcd(plan.frequencyKhz * 10, 8));
            content.insert(content.end(), {0xFF, 0xF2, 0x05});  // Reed-Solomon, 256-QAM
            put32(content, bcd(plan.symbolRate / 100, 7) << 4 | 0xF);
            break;
    }
    return content;
}

uint8_t deliveryTag(Medium medium) {
    return medium == Medium::kTerrestrial ? 0x5A : medium == Medium::kSatellite ? 0x43 : 0x44;
}

Descriptor languageDescriptor(const std::string& code) {
    Descriptor content;
    putText(content, code.substr(0, 3), false);
    content.push_back(0);
    return content;
}

Descriptor subtitlingDescriptor(const std::vector<std::string>& codes) {
    Descriptor content;
    for (const std::string& code : codes) {
        putText(content, code.substr(0, 3), false);
        content.push_back(0x10);  // normal subtitles
        put16(content, 1);
        put16(content, 1);
    }
    return content;
}

/** Calls `add(tag, length, data)`, as libdvbpsi's functions want it. */
template <typename Add>
void addDescriptor(uint8_t tag, Descriptor content, const std::string& what, Add add) {
    if (content.size() > 255) {
        throw std::invalid_argument(fmt::format("{} is too long for its descriptor", what));
    }
    add(tag, static_cast<uint8_t>(content.size()), content.data());
}

/** Frees what libdvbpsi made with the function that it has for it. */
template <auto Delete>
struct Deleter {
    template <typename T>
    void operator()(T* object) const {
        Delete(object);
    }
};
using Sections = std::unique_ptr<dvbpsi_psi_section_t, Deleter<dvbpsi_DeletePSISections>>;

/** The sections of one PID. */
struct Table {
    uint16_t pid;
    Sections sections;
};

/** Bytes that a section of SDT or NIT has for its entries, with room for the largest header of a
 * table. */
constexpr size_t kSectionRoom = 700;

/** Puts sections that were made one by one behind each other, numbered as one table. */
Sections numbered(dvbpsi_t* handle, std::vector<Sections> parts) {
    const auto last = static_cast<uint8_t>(parts.size() - 1);
    Sections all;
    for (size_t i = parts.size(); i-- > 0;) {
        dvbpsi_psi_section_t* section = parts[i].get();
        section->i_number = static_cast<uint8_t>(i);
        section->i_last_number = last;
        dvbpsi_BuildPSISection(handle, section);
        section->p_next = all.release();
        all = std::move(parts[i]);
    }
    return all;
}

uint16_t servicePid(size_t index, unsigned which) {
    return static_cast<uint16_t>(kFirstServicePid + index * kPidsPerService + which);
}

Table patTable(dvbpsi_t* handle, const MultiplexPlan& plan) {
    const std::unique_ptr<dvbpsi_pat_t, Deleter<dvbpsi_pat_delete>> pat(
            dvbpsi_pat_new(plan.transportStreamId, 1, true));
    if (plan.networkTable) dvbpsi_pat_program_add(pat.get(), 0, kPidNit);
    for (size_t i = 0; i < plan.services.size(); ++i) {
        dvbpsi_pat_program_add(pat.get(), plan.services[i].serviceId, servicePid(i, 0));
    }
    return {0, Sections(dvbpsi_pat_sections_generate(handle, pat.get(), 200))};
}

void addSubtitles(dvbpsi_pmt_t& pmt, const ServicePlan& service, uint16_t pid) {
    dvbpsi_pmt_es_t* stream = dvbpsi_pmt_es_add(&pmt, kStreamPrivate, pid);
    addDescriptor(0x59, subtitlingDescriptor(service.subtitleLanguages), service.name,
                  [&](auto... a) { dvbpsi_pmt_es_descriptor_add(stream, a...); });
}

Table pmtTable(dvbpsi_t* handle, const ServicePlan& service, size_t index) {
    const bool radio = service.type == 0x02;
    const std::unique_ptr<dvbpsi_pmt_t, Deleter<dvbpsi_pmt_delete>> pmt(
            dvbpsi_pmt_new(service.serviceId, 1, true, servicePid(index, radio ? 2 : 1)));
    if (service.scrambled) {
        addDescriptor(0x09, {0x26, 0x00, 0xFF, 0xF0}, service.name,
                      [&](auto... a) { dvbpsi_pmt_descriptor_add(pmt.get(), a...); });
    }
    if (!radio) {
        const uint8_t video = service.type == 0x1F   ? kStreamHevc
                              : service.type == 0x19 ? kStreamAvc
                                                     : kStreamMpeg2Video;
        dvbpsi_pmt_es_add(pmt.get(), video, servicePid(index, 1));
    }
    bool first = true;
    for (const std::string& language : service.audioLanguages) {
        // The first track as MPEG audio, the others as AC-3.
        const uint8_t type = first ? kStreamMpeg1Audio : kStreamPrivate;
        dvbpsi_pmt_es_t* stream = dvbpsi_pmt_es_add(pmt.get(), type, servicePid(index, 2));
        const auto add = [&](auto... a) { dvbpsi_pmt_es_descriptor_add(stream, a...); };
        addDescriptor(0x0A, languageDescriptor(language), service.name, add);
        if (!first) addDescriptor(0x6A, {0x00}, service.name, add);
        first = false;
    }
    if (!service.subtitleLanguages.empty()) addSubtitles(*pmt, service, servicePid(index, 3));
    return {servicePid(index, 0), Sections(dvbpsi_pmt_sections_generate(handle, pmt.get()))};
}

/** libdvbpsi fills a section to its end and then drops descriptors, so each section is made on its
 * own. */
Table sdtTable(dvbpsi_t* handle, const MultiplexPlan& plan) {
    std::vector<Sections> parts;
    for (size_t i = 0; i < plan.services.size() || parts.empty();) {
        const std::unique_ptr<dvbpsi_sdt_t, Deleter<dvbpsi_sdt_delete>> sdt(
                dvbpsi_sdt_new(0x42, plan.transportStreamId, 1, true, plan.originalNetworkId));
        for (size_t used = 0; i < plan.services.size() && used < kSectionRoom; ++i) {
            const ServicePlan& service = plan.services[i];
            const Descriptor descriptor = serviceDescriptor(service);
            used += 7 + descriptor.size();
            const bool guide = plan.guideHours > 0 && service.guide != GuideKind::kNone;
            dvbpsi_sdt_service_t* entry = dvbpsi_sdt_service_add(
                    sdt.get(), service.serviceId, guide, guide, 4, service.scrambled);
            addDescriptor(0x48, descriptor, service.name,
                          [&](auto... a) { dvbpsi_sdt_service_descriptor_add(entry, a...); });
        }
        parts.emplace_back(dvbpsi_sdt_sections_generate(handle, sdt.get()));
    }
    return {kPidSdt, numbered(handle, std::move(parts))};
}

/** Adds one stream's entry; service lists and numbers only for the stream that the NIT comes in. */
void addNetworkStream(dvbpsi_nit_t& nit, const MultiplexPlan& plan, bool actual) {
    dvbpsi_nit_ts_t* stream =
            dvbpsi_nit_ts_add(&nit, plan.transportStreamId, plan.originalNetworkId);
    const auto add = [&](auto... a) { dvbpsi_nit_ts_descriptor_add(stream, a...); };
    addDescriptor(deliveryTag(plan.medium), deliveryDescriptor(plan), plan.networkName, add);
    if (!actual) return;
    for (size_t begin = 0; begin < plan.services.size(); begin += kServicesPerDescriptor) {
        const size_t end = std::min(plan.services.size(), begin + kServicesPerDescriptor);
        Descriptor types;
        Descriptor numbers;
        for (size_t i = begin; i < end; ++i) {
            const ServicePlan& service = plan.services[i];
            put16(types, service.serviceId);
            types.push_back(service.type);
            if (service.lcn == 0) continue;
            put16(numbers, service.serviceId);
            put16(numbers, (service.visible ? 0xFC00u : 0x7C00u) | (service.lcn & 0x03FFu));
        }
        if (plan.services.size() <= kMostListedServices) {
            addDescriptor(0x41, types, plan.networkName, add);
        }
        if (numbers.empty()) continue;
        addDescriptor(0x5F, {0x00, 0x00, 0x00, 0x28}, plan.networkName, add);
        addDescriptor(0x83, numbers, plan.networkName, add);
    }
}

Table nitTable(dvbpsi_t* handle, const MultiplexPlan& plan,
               const std::vector<MultiplexPlan>& network) {
    std::vector<const MultiplexPlan*> streams = {&plan};
    for (const MultiplexPlan& other : network) {
        if (other.networkId == plan.networkId &&
            other.transportStreamId != plan.transportStreamId) {
            streams.push_back(&other);
        }
    }
    Descriptor name;
    putText(name, encodeText(plan.networkName, TextTable::kIso6937), false);
    std::vector<Sections> parts;
    for (size_t i = 0; i < streams.size();) {
        const std::unique_ptr<dvbpsi_nit_t, Deleter<dvbpsi_nit_delete>> nit(
                dvbpsi_nit_new(0x40, plan.networkId, plan.networkId, 1, true));
        addDescriptor(0x40, name, plan.networkName,
                      [&](auto... a) { dvbpsi_nit_descriptor_add(nit.get(), a...); });
        // The stream with its service lists has a section to itself.
        const size_t end = i == 0 ? 1 : std::min(streams.size(), i + kStreamsPerSection);
        for (; i < end; ++i) addNetworkStream(*nit, *streams[i], i == 0);
        parts.emplace_back(dvbpsi_nit_sections_generate(handle, nit.get(), 0x40));
    }
    return {kPidNit, numbered(handle, std::move(parts))};
}

/** Keeps libdvbpsi's first complaint: tables that do not fit. */
void onMessage(dvbpsi_t* handle, dvbpsi_msg_level_t, const char* message) {
    auto* fault = static_cast<std::string*>(handle->p_sys);
    if (fault != nullptr && fault->empty()) *fault = message;
}

/** False, with errno set, when the file could not be written whole. */
bool writeFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wbe");
    if (file == nullptr) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return (std::fclose(file) == 0) && written;
}

void check(const MultiplexPlan& plan) {
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

}  // namespace

std::string encodeText(const std::string& utf8, TextTable table) {
    const TableName name = tableName(table);
    std::string result(name.selector, name.selectorSize);
    const iconv_t converter = iconv_open(name.charset, "UTF-8");
    if (reinterpret_cast<uintptr_t>(converter) == ~uintptr_t{0}) {
        throw std::invalid_argument(fmt::format("no character table {}", name.charset));
    }
    std::string from = utf8;
    if (table == TextTable::kIso6937) {
        // The broadcast table has the euro sign where the C library's has nothing.
        for (size_t at; (at = from.find("\u20AC")) != std::string::npos;)
            from.replace(at, 3, "\x01");
    }
    std::vector<char> buffer(utf8.size() * 4 + 4);
    char* in = from.data();
    size_t left = from.size();
    char* out = buffer.data();
    size_t room = buffer.size();
    const bool bad = iconv(converter, &in, &left, &out, &room) == static_cast<size_t>(-1) ||
                     iconv(converter, nullptr, nullptr, &out, &room) == static_cast<size_t>(-1);
    iconv_close(converter);
    if (bad) {
        throw std::invalid_argument(
                fmt::format("\"{}\" cannot be written in {}", utf8, name.charset));
    }
    result.append(buffer.data(), out);
    if (table == TextTable::kIso6937) std::replace(result.begin(), result.end(), '\x01', '\xA4');
    return result;
}

std::vector<uint8_t> buildStream(const MultiplexPlan& plan,
                                 const std::vector<MultiplexPlan>& network) {
    check(plan);
    const std::unique_ptr<dvbpsi_t, Deleter<dvbpsi_delete>> handle(
            dvbpsi_new(&onMessage, DVBPSI_MSG_ERROR));
    if (handle == nullptr) throw std::bad_alloc();
    std::string fault;
    handle->p_sys = &fault;
    std::vector<Table> tables;
    tables.push_back(patTable(handle.get(), plan));
    if (plan.descriptions) tables.push_back(sdtTable(handle.get(), plan));
    if (plan.networkTable) tables.push_back(nitTable(handle.get(), plan, network));
    for (size_t i = 0; i < plan.services.size(); ++i) {
        tables.push_back(pmtTable(handle.get(), plan.services[i], i));
    }
    std::vector<RawSection> guide = timeSections(plan.time);
    for (RawSection& section : eventSections(plan, network)) guide.push_back(std::move(section));
    if (!fault.empty()) throw std::invalid_argument(fmt::format("{}: {}", plan.fileName, fault));
    Packetizer packets;
    for (unsigned repetition = 1; repetition <= kRepetitions; ++repetition) {
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
            if (plan.services[i].type != 0x02) packets.payload(servicePid(i, 1), 0xE0, repetition);
            packets.payload(servicePid(i, 2), 0xC0, repetition);
        }
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
        // Written beside and moved: a television that watches the folder never sees half a file.
        const std::string draft = path + ".part";
        if (!writeFile(draft, stream) || std::rename(draft.c_str(), path.c_str()) != 0) {
            const std::string reason = std::strerror(errno);
            std::remove(draft.c_str());
            throw std::runtime_error(fmt::format("cannot write {}: {}", path, reason));
        }
    }
}

}  // namespace stream_generator
