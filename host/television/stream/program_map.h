/** Reads the program map table (PMT), which lists the elementary streams of a service. */
#pragma once

#include "television/stream/multiplex.h"
#include "television/stream/psi_tables.h"

namespace television {

/** The elementary streams of one program. The fields mean the same as those of ParsedService. */
struct ProgramMap {
    uint16_t pcrPid = kNoPid;
    uint16_t videoPid = kNoPid;
    uint16_t audioPid = kNoPid;
    uint8_t videoStreamType = 0;
    uint8_t audioStreamType = 0;
    unsigned audioCount = 0;
    unsigned subtitleCount = 0;
    std::string audioLanguage;
    bool scrambled = false;
    ServiceTracks tracks;
};

ProgramMap readProgramMap(const dvbpsi_pmt_t& pmt);

/** Copies the fields of `map` into those of the service. */
void applyProgramMap(const ProgramMap& map, ParsedService& service);

}  // namespace television
