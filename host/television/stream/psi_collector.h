/** Gathers the tables of one transport stream from its packets. */
#pragma once

#include <cstdint>
#include <memory>

#include "television/stream/multiplex.h"

namespace television {

/**
 * Takes packets in stream order and returns what their tables say. Packets and sections that are
 * damaged are skipped and counted. One thread at a time; no process-wide state.
 */
class PsiCollector {
  public:
    PsiCollector();
    ~PsiCollector();
    PsiCollector(const PsiCollector&) = delete;
    PsiCollector& operator=(const PsiCollector&) = delete;

    /** Takes one packet of 188 bytes. */
    void push(const uint8_t* packet);

    /** Whether PAT, SDT, NIT and the PMT of every program have arrived. */
    bool complete() const;

    /** Whether the time has arrived, and the events of every service for which the SDT announces
     * some. */
    bool guideComplete() const;

    /** What has arrived so far: services in order of their program numbers, named "Program N" where
     * no table names them. */
    ParsedMultiplex multiplex() const;

  private:
    class Decoders;
    std::unique_ptr<Decoders> mDecoders;
};

}  // namespace television
