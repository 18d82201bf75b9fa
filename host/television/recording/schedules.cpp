#include "television/recording/schedules.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/recording/schedule_record.h"

namespace television {
namespace {

/** The name under which the core remembers the schedules. */
constexpr char kName[] = "record.schedules";
constexpr int64_t kForever = std::numeric_limits<int64_t>::max();

}  // namespace

Schedules::Schedules(Core& core, Recorder& recorder) : mCore(core), mRecorder(recorder) {
    load();
}

/** The remembered bytes are the id given last, then the records. */
void Schedules::load() {
    const std::string bytes = mCore.remembered(kName);
    if (bytes.size() < sizeof(mLast)) return;
    std::memcpy(&mLast, bytes.data(), sizeof(mLast));
    for (size_t at = sizeof(mLast); at + sizeof(SCHEDULE_RECORD_T) <= bytes.size();
         at += sizeof(SCHEDULE_RECORD_T)) {
        Entry entry;
        std::memcpy(&entry.record, bytes.data() + at, sizeof(entry.record));
        SCHEDULE_RECORD_T& record = entry.record;
        const uint32_t id = record.ui4_id;
        if (id == 0 || id > mLast || mEntries.size() == kMost || !isValidSchedule(record)) continue;
        // One that ran when the television went off waits again; `check` resumes it or lets it
        // fail.
        if (record.ui1_state == SCHEDULE_STATE_RUNNING) record.ui1_state = SCHEDULE_STATE_WAITING;
        mEntries[id] = entry;
    }
}

void Schedules::save() const {
    std::string bytes(reinterpret_cast<const char*>(&mLast), sizeof(mLast));
    for (const auto& [id, entry] : mEntries) {
        bytes.append(reinterpret_cast<const char*>(&entry.record), sizeof(entry.record));
    }
    mCore.remember(kName, bytes);
}

int32_t Schedules::set(const SCHEDULE_RECORD_T& record, int32_t operation) {
    if (operation != SCHEDULE_ADD && operation != SCHEDULE_CHANGE) return TV_INVALID_ARGUMENT;
    if (!isValidSchedule(record)) return TV_INVALID_ARGUMENT;
    if (!mRecorder.multiplexOf(record.ui4_channel_id)) return TV_NOT_FOUND;
    SCHEDULE_RECORD_T next = record;
    const int64_t now = mCore.clock.utcSeconds();
    if (endOf(next) <= now) {
        if (periodOf(next) == 0) return TV_INVALID_ARGUMENT;
        toNextOccurrence(next, now);
    }
    return operation == SCHEDULE_ADD ? add(next) : change(next);
}

/** Makes room for one more schedule: forgets the one that has been over for longest. Returns false
 * when there is no room and none is over. */
bool Schedules::makeRoom() {
    if (mEntries.size() < kMost) return true;
    auto oldest = mEntries.end();
    for (auto entry = mEntries.begin(); entry != mEntries.end(); ++entry) {
        if (!isOver(entry->second.record.ui1_state)) continue;
        if (oldest == mEntries.end() ||
            endOf(entry->second.record) < endOf(oldest->second.record)) {
            oldest = entry;
        }
    }
    if (oldest == mEntries.end()) return false;
    mEntries.erase(oldest);
    return true;
}

int32_t Schedules::add(SCHEDULE_RECORD_T record) {
    if (record.ui4_id != 0) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    if (mLast == INT32_MAX || !makeRoom()) return TV_FULL;
    record.ui4_id = ++mLast;
    Entry& entry = mEntries[record.ui4_id];
    entry.record = record;
    setState(entry, SCHEDULE_STATE_WAITING);
    save();
    return TV_OK;
}

int32_t Schedules::change(SCHEDULE_RECORD_T record) {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mEntries.find(record.ui4_id);
    if (found == mEntries.end()) return TV_NOT_FOUND;
    Entry& entry = found->second;
    const bool runs = entry.record.ui1_state == SCHEDULE_STATE_RUNNING;
    if (runs && (record.ui4_channel_id != entry.record.ui4_channel_id ||
                 record.i8_start_time != entry.record.i8_start_time ||
                 record.ui2_event_id != entry.record.ui2_event_id ||
                 record.ui1_type != entry.record.ui1_type)) {
        return TV_BUSY;
    }
    entry.record = record;
    setState(entry, runs ? SCHEDULE_STATE_RUNNING : SCHEDULE_STATE_WAITING);
    save();
    return TV_OK;
}

int32_t Schedules::remove(int32_t id) {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mEntries.find(static_cast<uint32_t>(id));
    if (found == mEntries.end()) return TV_NOT_FOUND;
    endRecording(found->second);
    setState(found->second, SCHEDULE_STATE_DELETED);
    mEntries.erase(found);
    save();
    return TV_OK;
}

int32_t Schedules::at(int32_t index, SCHEDULE_RECORD_T& record) const {
    std::lock_guard<std::mutex> lock(mMutex);
    if (index < 0 || static_cast<size_t>(index) >= mEntries.size()) return TV_NOT_FOUND;
    record = std::next(mEntries.begin(), index)->second.record;
    return TV_OK;
}

int32_t Schedules::bookings() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return static_cast<int32_t>(std::count_if(
            mEntries.begin(), mEntries.end(),
            [](const auto& entry) { return !isOver(entry.second.record.ui1_state); }));
}

/** Returns the time that a source needs; empty when there is no such channel. A duration of 0 has
 * no end. */
std::optional<Schedules::Span> Schedules::spanOf(const RECORD_SOURCE_T& source) const {
    const auto multiplex = mRecorder.multiplexOf(source.ui4_channel_id);
    if (!multiplex) return std::nullopt;
    Span span;
    span.multiplex = *multiplex;
    span.begin = source.i8_start_time == 0
                         ? mCore.clock.utcSeconds()
                         : std::clamp<int64_t>(source.i8_start_time, 0, kLatestScheduleTime);
    span.end = source.ui4_duration == 0 ? kForever : span.begin + source.ui4_duration;
    return span;
}

/** Returns the time of the occurrence that ends first after `time`: the only one with which a
 * recording that begins then can conflict. */
Schedules::Span Schedules::occurrenceAt(const SCHEDULE_RECORD_T& record,
                                        const Recorder::Multiplex& multiplex, int64_t time) {
    Span span{record.i8_start_time, endOf(record), multiplex};
    const int64_t period = periodOf(record);
    if (period != 0 && span.end <= time) {
        const int64_t skipped = ((time - span.end) / period + 1) * period;
        span.begin += skipped;
        span.end += skipped;
    }
    return span;
}

int32_t Schedules::conflicts(const RECORD_SOURCE_T& source, const RECORD_SOURCE_T* other) const {
    const auto span = spanOf(source);
    if (!span) return TV_NOT_FOUND;
    const auto conflictsWith = [&](const Span& with) {
        return with.multiplex != span->multiplex && with.begin < span->end &&
               span->begin < with.end;
    };
    if (other != nullptr) {
        const auto with = spanOf(*other);
        return with ? int32_t{conflictsWith(*with)} : int32_t{TV_NOT_FOUND};
    }
    const int64_t now = mCore.clock.utcSeconds();
    std::lock_guard<std::mutex> lock(mMutex);
    bool scheduleRecords = false;
    for (const auto& [id, entry] : mEntries) {
        const SCHEDULE_RECORD_T& record = entry.record;
        const auto multiplex = mRecorder.multiplexOf(record.ui4_channel_id);
        if (isOver(record.ui1_state) || record.ui1_type != SCHEDULE_TYPE_RECORD || !multiplex) {
            continue;
        }
        scheduleRecords = scheduleRecords || entry.handle != 0;
        if (conflictsWith(occurrenceAt(record, *multiplex, span->begin))) return 1;
    }
    // A recording that runs without a schedule has no known end.
    const auto recorded = mRecorder.recordedMultiplex();
    if (recorded && !scheduleRecords && conflictsWith({now, kForever, *recorded})) return 1;
    return 0;
}

void Schedules::setState(Entry& entry, uint8_t state) {
    entry.record.ui1_state = state;
    mCore.notifier.post({registration<&a_qortvapi_record_pvr_register_callback>(),
                         RECORD_NFY_SCHEDULE_CHANGED,
                         {entry.record.ui4_id, state, 0, 0}});
}

void Schedules::endRecording(Entry& entry) {
    if (entry.handle == 0) return;
    mRecorder.stop(entry.handle, RECORD_STOP_SCHEDULE);
    mRecorder.close(entry.handle);
    entry.handle = 0;
}

/** Ends an occurrence in `state`; a repeated schedule then waits for the next one. */
void Schedules::endOccurrence(Entry& entry, uint8_t state, int64_t now) {
    if (state == SCHEDULE_STATE_FAILED) {
        LOG_TV_WARN("schedule {} of channel {} failed", entry.record.ui4_id,
                    entry.record.ui4_channel_id);
    }
    setState(entry, state);
    if (periodOf(entry.record) == 0) return;
    toNextOccurrence(entry.record, now);
    setState(entry, SCHEDULE_STATE_WAITING);
}

/** Starts the recording of a schedule; false when it cannot be recorded. */
bool Schedules::startRecording(Entry& entry, int64_t now) {
    const SCHEDULE_RECORD_T& record = entry.record;
    const int32_t handle = mRecorder.open(RECORD_SOURCE_MAIN, Recorder::Owner::kSchedule);
    if (handle < 0) return false;
    entry.handle = static_cast<uint32_t>(handle);
    LOG_TV_INFO("schedule {} of channel {} starts, {} s after its time", record.ui4_id,
                record.ui4_channel_id, now - record.i8_start_time);
    mRecorder.setTitle(entry.handle, record.s_title);
    if (mRecorder.select(entry.handle, record.ui4_channel_id, 0) == TV_OK &&
        mRecorder.start(entry.handle) == TV_OK) {
        return true;
    }
    mRecorder.close(entry.handle);
    entry.handle = 0;
    return false;
}

/** Starts or ends a schedule when that is due. Returns whether anything changed. */
bool Schedules::checkOne(Entry& entry, int64_t now) {
    const SCHEDULE_RECORD_T& record = entry.record;
    if (record.ui1_state == SCHEDULE_STATE_RUNNING) {
        const bool ended =
                entry.handle != 0 && mRecorder.status(entry.handle) != RECORD_STATUS_RECORDING;
        if (!ended && now < endOf(record)) return false;
        // A recording that a client stopped counts as done.
        const bool failed = ended && mRecorder.status(entry.handle) != RECORD_STATUS_STOPPED;
        endRecording(entry);
        endOccurrence(entry, failed ? SCHEDULE_STATE_FAILED : SCHEDULE_STATE_DONE, now);
        return true;
    }
    if (record.ui1_state != SCHEDULE_STATE_WAITING || now < record.i8_start_time) return false;
    const bool missed = now >= endOf(record);
    if (!missed && (record.ui1_type == SCHEDULE_TYPE_REMIND || startRecording(entry, now))) {
        setState(entry, SCHEDULE_STATE_RUNNING);
    } else {
        endOccurrence(entry, SCHEDULE_STATE_FAILED, now);
    }
    return true;
}

void Schedules::check() {
    const int64_t now = mCore.clock.utcSeconds();
    std::lock_guard<std::mutex> lock(mMutex);
    bool changed = false;
    // First those that end: the tuner is then free for those that begin.
    for (const bool ends : {true, false}) {
        for (auto& [id, entry] : mEntries) {
            if ((entry.record.ui1_state == SCHEDULE_STATE_RUNNING) == ends) {
                changed = checkOne(entry, now) || changed;
            }
        }
    }
    if (changed) save();
}

}  // namespace television
