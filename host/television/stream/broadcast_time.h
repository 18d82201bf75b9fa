/** The time of day and the local time offset that a stream broadcasts, as plain data. */
#pragma once

#include <cstdint>
#include <tuple>

namespace television {

/** The content of the last time tables: of the time and date table (TDT), which has the time alone,
 * and of the time offset table (TOT). */
struct BroadcastTime {
    bool tdt = false;    ///< a TDT has come
    bool tot = false;    ///< a TOT with an offset has come
    int64_t utc = 0;     ///< seconds since 1970, of the table that came last
    int32_t offset = 0;  ///< local time less UTC in seconds, of the TOT's first region
    int64_t nextChange =
            0;  ///< when the offset changes, UTC seconds; 0 when no change is announced
    int32_t nextOffset = 0;  ///< the offset from the change on

    bool hasTime() const { return tdt || tot; }
    bool operator==(const BroadcastTime& other) const {
        const auto all = [](const BroadcastTime& t) {
            return std::tie(t.tdt, t.tot, t.utc, t.offset, t.nextChange, t.nextOffset);
        };
        return all(*this) == all(other);
    }
};

}  // namespace television
