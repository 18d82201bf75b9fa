/** Events of the guide as text for people and as JSON for scripts, in local time. */
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "qortv/clock.h"
#include "qortv/guide.h"

namespace qortvctl {

/**
 * Formats events of the guide as they stand when it is made. Asks the television's clock for local
 * times, so its methods throw as Clock::local() does. Used by one thread.
 */
class EventFormatter {
  public:
    /**
     * @param clock must outlive this object
     * @throws qortv::Error as Clock::utc()
     */
    explicit EventFormatter(qortv::Clock& clock) : mClock(clock), mNow(clock.utc()) {}

    /** When this object was made: seconds since 1970-01-01 00:00 UTC. */
    int64_t now() const { return mNow; }

    /** "20:15-21:00", from start to end. */
    std::string timeSpan(const qortv::Event& event);
    /** "2026-11-21", of the start. */
    std::string date(const qortv::Event& event);
    /** "20:15", of seconds since 1970-01-01 00:00 UTC. */
    std::string timeOfDay(int64_t utc);
    /** How much of the event is over: "33 %"; "-" before it began. */
    std::string progress(const qortv::Event& event) const;

    nlohmann::ordered_json toJson(const qortv::Event& event);
    /** null without an event. */
    nlohmann::ordered_json toJson(const std::optional<qortv::Event>& event);
    nlohmann::ordered_json toJson(const qortv::EventDetails& details);

  private:
    qortv::Clock& mClock;
    const int64_t mNow;
};

/** "12+", or "" where the event is not rated. */
std::string ageText(const qortv::Event& event);

/** Genre, guidance, series and restrictions of an event in one line, separated by commas. */
std::string factsText(const qortv::EventDetails& details);

}  // namespace qortvctl
