/** Reading the JSON description of a Common Interface module, with faults that name their place. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "television/cam/cam_card.h"

namespace television {

/** All functions throw CamFault for a value that is not as described. `place` is the JSON pointer
 * of `value`. */
namespace cam_json {

/** UTF-16 units of the longest text. */
constexpr size_t kMostUnits = 255;

/** Throws the CamFault of a place and what is wrong there, which must quote no value: it may be a
 * PIN. */
[[noreturn]] void fault(const std::string& place, const std::string& reason);

nlohmann::json parse(const std::string& text);

/** A text of at most `most` UTF-16 units without a zero character. */
CamText text(const nlohmann::json& value, const std::string& place, size_t most = kMostUnits);

/** A text of `least` to `most` digits. */
std::string digits(const nlohmann::json& value, const std::string& place, size_t least, size_t most,
                   bool hexadecimal);

/** The bytes that pairs of hexadecimal digits stand for. */
std::vector<uint8_t> bytesOf(const std::string& hexadecimal);

/** An object of the description. A field that is null counts as missing. */
class Object {
  public:
    /** `value` outlives this. A field that is not `known` is a fault. */
    Object(const nlohmann::json& value, std::string place,
           std::initializer_list<const char*> known);

    /** Null when the field is missing. */
    const nlohmann::json* find(const char* name) const;
    /** A missing field is a fault. */
    const nlohmann::json& need(const char* name) const;
    /** The place of a field. */
    std::string place(const char* name) const { return mPlace + "/" + name; }

    /** No text at all when the field is missing. */
    CamText optionalText(const char* name, size_t most = kMostUnits) const;
    /** A whole number; a missing field is a fault. */
    uint32_t number(const char* name, uint32_t least, uint32_t most) const;
    /** False when the field is missing. */
    bool flag(const char* name) const;

  private:
    const nlohmann::json& mValue;
    const std::string mPlace;
};

}  // namespace cam_json
}  // namespace television
