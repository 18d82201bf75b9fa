#include "television/generator/service_tables.h"

#include <memory>
#include <utility>

#include "television/generator/text_encoder.h"

namespace stream_generator {
namespace {

constexpr uint16_t kPidSdt = 0x11;
constexpr uint8_t kStreamAvc = 0x1B;
constexpr uint8_t kStreamHevc = 0x24;
constexpr uint8_t kStreamMpeg2Video = 0x02;
constexpr uint8_t kStreamMpeg1Audio = 0x03;
constexpr uint8_t kStreamPrivate = 0x06;
/** Bytes of entries after which a section of the SDT is full: the last entry may exceed them. */
constexpr size_t kSectionRoom = 700;

void putTextWithLength(Bytes& out, const std::string& text) {
    out.push_back(static_cast<uint8_t>(text.size()));
    putText(out, text);
}

Bytes serviceDescriptor(const ServicePlan& service) {
    Bytes content{service.type};
    putTextWithLength(content, encodeText(service.provider, TextTable::kIso6937));
    putTextWithLength(content, encodeText(service.name, service.table));
    return content;
}

Bytes languageDescriptor(const std::string& code) {
    Bytes content;
    putCode(content, code);
    content.push_back(0);
    return content;
}

Bytes subtitlingDescriptor(const std::vector<std::string>& codes) {
    Bytes content;
    for (const std::string& code : codes) {
        putCode(content, code);
        content.push_back(0x10);  // normal subtitles
        put16(content, 1);
        put16(content, 1);
    }
    return content;
}

/** Adds the audio tracks: the first as MPEG audio, the others as AC-3. */
void addAudio(dvbpsi_pmt_t& pmt, const ServicePlan& service, uint16_t pid) {
    bool first = true;
    for (const std::string& language : service.audioLanguages) {
        const uint8_t type = first ? kStreamMpeg1Audio : kStreamPrivate;
        dvbpsi_pmt_es_t* stream = dvbpsi_pmt_es_add(&pmt, type, pid);
        const auto add = [&](auto... a) { dvbpsi_pmt_es_descriptor_add(stream, a...); };
        addDescriptor(0x0A, languageDescriptor(language), service.name, add);
        if (!first) addDescriptor(0x6A, {0x00}, service.name, add);
        first = false;
    }
}

void addSubtitles(dvbpsi_pmt_t& pmt, const ServicePlan& service, uint16_t pid) {
    dvbpsi_pmt_es_t* stream = dvbpsi_pmt_es_add(&pmt, kStreamPrivate, pid);
    addDescriptor(0x59, subtitlingDescriptor(service.subtitleLanguages), service.name,
                  [&](auto... a) { dvbpsi_pmt_es_descriptor_add(stream, a...); });
}

}  // namespace

Table patTable(dvbpsi_t* handle, const MultiplexPlan& plan) {
    const std::unique_ptr<dvbpsi_pat_t, Deleter<dvbpsi_pat_delete>> pat(
            dvbpsi_pat_new(plan.transportStreamId, 1, true));
    if (plan.networkTable) dvbpsi_pat_program_add(pat.get(), 0, kPidNit);
    for (size_t i = 0; i < plan.services.size(); ++i) {
        dvbpsi_pat_program_add(pat.get(), plan.services[i].serviceId,
                               servicePid(i, ServicePid::kProgramMap));
    }
    return {0, Sections(dvbpsi_pat_sections_generate(handle, pat.get(), 200))};
}

Table pmtTable(dvbpsi_t* handle, const ServicePlan& service, size_t index) {
    const bool radio = isRadio(service);
    const std::unique_ptr<dvbpsi_pmt_t, Deleter<dvbpsi_pmt_delete>> pmt(
            dvbpsi_pmt_new(service.serviceId, 1, true,
                           servicePid(index, radio ? ServicePid::kAudio : ServicePid::kVideo)));
    if (service.scrambled) {
        addDescriptor(0x09, {0x26, 0x00, 0xFF, 0xF0}, service.name,
                      [&](auto... a) { dvbpsi_pmt_descriptor_add(pmt.get(), a...); });
    }
    if (!radio) {
        const uint8_t video = service.type == 0x1F   ? kStreamHevc
                              : service.type == 0x19 ? kStreamAvc
                                                     : kStreamMpeg2Video;
        dvbpsi_pmt_es_add(pmt.get(), video, servicePid(index, ServicePid::kVideo));
    }
    addAudio(*pmt, service, servicePid(index, ServicePid::kAudio));
    if (!service.subtitleLanguages.empty())
        addSubtitles(*pmt, service, servicePid(index, ServicePid::kSubtitles));
    return {servicePid(index, ServicePid::kProgramMap),
            Sections(dvbpsi_pmt_sections_generate(handle, pmt.get()))};
}

Table sdtTable(dvbpsi_t* handle, const MultiplexPlan& plan) {
    // Each section is made on its own: libdvbpsi fills a section to its end and then drops
    // descriptors.
    std::vector<Sections> parts;
    for (size_t i = 0; i < plan.services.size() || parts.empty();) {
        const std::unique_ptr<dvbpsi_sdt_t, Deleter<dvbpsi_sdt_delete>> sdt(
                dvbpsi_sdt_new(0x42, plan.transportStreamId, 1, true, plan.originalNetworkId));
        for (size_t used = 0; i < plan.services.size() && used < kSectionRoom; ++i) {
            const ServicePlan& service = plan.services[i];
            const Bytes descriptor = serviceDescriptor(service);
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

}  // namespace stream_generator
