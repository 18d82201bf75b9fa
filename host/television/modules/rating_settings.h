/** The rating settings that the rating module alone knows: names under which the core remembers
 * them, and their bytes. The others are in viewing/ratings.h. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "middleware/rating.h"

namespace television {

constexpr char kUsTelevision[] = "rating.us_tv";  ///< a byte, 0 or 1, for each of the record;
                                                  ///< nothing when all are 0
// Numbers; 0 when nothing is remembered.
constexpr char kUsMovie[] = "rating.us_movie";
constexpr char kCanadianEnglish[] = "rating.can_eng";
constexpr char kCanadianFrench[] = "rating.can_fre";
constexpr char kIsdbContents[] = "rating.isdb_content";
constexpr char kIsdbAge[] = "rating.isdb_age";
/** Before the number of a dimension of a rating table, region * 256 + dimension. A byte, 0 or 1,
 * for each level of the dimension; nothing when the dimension is unknown. */
constexpr char kDimensions[] = "rating.open.";

/** Returns the blocked ratings of US television, from the bytes remembered: a bit for each byte,
 * the first one the lowest. */
inline uint32_t usTelevisionBits(const std::string& bytes) {
    uint32_t bits = 0;
    for (size_t i = 0; i < std::min(bytes.size(), sizeof(US_TV_RATING_BLOCK_T)); ++i) {
        if (bytes[i] != 0) bits |= uint32_t{1} << i;
    }
    return bits;
}

}  // namespace television
