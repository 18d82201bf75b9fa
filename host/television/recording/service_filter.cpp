#include "television/recording/service_filter.h"

#include <utility>

#include "television/recording/program_clock.h"
#include "television/stream/multiplex.h"
#include "television/stream/packet_reader.h"
#include "television/stream/section_guard.h"

namespace television {
namespace {

constexpr uint16_t kPidPat = 0;
/** Lower PIDs are reserved for tables: a PMT that names one is wrong. */
constexpr uint16_t kFirstStreamPid = 0x20;
/** PATs come every tenth of a second; the tables that describe the service every second or two. */
constexpr uint32_t kPatsPerDescription = 10;
constexpr size_t kLongHeader = 8;  ///< bytes of a section's header
constexpr size_t kChecksum = 4;    ///< bytes at a section's end

uint16_t pidOf(const uint8_t* packet) {
    return static_cast<uint16_t>((packet[1] & 0x1F) << 8 | packet[2]);
}

bool isStreamPid(uint16_t pid) {
    return pid >= kFirstStreamPid && pid != kNoPid;
}

/** Returns what is between the header and the checksum of a section; empty when the section is not
 * applicable yet (current_next_indicator). */
ByteView payloadOf(ByteView section) {
    const bool current = (section.u8(5) & 1) != 0;
    if (!current) return {};
    return section.part(kLongHeader, section.size() - kLongHeader - kChecksum);
}

}  // namespace

ServiceFilter::ServiceFilter(uint16_t transportStreamId, uint16_t program, Describe describe)
    : mTransportStreamId(transportStreamId),
      mProgram(program),
      mDescribe(std::move(describe)),
      mPmtPid(kNoPid),
      mPcrPid(kNoPid) {}

void ServiceFilter::restart() {
    mPat.reset();
    mPmt.reset();
    for (Counter& counter : mCounters) counter.joined = false;
    mJumped = true;
}

void ServiceFilter::takePat(ByteView section) {
    if (section.u8(0) != kTablePat) return;
    const ByteView programs = payloadOf(section);
    for (size_t at = 0; at + 4 <= programs.size(); at += 4) {
        if (programs.u16(at) != mProgram) continue;
        const uint16_t pid = programs.u16(at + 2) & 0x1FFF;
        if (pid == mPmtPid || !isStreamPid(pid)) return;
        mPmtPid = pid;
        mPmt.reset();
        mPass.reset();
        return;
    }
}

void ServiceFilter::takePmt(ByteView section) {
    const ByteView payload = payloadOf(section);
    if (section.u8(0) != kTablePmt || section.u16(3) != mProgram || payload.empty() ||
        !sectionIsSound(kTablePmt, payload)) {
        return;
    }
    mPass.reset();
    mPcrPid = payload.u16(0) & 0x1FFF;
    if (isStreamPid(mPcrPid)) mPass.set(mPcrPid);
    for (size_t at = 4u + (payload.u16(2) & 0x0FFF); at + 5 <= payload.size();
         at += 5u + (payload.u16(at + 3) & 0x0FFF)) {
        const uint16_t pid = payload.u16(at + 1) & 0x1FFF;
        if (isStreamPid(pid)) mPass.set(pid);
    }
}

void ServiceFilter::writeTables(std::vector<uint8_t>& out) {
    const auto write = [&](uint16_t pid, const std::vector<uint8_t>& section) {
        packSection({section.data(), section.size()}, pid, mTableCounters[pid], out);
    };
    write(kPidPat,
          makeSection(kTablePat, mTransportStreamId, 1, 0, 0,
                      {static_cast<uint8_t>(mProgram >> 8), static_cast<uint8_t>(mProgram),
                       static_cast<uint8_t>(0xE0 | mPmtPid >> 8), static_cast<uint8_t>(mPmtPid)}));
    if (mPats++ % kPatsPerDescription != 0) return;
    for (const Table& table : mDescribe()) {
        for (const auto& section : table.sections) write(table.pid, section);
    }
}

void ServiceFilter::push(const uint8_t* packet, std::vector<uint8_t>& out) {
    if ((packet[1] & 0x80) != 0) return;  // the receiver could not correct it
    const uint16_t pid = pidOf(packet);
    if (pid == kPidPat) {
        mPat.push(packet, [this](ByteView section) { takePat(section); });
        const bool start = (packet[1] & 0x40) != 0;
        if (start && mPmtPid != kNoPid) writeTables(out);
        return;
    }
    if (pid == mPmtPid) {
        mPmt.push(packet, [this](ByteView section) { takePmt(section); });
        pass(pid, packet, out);
    } else if (mPass.test(pid)) {
        pass(pid, packet, out);
        ++mPassed;
    }
}

void ServiceFilter::pass(uint16_t pid, const uint8_t* packet, std::vector<uint8_t>& out) {
    Counter& counter = mCounters[pid];
    const uint8_t in = packet[3] & 0x0F;
    const bool payload = (packet[3] & 0x10) != 0;
    if (!counter.joined) {
        // A packet without payload repeats the counter of the packet before.
        counter.offset = static_cast<uint8_t>(counter.last + (payload ? 1 : 0) - in) & 0x0F;
        counter.joined = true;
    }
    counter.last = (in + counter.offset) & 0x0F;
    const size_t begin = out.size();
    out.insert(out.end(), packet, packet + kPacketSize);
    out[begin + 3] = static_cast<uint8_t>((packet[3] & 0xF0) | counter.last);
    if (mJumped && pid == mPcrPid && programClock(packet)) {
        announceJump(out.data() + begin);
        mJumped = false;
    }
}

}  // namespace television
