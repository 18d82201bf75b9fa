/** What a program map table (PMT) says of a service's streams. */
#pragma once

#include "multiplex.h"
#include "psi_tables.h"

namespace television {

/** The streams of one program. */
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

/** Writes the streams into the service's fields. */
void applyProgramMap(const ProgramMap& map, ParsedService& service);

}  // namespace television
