/** Writes transport streams from plans: small, valid, and the same bytes every time. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "multiplex_plan.h"

namespace stream_generator {

constexpr unsigned kMaxServicesPerMultiplex = 1000;

/** UTF-8 as a text field of the tables, with the byte that selects its character table. Throws
 * std::invalid_argument when the table lacks a character. */
std::string encodeText(const std::string& utf8, TextTable table);

/**
 * The stream of `plan`, whose network also has the streams of `network` (for the NIT). All tables
 * come several times, with null packets and a little payload between them. Throws
 * std::invalid_argument, naming the service, when something does not fit into its field.
 */
std::vector<uint8_t> buildStream(const MultiplexPlan& plan,
                                 const std::vector<MultiplexPlan>& network = {});

/** Writes every plan into its file in `folder`, which is made when missing. Throws
 * std::runtime_error that names the path. */
void writeStreams(const std::string& folder, const std::vector<MultiplexPlan>& plans);

}  // namespace stream_generator
