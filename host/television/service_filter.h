/** Takes one service out of the packets of a multiplex, as a transport stream of its own. */
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <functional>
#include <vector>

#include "psi_sections.h"

namespace television {

/**
 * Passes the packets of a service on: its PMT, PCR and elementary streams as the PMT names them
 * just then. In the place of each PAT of the multiplex comes one with this service alone, and from
 * time to time the tables that describe it. Continuity counters go on rightly when the stream
 * begins anew; what is wrong with them within the stream stays wrong. Time stamps stay as they are:
 * where the stream begins anew they jump, which the first packet with a PCR announces. One thread
 * at a time.
 */
class ServiceFilter {
  public:
    /** A PID and the sections that come on it. */
    struct Table {
        uint16_t pid = 0;
        std::vector<std::vector<uint8_t>> sections;
    };
    /** Answers the tables that describe the service, whenever they are due. */
    using Describe = std::function<std::vector<Table>()>;

    ServiceFilter(uint16_t transportStreamId, uint16_t program, Describe describe);

    /** Takes a packet; appends to `out` what it gives. */
    void push(const uint8_t* packet, std::vector<uint8_t>& out);
    /** The stream begins anew: what comes next does not follow what came last. */
    void restart();
    /** Packets of the service's streams passed on so far. */
    uint64_t passed() const { return mPassed; }

  private:
    static constexpr size_t kPidCount = 0x2000;

    /** The continuity counters of one PID. */
    struct Counter {
        uint8_t last = 0;    ///< written last
        uint8_t offset = 0;  ///< from what came in to what is written
        bool joined = false;
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
    uint16_t mPmtPid;              ///< kNoPid until a PAT came
    uint16_t mPcrPid;              ///< kNoPid until a PMT came
    std::bitset<kPidCount> mPass;  ///< PIDs of the service's streams
    std::array<Counter, kPidCount> mCounters = {};
    std::array<uint8_t, 0x20> mTableCounters = {};  ///< by PID, of the tables written here
    uint64_t mPassed = 0;
    uint32_t mPats = 0;    ///< written so far
    bool mJumped = false;  ///< not yet announced
};

}  // namespace television
