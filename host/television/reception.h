/** What reaches the set of the multiplexes' signals. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "playing.h"

namespace television {

/** The signal of a multiplex is its file. Any thread; no locks. */
class Reception {
  public:
    /** `folder`: where the files are; empty: there are none. */
    explicit Reception(std::string folder) : mFolder(std::move(folder)) {}

    bool hasSignal(const TSL_REC_T& multiplex) const;
    /** What the tuner of a window is at that plays this. */
    Tuning tuning(const std::optional<Playing>& playing) const;

    /** Per cent of the packets that arrive sound; 100 only when all do, 0 without a signal. */
    int32_t quality(const TSL_REC_T& multiplex) const;
    /** Per cent: 0 without a signal; 50 and more, the better the quality the higher, with one. */
    int32_t level(const TSL_REC_T& multiplex) const;

  private:
    const std::string mFolder;
};

}  // namespace television
