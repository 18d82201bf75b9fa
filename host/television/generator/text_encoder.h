/** Encodes texts as the tables of a stream carry them. */
#pragma once

#include <string>

#include "television/generator/multiplex_plan.h"

namespace stream_generator {

/** Encodes UTF-8 as a text field of the tables, with the byte that selects its character table in
 * front. Throws std::invalid_argument when the table lacks a character. */
std::string encodeText(const std::string& utf8, TextTable table);

}  // namespace stream_generator
