#include "television/generator/psi_table.h"

#include <utility>

namespace stream_generator {

Sections numbered(dvbpsi_t* handle, std::vector<Sections> parts) {
    const auto last = static_cast<uint8_t>(parts.size() - 1);
    Sections all;
    for (size_t i = parts.size(); i-- > 0;) {
        dvbpsi_psi_section_t* section = parts[i].get();
        section->i_number = static_cast<uint8_t>(i);
        section->i_last_number = last;
        dvbpsi_BuildPSISection(handle, section);
        section->p_next = all.release();
        all = std::move(parts[i]);
    }
    return all;
}

}  // namespace stream_generator
