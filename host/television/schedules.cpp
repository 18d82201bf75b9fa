#include "schedules.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

#include "calendar.h"
#include "log.h"
#include "middleware/result_codes.h"

namespace television {
namespace {

constexpr char kName[] = "record.schedules";
constexpr int64_t kForever = std::numeric_limits<int64_t>::max();
/** Times beyond are no dates; so sums of them do not overflow. */
constexpr int64_t kLatestTime = 253402300799;  // 9999-12-31

int64_t endOf(const SCHEDULE_RECORD_T& record) {
    return record.i8_start_time + record.ui4_duration;
}

/** Seconds from one occurrence to the next; 0 when there is one only. The days have 24 hours: where
 * local time changes, so does the local time of a repeated recording. */
int64_t periodOf(const SCHEDULE_RECORD_T& record) {
    switch (record.ui1_repeat) {
        case SCHEDULE_REPEAT_DAILY:
            return kSecondsOfDay;
        case SCHEDULE_REPEAT_WEEKLY:
            return 7 * kSecondsOfDay;
        default:
            return 0;
    }
}

/** Goes on to the occurrence after this one, or the first that ends after `now`. */
void toNextOccurrence(SCHEDULE_RECORD_T& record, int64_t now) {
    const int64_t period = periodOf(record);
    const int64_t late = std::max<int64_t>(now - endOf(record), 0);
    record.i8_start_time += (late / period + 1) * period;
}

/** Whether a record can be one of a schedule, whichever channels there are. */
bool makesSense(const SCHEDULE_RECORD_T& record) {
    if (record.ui1_type > SCHEDULE_TYPE_REMIND || record.ui1_repeat > SCHEDULE_REPEAT_WEEKLY ||
        record.i8_start_time < 0 || record.i8_start_time > kLatestTime ||
        record.ui4_duration == 0 || record.ui4_duration > Schedules::kLongest) {
        return false;
    }
    // An occurrence must not begin before the one before has ended.
    const bool overlaps = periodOf(record) != 0 && record.ui4_duration > periodOf(record);
    return !overlaps && std::memchr(record.s_title, 0, sizeof(record.s_title)) != nullptr;
}

bool isOver(uint8_t state) {
    return state == SCHEDULE_STATE_DONE || state == SCHEDULE_STATE_FAILED;
}

}  // namespace

Schedules::Schedules(Core& core, Recorder& recorder) : mCore(core), mRecorder(recorder) {
    load();
}

/** Remembered are the id given last and the records, as they are. */
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
        if (id == 0 || id > mLast || mEntries.size() == kMost || !makesSense(record)) continue;
        // What ran when the television went off goes on, or has failed: `check` will tell.
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
    if (!makesSense(record)) return TV_INVALID_ARGUMENT;
    if (!mRecorder.multiplexOf(record.ui4_channel_id)) return TV_NOT_FOUND;
    SCHEDULE_RECORD_T next = record;
    const int64_t now = mCore.clock.utcSeconds();
    if (endOf(next) <= now) {
        if (periodOf(next) == 0) return TV_INVALID_ARGUMENT;
        toNextOccurrence(next, now);
    }
    return operation == SCHEDULE_ADD ? add(next) : change(next);
}

/** Gives up the schedule that has been over for longest; false when none is over. */
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
    become(entry, SCHEDULE_STATE_WAITING);
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
    become(entry, runs ? SCHEDULE_STATE_RUNNING : SCHEDULE_STATE_WAITING);
    save();
    return TV_OK;
}

int32_t Schedules::remove(int32_t id) {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mEntries.find(static_cast<uint32_t>(id));
    if (found == mEntries.end()) return TV_NOT_FOUND;
    endRecording(found->second);
    become(found->second, SCHEDULE_STATE_DELETED);
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

/** Empty when the channel is not there. A duration of 0 has no end. */
std::optional<Schedules::Span> Schedules::spanOf(const RECORD_SOURCE_T& source) const {
    const auto multiplex = mRecorder.multiplexOf(source.ui4_channel_id);
    if (!multiplex) return std::nullopt;
    Span span;
    span.multiplex = *multiplex;
    span.begin = source.i8_start_time == 0
                         ? mCore.clock.utcSeconds()
                         : std::clamp<int64_t>(source.i8_start_time, 0, kLatestTime);
    span.end = source.ui4_duration == 0 ? kForever : span.begin + source.ui4_duration;
    return span;
}

int32_t Schedules::conflicts(const RECORD_SOURCE_T& source, const RECORD_SOURCE_T* other) const {
    const auto span = spanOf(source);
    if (!span) return TV_NOT_FOUND;
    const auto meets = [&](const Span& with) {
        return with.multiplex != span->multiplex && with.begin < span->end &&
               span->begin < with.end;
    };
    if (other != nullptr) {
        const auto with = spanOf(*other);
        return with ? int32_t{meets(*with)} : int32_t{TV_NOT_FOUND};
    }
    const int64_t now = mCore.clock.utcSeconds();
    std::lock_guard<std::mutex> lock(mMutex);
    bool scheduled = false;  // what is recorded now has an end
    for (const auto& [id, entry] : mEntries) {
        const SCHEDULE_RECORD_T& record = entry.record;
        const auto multiplex = mRecorder.multiplexOf(record.ui4_channel_id);
        if (isOver(record.ui1_state) || record.ui1_type != SCHEDULE_TYPE_RECORD || !multiplex) {
            continue;
        }
        scheduled = scheduled || entry.handle != 0;
        Span with{record.i8_start_time, endOf(record), *multiplex};
        const int64_t period = periodOf(record);
        // The occurrence that ends after the source begins is the one that can be in its way.
        if (period != 0 && with.end <= span->begin) {
            const int64_t skipped = ((span->begin - with.end) / period + 1) * period;
            with.begin += skipped;
            with.end += skipped;
        }
        if (meets(with)) return 1;
    }
    const auto tuned = mRecorder.tuned();
    if (tuned && !scheduled && meets({now, kForever, *tuned})) return 1;
    return 0;
}

void Schedules::become(Entry& entry, uint8_t state) {
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

/** The occurrence is over; the next one waits, if there is one. */
void Schedules::endOccurrence(Entry& entry, uint8_t state, int64_t now) {
    if (state == SCHEDULE_STATE_FAILED) {
        LOG_TV_WARN("schedule {} of channel {} failed", entry.record.ui4_id,
                    entry.record.ui4_channel_id);
    }
    become(entry, state);
    if (periodOf(entry.record) == 0) return;
    toNextOccurrence(entry.record, now);
    become(entry, SCHEDULE_STATE_WAITING);
}

/** Starts the recording of a schedule; false when it cannot be recorded. */
bool Schedules::begin(Entry& entry, int64_t now) {
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

/** Answers whether anything changed. */
bool Schedules::checkOne(Entry& entry, int64_t now) {
    const SCHEDULE_RECORD_T& record = entry.record;
    if (record.ui1_state == SCHEDULE_STATE_RUNNING) {
        const bool fell =
                entry.handle != 0 && mRecorder.status(entry.handle) != RECORD_STATUS_RECORDING;
        if (!fell && now < endOf(record)) return false;
        // One that somebody stopped has done what was wanted; one that failed has not.
        const bool failed = fell && mRecorder.status(entry.handle) != RECORD_STATUS_STOPPED;
        endRecording(entry);
        endOccurrence(entry, failed ? SCHEDULE_STATE_FAILED : SCHEDULE_STATE_DONE, now);
        return true;
    }
    if (record.ui1_state != SCHEDULE_STATE_WAITING || now < record.i8_start_time) return false;
    const bool missed = now >= endOf(record);
    if (!missed && (record.ui1_type == SCHEDULE_TYPE_REMIND || begin(entry, now))) {
        become(entry, SCHEDULE_STATE_RUNNING);
    } else {
        endOccurrence(entry, SCHEDULE_STATE_FAILED, now);
    }
    return true;
}

void Schedules::check() {
    const int64_t now = mCore.clock.utcSeconds();
    std::lock_guard<std::mutex> lock(mMutex);
    bool changed = false;
    // What ends makes room for what begins.
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
