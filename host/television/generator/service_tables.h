/** The tables that list the services of a generated stream: PAT, PMT and SDT. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "television/generator/multiplex_plan.h"
#include "television/generator/psi_table.h"

namespace stream_generator {

constexpr uint16_t kPidNit = 0x10;

/** The PIDs that each service has; further audio tracks share that of the first. */
enum class ServicePid : uint16_t { kProgramMap, kVideo, kAudio, kSubtitles, kCount };

/** The PID of the service at `index` of its plan. */
constexpr uint16_t servicePid(size_t index, ServicePid which) {
    constexpr uint16_t kFirst = 0x100;
    return static_cast<uint16_t>(kFirst + index * static_cast<size_t>(ServicePid::kCount) +
                                 static_cast<size_t>(which));
}

/** Whether a service has no video. */
inline bool isRadio(const ServicePlan& service) {
    return service.type == 0x02;
}

Table patTable(dvbpsi_t* handle, const MultiplexPlan& plan);
/** The PMT of the service at `index` of its plan. */
Table pmtTable(dvbpsi_t* handle, const ServicePlan& service, size_t index);
Table sdtTable(dvbpsi_t* handle, const MultiplexPlan& plan);

}  // namespace stream_generator
