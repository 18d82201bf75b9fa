/** Filters one service out of the packets of a multiplex, as a transport stream of its own. */
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <functional>
#include <vector>

#include "television/stream/psi_sections.h"

namespace television {

/**
 * Passes on the packets of a service: its PMT, its PCR, and the elementary streams that the current
 * PMT names. Each PAT of the multiplex is replaced by one with this service alone, every tenth of
 * them followed by the tables that describe the service.
 *
 * When the stream begins anew (`restart`), the continuity counters continue; faults of the counters
 * within the stream are kept. Time stamps are not changed: they jump where the stream begins anew,
 * and the first packet with a PCR announces that. One thread at a time.
 */
class ServiceFilter {
  public:
    /** Sections to write on a PID. */
    struct Table {
        uint16_t pid = 0;
        std::vector<std::vector<uint8_t>> sections;
    };
    /** Returns the tables that describe the service at the time of the call. */
    using Describe = std::function<std::vector<Table>()>;

    /** `program`: program number of the service. `describe` is called by `push`. */
    ServiceFilter(uint16_t transportStreamId, uint16_t program, Describe describe);

    /** Takes a packet of the multiplex (188 bytes); appends to `out` the packets to record for it.
     */
    void push(const uint8_t* packet, std::vector<uint8_t>& out);
    /** The stream begins anew: the next packet does not follow the last one. */
    void restart();
    /** How many packets of the service's streams have been passed on so far. */
    uint64_t passed() const { return mPassed; }

  private:
    static constexpr size_t kPidCount = 0x2000;

    /** The continuity counter of one PID. */
    struct Counter {
        uint8_t last = 0;     ///< as it was written last
        uint8_t offset = 0;   ///< to add to the counter that is received
        bool joined = false;  ///< `offset` is that of the stream since its last restart
    };

    void pass(uint16_t pid, const uint8_t* packet, std::vector<uint8_t>& out);
    void writeTables(std::vector<uint8_t>& out);
    void takePat(ByteView section);
    void takePmt(ByteView section);

    const uint16_t mTransportStreamId;
    const uint16_t mProgram;
    const Describe mDescribe;
    SectionGatherer mPat;
    SectionGatherer mPmt;
    uint16_t mPmtPid;              ///< kNoPid until a PAT has come
    uint16_t mPcrPid;              ///< kNoPid until a PMT has come
    std::bitset<kPidCount> mPass;  ///< PIDs of the service's streams and of its PCR
    std::array<Counter, kPidCount> mCounters = {};
    std::array<uint8_t, 0x20> mTableCounters = {};  ///< by PID, of the tables written here
    uint64_t mPassed = 0;
    uint32_t mPats = 0;    ///< PATs written so far
    bool mJumped = false;  ///< a jump of the PCR has to be announced
};

}  // namespace television
