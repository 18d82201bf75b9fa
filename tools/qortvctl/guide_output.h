/** Programmes as people and scripts read them, in the time of the set. */
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "qortv/channel.h"
#include "qortv/clock.h"
#include "qortv/guide.h"

namespace qortvctl {

/** What a channel shows. */
struct NowNext {
    std::optional<qortv::Event> now;
    std::optional<qortv::Event> next;
};

/** @throws qortv::Error as Guide::present() */
NowNext readNowNext(qortv::Guide& guide, uint32_t channelId);

/**
 * Words for programmes, at one moment. Asks the set's clock for local times, so its methods throw
 * as Clock::local() does.
 */
class EventWords {
  public:
    explicit EventWords(qortv::Clock& clock) : mClock(clock), mNow(clock.utc()) {}

    /** The moment: seconds since 1970-01-01 00:00 UTC. */
    int64_t now() const { return mNow; }

    /** "20:15-21:00" */
    std::string span(const qortv::Event& event);
    /** "2026-11-21" */
    std::string date(const qortv::Event& event);
    /** "20:15" */
    std::string time(int64_t utc);
    /** "33 %"; "-" before it began. */
    std::string progress(const qortv::Event& event) const;

    nlohmann::ordered_json json(const qortv::Event& event);
    /** null for nothing */
    nlohmann::ordered_json json(const std::optional<qortv::Event>& event);

  private:
    std::string stamp(int64_t utc);

    qortv::Clock& mClock;
    const int64_t mNow;
};

/** "12+", or "" where it is not rated. */
std::string ageText(const qortv::Event& event);

/** "7 World News HD" */
std::string label(const qortv::Channel& channel);

}  // namespace qortvctl
