/**
 * Checks the lengths inside a section before a table decoder relies on them. The checksum proves
 * that a section arrived as it was sent, not that its sender wrote sensible lengths.
 */
#pragma once

#include "television/base/byte_view.h"

namespace television {

/** The table ids that the television reads, beside those of the EIT. */
constexpr uint8_t kTablePat = 0x00;
constexpr uint8_t kTablePmt = 0x02;
constexpr uint8_t kTableNitActual = 0x40;
constexpr uint8_t kTableSdtActual = 0x42;
constexpr uint8_t kTableTdt = 0x70;
constexpr uint8_t kTableTot = 0x73;

/**
 * Whether every loop and descriptor of a section ends within the one around it. `payload` is what
 * lies between the section's header (eight bytes; three for TDT and TOT, which have the short one)
 * and its checksum. True for all tables that the television does not read.
 */
bool sectionIsSound(uint8_t tableId, ByteView payload);

}  // namespace television
