/** What the tests of the core interface share: an implementation whose log begins behind its
 * start-up, and what a client receives through its result callback. */
#pragma once

#include <tuple>
#include <vector>

#include "service_fixture.h"

class CoreTest : public ServiceTest {
  protected:
    CoreTest() : impl(new QorTvApiImpl()) { log.take(); }

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
