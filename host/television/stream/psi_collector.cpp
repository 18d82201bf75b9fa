#include "television/stream/psi_collector.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "television/base/contains.h"
#include "television/stream/event_tables.h"
#include "television/stream/packet_reader.h"
#include "television/stream/pid_decoder.h"
#include "television/stream/program_map.h"
#include "television/stream/psi_tables.h"
#include "television/stream/section_guard.h"
#include "television/stream/service_information.h"
#include "television/stream/time_tables.h"

namespace television {
namespace {

constexpr uint16_t kPidPat = 0x0000;
constexpr uint16_t kPidNit = 0x0010;
constexpr uint16_t kPidSdt = 0x0011;
constexpr uint16_t kPidEit = 0x0012;
constexpr uint16_t kPidTdt = 0x0014;
/** PIDs whose decoders stay whatever the PAT says. */
constexpr uint16_t kFixedPids[] = {kPidPat, kPidSdt, kPidEit, kPidTdt};
constexpr size_t kPidCount = 0x2000;
/** Programs that are read of a stream: more than any broadcaster sends, few enough that a hostile
 * PAT costs little. */
constexpr size_t kMaxPrograms = 1024;

bool isFixed(uint16_t pid) {
    return contains(kFixedPids, pid);
}

}  // namespace

class PsiCollector::Decoders {
  public:
    Decoders() {
        PidDecoder& pat = add(kPidPat, dvbpsi_pat_detach);
        dvbpsi_pat_attach(pat.handle(), &onPat, this);
        pat.guard();
        addSubtables(kPidSdt);
        add(kPidEit, PidDecoder::untap).tap([this](const auto& section, ByteView payload) {
            return takeEvents(section, payload);
        });
        add(kPidTdt, PidDecoder::untap).tap([this](const auto& section, ByteView payload) {
            return takeTime(section, payload);
        });
        mContinuity.fill(kNoCounter);
    }

    void push(const uint8_t* packet) {
        ++mPackets;
        if ((packet[1] & 0x80) != 0) {  // the receiver could not correct it
            ++mDamagedPackets;
            return;
        }
        const auto pid = static_cast<uint16_t>((packet[1] & 0x1F) << 8 | packet[2]);
        const bool hasAdaptation = (packet[3] & 0x20) != 0;
        const bool hasPayload = (packet[3] & 0x10) != 0;
        if (pid == kNoPid || !hasPayload) return;
        const size_t payloadAt = hasAdaptation ? 5u + packet[4] : 4u;
        if (payloadAt >= kPacketSize) {
            ++mDamagedPackets;
            return;
        }
        const bool announcesBreak = hasAdaptation && packet[4] > 0 && (packet[5] & 0x80) != 0;
        checkContinuity(pid, packet[3] & 0x0F, announcesBreak);
        decode(pid, packet, payloadAt);
    }

    bool complete() const {
        if (!mPatSeen || !mSdtSeen || !mNitSeen) return false;
        for (const auto& [program, pid] : mPrograms) {
            if (mProgramMaps.find(program) == mProgramMaps.end()) return false;
        }
        return true;
    }

    bool guideComplete() const {
        if (!mTime.hasTime() || !mSdtSeen) return false;
        return std::all_of(
                mDescriptions.services.begin(), mDescriptions.services.end(),
                [this](const auto& entry) {
                    const auto& [id, described] = entry;
                    return (!described.presentFollowing || mEvents.hasPresentFollowing(id)) &&
                           (!described.schedule || mEvents.hasSchedule(id));
                });
    }

    ParsedMultiplex multiplex() const {
        ParsedMultiplex result;
        result.time = mTime;
        std::vector<ServiceEvents> events = mEvents.services();
        if (!events.empty()) {
            result.events = std::make_shared<const std::vector<ServiceEvents>>(std::move(events));
        }
        result.transportStreamId = mPatSeen ? mTransportStreamId : mDescriptions.transportStreamId;
        result.originalNetworkId = mDescriptions.originalNetworkId;
        result.packets = mPackets;
        result.damagedPackets = mDamagedPackets;
        result.damagedSections = mDamagedSections;
        if (mPatSeen) {
            for (const auto& [program, pid] : mPrograms) {
                result.services.push_back(service(program, pid));
            }
        } else {
            for (const auto& entry : mDescriptions.services) {
                result.services.push_back(service(entry.first, kNoPid));
            }
        }
        applyNetwork(mNetwork, result);
        return result;
    }

  private:
    static constexpr uint8_t kNoCounter = 0xFF;  ///< no packet of the PID has come

    PidDecoder& add(uint16_t pid, PidDecoder::Detach detach) {
        auto& decoders = mDecoders[pid];
        decoders.push_back(std::make_unique<PidDecoder>(mDamagedSections, detach));
        return *decoders.back();
    }

    /** Reads the subtables of SDT and NIT that come on `pid`. */
    void addSubtables(uint16_t pid) {
        PidDecoder& decoder = add(pid, dvbpsi_DetachDemux);
        dvbpsi_AttachDemux(decoder.handle(), &onSubtable, this);
        decoder.guard();
    }

    /** Counts a packet as damaged when its continuity counter does not follow that of the PID's
     * last packet, unless the packet itself announces the break. */
    void checkContinuity(uint16_t pid, uint8_t counter, bool announcesBreak) {
        uint8_t& last = mContinuity[pid];
        // The same counter twice is the same packet twice, which is allowed.
        if (last != kNoCounter && !announcesBreak && counter != last &&
            counter != ((last + 1) & 0x0F)) {
            ++mDamagedPackets;
        }
        last = counter;
    }

    /** Hands a packet to the decoders of its PID. `payloadAt`: offset of its payload. */
    void decode(uint16_t pid, const uint8_t* packet, size_t payloadAt) {
        const auto decoders = mDecoders.find(pid);
        const bool isScrambled = (packet[3] & 0xC0) != 0;
        if (decoders == mDecoders.end() || isScrambled) return;
        const bool startsSection = (packet[1] & 0x40) != 0;
        if (startsSection && payloadAt + 1u + packet[payloadAt] > kPacketSize) {
            ++mDamagedPackets;  // the pointer to the section leads beyond the packet
            return;
        }
        for (const auto& decoder : decoders->second) decoder->push(packet);
        applyPat();
    }

    /** Takes over the PAT that has arrived, if any. Not to be called from within a decoder, since
     * this adds and removes decoders. */
    void applyPat() {
        if (mPat == nullptr) return;
        const PatTable pat = std::move(mPat);
        mPatSeen = true;
        mTransportStreamId = pat->i_ts_id;
        std::map<uint16_t, uint16_t> programs;
        uint16_t nitPid = kPidNit;
        for (const auto* p = pat->p_first_program; p != nullptr; p = p->p_next) {
            const uint16_t pid = p->i_pid & 0x1FFF;
            if (p->i_number == 0) {
                nitPid = pid;
            } else if (programs.size() < kMaxPrograms) {
                programs.emplace(p->i_number, pid);
            }
        }
        for (auto it = mDecoders.begin(); it != mDecoders.end();) {
            it = isFixed(it->first) ? std::next(it) : mDecoders.erase(it);
        }
        mPrograms = std::move(programs);
        mProgramMaps.clear();
        if (!isFixed(nitPid)) addSubtables(nitPid);
        for (const auto& [program, pid] : mPrograms) {
            if (isFixed(pid) || pid == kNoPid) continue;
            PidDecoder& decoder = add(pid, dvbpsi_pmt_detach);
            dvbpsi_pmt_attach(decoder.handle(), program, &onPmt, this);
            decoder.guard();
        }
    }

    /** Takes a section of the EIT's PID. Returns false when it is damaged; stuffing and private
     * tables on that PID are not. */
    bool takeEvents(const dvbpsi_psi_section_t& section, ByteView payload) {
        if (!isEventTable(section.i_table_id)) return true;
        if (!section.b_syntax_indicator || !sectionIsSound(section.i_table_id, payload)) {
            return false;
        }
        if (section.b_current_next) {
            mEvents.take({section.i_table_id, section.i_extension, section.i_version,
                          section.i_number, section.i_last_number},
                         payload);
        }
        return true;
    }

    /** Takes a section of the PID of TDT and TOT. Returns false when it is damaged. */
    bool takeTime(const dvbpsi_psi_section_t& section, ByteView payload) {
        const uint8_t id = section.i_table_id;
        if (id != kTableTdt && id != kTableTot) return true;
        if (section.b_syntax_indicator || !sectionIsSound(id, payload)) return false;
        return id == kTableTdt ? readTimeTable(payload, mTime) : readOffsetTable(payload, mTime);
    }

    ParsedService service(uint16_t program, uint16_t pid) const {
        ParsedService result;
        result.serviceId = program;
        result.pmtPid = pid;
        const auto map = mProgramMaps.find(program);
        if (map != mProgramMaps.end()) applyProgramMap(map->second, result);
        describe(mDescriptions, result);
        return result;
    }

    static void onPat(void* self, dvbpsi_pat_t* table) {
        PatTable pat(table);
        if (pat->b_current_next) static_cast<Decoders*>(self)->mPat = std::move(pat);
    }

    static void onPmt(void* self, dvbpsi_pmt_t* table) {
        const PmtTable pmt(table);
        if (!pmt->b_current_next) return;
        static_cast<Decoders*>(self)->mProgramMaps[pmt->i_program_number] = readProgramMap(*pmt);
    }

    static void onSubtable(dvbpsi_t* handle, uint8_t tableId, uint16_t extension, void* self) {
        if (tableId == kTableSdtActual) {
            dvbpsi_sdt_attach(handle, tableId, extension, &onSdt, self);
        } else if (tableId == kTableNitActual) {
            dvbpsi_nit_attach(handle, tableId, extension, &onNit, self);
        }
    }

    static void onSdt(void* self, dvbpsi_sdt_t* table) {
        const SdtTable sdt(table);
        if (!sdt->b_current_next) return;
        auto& decoders = *static_cast<Decoders*>(self);
        decoders.mDescriptions = readServiceDescriptions(*sdt);
        decoders.mSdtSeen = true;
    }

    static void onNit(void* self, dvbpsi_nit_t* table) {
        const NitTable nit(table);
        if (!nit->b_current_next) return;
        auto& decoders = *static_cast<Decoders*>(self);
        decoders.mNetwork = readNetwork(*nit);
        decoders.mNitSeen = true;
    }

    std::map<uint16_t, std::vector<std::unique_ptr<PidDecoder>>> mDecoders;  ///< by PID
    std::array<uint8_t, kPidCount> mContinuity;  ///< last continuity counter by PID, or kNoCounter
    PatTable mPat;                               ///< arrived and not yet taken over
    bool mPatSeen = false;
    bool mSdtSeen = false;
    bool mNitSeen = false;
    uint16_t mTransportStreamId = 0;
    std::map<uint16_t, uint16_t> mPrograms;       ///< program number to the PID of its PMT
    std::map<uint16_t, ProgramMap> mProgramMaps;  ///< by program number
    ServiceDescriptions mDescriptions;
    Network mNetwork;
    EventTables mEvents;
    BroadcastTime mTime;
    uint32_t mPackets = 0;
    uint32_t mDamagedPackets = 0;
    uint32_t mDamagedSections = 0;
};

PsiCollector::PsiCollector() : mDecoders(std::make_unique<Decoders>()) {}
PsiCollector::~PsiCollector() = default;
void PsiCollector::push(const uint8_t* packet) {
    mDecoders->push(packet);
}
bool PsiCollector::complete() const {
    return mDecoders->complete();
}
bool PsiCollector::guideComplete() const {
    return mDecoders->guideComplete();
}
ParsedMultiplex PsiCollector::multiplex() const {
    return mDecoders->multiplex();
}

}  // namespace television
