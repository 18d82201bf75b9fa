/** Timing two things against each other in one run: their batches alternate, medians are compared.
 */
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace bench {

/** Nanoseconds that one of `iterations` calls of `work` takes, on average. */
template <typename Work>
double nanosecondsPerCall(int iterations, Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < iterations; ++i) work();
    const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - start;
    return took.count() / iterations;
}

inline double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

/** Medians of two timings taken in turns, in nanoseconds a call. */
struct Pair {
    double subject;
    double peer;
    double ratio() const { return subject / peer; }
};

/**
 * Times `subject` and `peer` in turns: `rounds` batches of `iterations` calls each, after one batch
 * of each to warm up.
 */
template <typename Subject, typename Peer>
Pair inTurns(int rounds, int iterations, Subject&& subject, Peer&& peer) {
    std::vector<double> subjects, peers;
    for (int round = -1; round < rounds; ++round) {
        const double one = nanosecondsPerCall(iterations, subject);
        const double other = nanosecondsPerCall(iterations, peer);
        if (round < 0) continue;
        subjects.push_back(one);
        peers.push_back(other);
    }
    return {median(subjects), median(peers)};
}

}  // namespace bench
