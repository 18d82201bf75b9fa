/** The fixture of the tests of the core interface: an implementation whose start-up lines are no
 * longer in the log, and the arguments of result callbacks. */
#pragma once

#include <tuple>
#include <vector>

#include "support/service_fixture.h"

using Lines = std::vector<LogLine>;

/** A result callback for any method: appends the lines that were logged until then to `parts`. */
struct LineParter {
    LogCapture& log;
    std::vector<Lines>& parts;

    template <typename... Results>
    void operator()(const Results&...) const {
        parts.push_back(log.take());
    }
};

class CoreTest : public ServiceTest {
  protected:
    CoreTest() : impl(new QorTvApiImpl()) { log.take(); }

    /** Calls `request` with a result callback. Returns the lines that it logs before the callback
     * is called and those that it logs after it. */
    template <typename Request>
    std::vector<Lines> linesAroundAnswer(const Request& request) {
        log.take();
        std::vector<Lines> parts;
        request(LineParter{log, parts});
        parts.push_back(log.take());
        return parts;
    }

    const sp<QorTvApiImpl> impl;
};

/** What a result callback was called with, every time, converted to `Results`. */
template <typename... Results>
struct Answers {
    using All = std::vector<std::tuple<Results...>>;

    /** Hands `call` a callback for the method that it is to call. */
    template <typename Call>
    static All of(const Call& call) {
        All all;
        call([&](const auto&... results) { all.emplace_back(static_cast<Results>(results)...); });
        return all;
    }
};
