/** Writes transport streams from plans: small, valid, and the same bytes for the same plan. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "television/generator/multiplex_plan.h"

namespace stream_generator {

constexpr unsigned kMaxServicesPerMultiplex = 1000;

/**
 * Makes the stream of `plan`. `network` has the plans of the other streams of its network, which
 * the NIT lists and whose present and following events the stream carries too. All tables come
 * several times, with null packets and a little payload between them. Throws std::invalid_argument,
 * naming the service or the file, when something does not fit into its field.
 */
std::vector<uint8_t> buildStream(const MultiplexPlan& plan,
                                 const std::vector<MultiplexPlan>& network = {});

/** Writes the stream of every plan into its file in `folder`, which is made when missing. Throws
 * std::runtime_error, naming the path, when it cannot be written. */
void writeStreams(const std::string& folder, const std::vector<MultiplexPlan>& plans);

}  // namespace stream_generator
