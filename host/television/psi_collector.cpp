#include "psi_collector.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "event_tables.h"
#include "packet_reader.h"
#include "program_map.h"
#include "psi_tables.h"
#include "section_guard.h"
#include "service_information.h"
#include "time_tables.h"

namespace television {
namespace {

constexpr uint16_t kPidPat = 0x0000;
constexpr uint16_t kPidNit = 0x0010;
constexpr uint16_t kPidSdt = 0x0011;
constexpr uint16_t kPidEit = 0x0012;
constexpr uint16_t kPidTdt = 0x0014;
/** These decoders stay whatever the PAT says. */
constexpr uint16_t kFixedPids[] = {kPidPat, kPidSdt, kPidEit, kPidTdt};
constexpr size_t kPidCount = 0x2000;
/** Programs read of a stream: more than any broadcaster sends, few enough that a hostile PAT costs
 * little. */
constexpr size_t kMaxPrograms = 1024;

/** Whether a message of libdvbpsi tells of a section that it threw away; the others tell of
 * packets, which are checked here. */
bool tellsOfSection(const char* message) {
    return std::strstr(message, "CRC") != nullptr || std::strstr(message, "too long") != nullptr ||
           std::strstr(message, "invalid section") != nullptr ||
           std::strstr(message, "failed decoding") != nullptr;
}

bool isFixed(uint16_t pid) {
    return std::find(std::begin(kFixedPids), std::end(kFixedPids), pid) != std::end(kFixedPids);
}

/** A table handed over by libdvbpsi, freed with its own function. */
template <typename T, void (*Delete)(T*)>
struct TableDeleter {
    void operator()(T* table) const { Delete(table); }
};
using PatTable = std::unique_ptr<dvbpsi_pat_t, TableDeleter<dvbpsi_pat_t, dvbpsi_pat_delete>>;
using PmtTable = std::unique_ptr<dvbpsi_pmt_t, TableDeleter<dvbpsi_pmt_t, dvbpsi_pmt_delete>>;
using SdtTable = std::unique_ptr<dvbpsi_sdt_t, TableDeleter<dvbpsi_sdt_t, dvbpsi_sdt_delete>>;
using NitTable = std::unique_ptr<dvbpsi_nit_t, TableDeleter<dvbpsi_nit_t, dvbpsi_nit_delete>>;

/** One libdvbpsi decoder of one PID, with the length check in front of its table decoder. */
class Decoder {
  public:
    using Detach = void (*)(dvbpsi_t*);
    /** Takes one whole section, of which only the checksum was looked at; false when it is damaged.
     */
    using Sink = std::function<bool(const dvbpsi_psi_section_t& section, ByteView payload)>;

    Decoder(uint32_t& damagedSections, Detach detach)
        : mDamaged(damagedSections),
          mDetach(detach),
          mHandle(dvbpsi_new(&onMessage, DVBPSI_MSG_ERROR)) {
        if (mHandle == nullptr) throw std::bad_alloc();
        mHandle->p_sys = this;
    }
    ~Decoder() {
        if (mHandle->p_decoder != nullptr) mDetach(mHandle);
        dvbpsi_delete(mHandle);
    }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    dvbpsi_t* handle() { return mHandle; }

    /** Puts the length check in front of the decoder that was just attached. */
    void guard() {
        if (mHandle->p_decoder == nullptr) throw std::bad_alloc();
        mGather = std::exchange(mHandle->p_decoder->pf_gather, &onSection);
    }

    /** Hands every section to `sink` as it comes, in place of a table decoder. */
    void tap(Sink sink) {
        constexpr int kLongestSection = 4096;
        mSink = std::move(sink);
        mHandle->p_decoder = static_cast<dvbpsi_decoder_t*>(
                dvbpsi_decoder_new(&onSection, kLongestSection, true, sizeof(dvbpsi_decoder_t)));
        if (mHandle->p_decoder == nullptr) throw std::bad_alloc();
    }
    static void untap(dvbpsi_t* handle) {
        dvbpsi_decoder_delete(std::exchange(handle->p_decoder, nullptr));
    }

    void push(const uint8_t* packet) {
        // The function's prototype lacks a const; it only reads.
        dvbpsi_packet_push(mHandle, const_cast<uint8_t*>(packet));
    }

  private:
    static Decoder& of(dvbpsi_t* handle) { return *static_cast<Decoder*>(handle->p_sys); }

    static void onMessage(dvbpsi_t* handle, dvbpsi_msg_level_t, const char* message) {
        if (handle->p_sys != nullptr && tellsOfSection(message)) ++of(handle).mDamaged;
    }

    static void onSection(dvbpsi_t* handle, dvbpsi_psi_section_t* section) {
        Decoder& self = of(handle);
        const uint8_t* begin = section->p_payload_start;
        const uint8_t* end = section->p_payload_end;
        const size_t size = begin < end ? static_cast<size_t>(end - begin) : 0;
        if (self.mSink) {
            if (begin > end || !self.mSink(*section, ByteView(begin, size))) ++self.mDamaged;
            dvbpsi_DeletePSISections(section);
        } else if (section->b_syntax_indicator && begin <= end &&
                   sectionIsSound(section->i_table_id, ByteView(begin, size))) {
            self.mGather(handle, section);
        } else {
            ++self.mDamaged;
            dvbpsi_DeletePSISections(section);
        }
    }

    uint32_t& mDamaged;
    const Detach mDetach;
    dvbpsi_t* const mHandle;
    dvbpsi_callback_gather_t mGather = nullptr;
    Sink mSink;  ///< in place of mGather, where there is one
};

}  // namespace

class PsiCollector::Decoders {
  public:
    Decoders() {
        Decoder& pat = add(kPidPat, dvbpsi_pat_detach);
        dvbpsi_pat_attach(pat.handle(), &onPat, this);
        pat.guard();
        addSubtables(kPidSdt);
        add(kPidEit, Decoder::untap).tap([this](const auto& section, ByteView payload) {
            return takeEvents(section, payload);
        });
        add(kPidTdt, Decoder::untap).tap([this](const auto& section, ByteView payload) {
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
        const uint16_t pid = static_cast<uint16_t>((packet[1] & 0x1F) << 8 | packet[2]);
        const bool adaptation = (packet[3] & 0x20) != 0;
        const bool payload = (packet[3] & 0x10) != 0;
        if (pid == kNoPid || !payload) return;
        const size_t begin = adaptation ? 5u + packet[4] : 4u;
        if (begin >= kPacketSize) {
            ++mDamagedPackets;
            return;
        }
        const bool announced = adaptation && packet[4] > 0 && (packet[5] & 0x80) != 0;
        noteContinuity(pid, packet[3] & 0x0F, announced);
        const auto decoders = mDecoders.find(pid);
        if (decoders == mDecoders.end() || (packet[3] & 0xC0) != 0) return;
        const bool start = (packet[1] & 0x40) != 0;
        if (start && begin + 1u + packet[begin] > kPacketSize) {  // pointer beyond the packet
            ++mDamagedPackets;
            return;
        }
        for (const auto& decoder : decoders->second) decoder->push(packet);
        applyPat();
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
    static constexpr uint8_t kNoCounter = 0xFF;

    Decoder& add(uint16_t pid, Decoder::Detach detach) {
        auto& decoders = mDecoders[pid];
        decoders.push_back(std::make_unique<Decoder>(mDamagedSections, detach));
        return *decoders.back();
    }

    /** Reads the subtables of SDT and NIT that come on `pid`. */
    void addSubtables(uint16_t pid) {
        Decoder& decoder = add(pid, dvbpsi_DetachDemux);
        dvbpsi_AttachDemux(decoder.handle(), &onSubtable, this);
        decoder.guard();
    }

    void noteContinuity(uint16_t pid, uint8_t counter, bool announced) {
        uint8_t& last = mContinuity[pid];
        // The same counter twice is the same packet twice, which is allowed.
        if (last != kNoCounter && !announced && counter != last && counter != ((last + 1) & 0x0F)) {
            ++mDamagedPackets;
        }
        last = counter;
    }

    /** Takes over a PAT that arrived; not from within its decoder, since this adds and removes
     * decoders. */
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
            Decoder& decoder = add(pid, dvbpsi_pmt_detach);
            dvbpsi_pmt_attach(decoder.handle(), program, &onPmt, this);
            decoder.guard();
        }
    }

    /** Stuffing and private tables on the same PID are no damage. */
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

    std::map<uint16_t, std::vector<std::unique_ptr<Decoder>>> mDecoders;
    std::array<uint8_t, kPidCount> mContinuity;
    PatTable mPat;  ///< arrived and not yet taken over
    bool mPatSeen = false;
    bool mSdtSeen = false;
    bool mNitSeen = false;
    uint16_t mTransportStreamId = 0;
    std::map<uint16_t, uint16_t> mPrograms;  ///< program number to the PID of its PMT
    std::map<uint16_t, ProgramMap> mProgramMaps;
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
