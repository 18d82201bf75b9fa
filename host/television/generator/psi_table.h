/** What the tables that libdvbpsi makes have in common: owners, descriptors, sections. */
#pragma once

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "television/generator/byte_writer.h"
#include "television/stream/psi_tables.h"

namespace stream_generator {

/** Frees what libdvbpsi made with the function that it has for it. */
template <auto Delete>
struct Deleter {
    template <typename T>
    void operator()(T* object) const {
        Delete(object);
    }
};
using Sections = std::unique_ptr<dvbpsi_psi_section_t, Deleter<dvbpsi_DeletePSISections>>;

/** The sections of a table, and their PID. */
struct Table {
    uint16_t pid;
    Sections sections;
};

/** Calls `add(tag, length, data)`, the last parameters of libdvbpsi's functions that add a
 * descriptor. Throws std::invalid_argument, naming `what`, when the content is too long. */
template <typename Add>
void addDescriptor(uint8_t tag, Bytes content, const std::string& what, Add add) {
    if (content.size() > 255) {
        throw std::invalid_argument(fmt::format("{} is too long for its descriptor", what));
    }
    add(tag, static_cast<uint8_t>(content.size()), content.data());
}

/** Chains sections that were made one by one, and numbers them as one table. */
Sections numbered(dvbpsi_t* handle, std::vector<Sections> parts);

}  // namespace stream_generator
