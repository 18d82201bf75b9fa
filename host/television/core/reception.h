/** How well the television receives the multiplexes. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "television/core/playing.h"

namespace television {

/** A multiplex has a signal while its file can be read. Any thread; no locks. */
class Reception {
  public:
    /** `folder`: the folder of streams; empty: no multiplex has a signal. */
    explicit Reception(std::string folder) : mFolder(std::move(folder)) {}

    bool hasSignal(const TSL_REC_T& multiplex) const;
    /** The tuner state of a window in which `playing` plays. */
    Tuning tuning(const std::optional<Playing>& playing) const;

    /** Signal quality: per cent of the packets that are not damaged, 100 only when none is; 0
     * without a signal. */
    int32_t quality(const TSL_REC_T& multiplex) const;
    /** Signal level in per cent: 50 to 100, growing with the quality; 0 without a signal. */
    int32_t level(const TSL_REC_T& multiplex) const;

  private:
    const std::string mFolder;
};

}  // namespace television
