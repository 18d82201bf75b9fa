#include "television/cam/cam_card.h"

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

#include "television/cam/cam_json.h"
#include "television/cam/cam_screen_reader.h"

namespace television {
namespace {

using nlohmann::json;

constexpr size_t kMostProfileUnits = 99;  // with the zero unit, what a client has room for
constexpr size_t kMostHostIdBytes = 32;
constexpr double kMostSeconds = 600;  // of a firmware upgrade

std::array<uint8_t, 8> moduleId(const json& value, const std::string& place) {
    std::array<uint8_t, 8> id = {};
    const size_t count = 2 * id.size();
    const auto bytes = cam_json::bytesOf(cam_json::digits(value, place, count, count, true));
    std::copy(bytes.begin(), bytes.end(), id.begin());
    return id;
}

std::vector<uint8_t> hostId(const json& value, const std::string& place) {
    const std::string digits = cam_json::digits(value, place, 2, 2 * kMostHostIdBytes, true);
    if (digits.size() % 2 != 0) cam_json::fault(place, "must be whole bytes");
    return cam_json::bytesOf(digits);
}

void readFirmware(const json& value, const std::string& place, CamCard& card) {
    const cam_json::Object firmware(value, place, {"version", "seconds"});
    if (firmware.find("version") != nullptr) {
        card.firmwareVersion = firmware.number("version", 0, UINT32_MAX);
    }
    if (const json* seconds = firmware.find("seconds")) {
        if (!seconds->is_number() || !(seconds->get<double>() >= 0) ||
            seconds->get<double>() > kMostSeconds) {
            cam_json::fault(firmware.place("seconds"),
                            fmt::format("must be a number from 0 to {}", kMostSeconds));
        }
        card.firmwareTime =
                std::chrono::milliseconds(static_cast<int64_t>(seconds->get<double>() * 1000));
    }
}

std::string languageCode(const json& value, const std::string& place) {
    const std::string* all = value.get_ptr<const std::string*>();
    if (all == nullptr || all->size() != 3 ||
        !std::all_of(all->begin(), all->end(),
                     [](unsigned char c) { return c < 0x80 && std::isalpha(c) != 0; })) {
        cam_json::fault(place, "must be a text of three letters");
    }
    return *all;
}

}  // namespace

std::shared_ptr<const CamCard> parseCamCard(const std::string& description) {
    const json root = cam_json::parse(description);
    const cam_json::Object object(root, "",
                                  {"name", "id", "language", "profile", "hostId", "pin",
                                   "pinRetries", "menu", "firmware"});
    auto card = std::make_shared<CamCard>();
    card->name = cam_json::text(object.need("name"), object.place("name"));
    if (const json* id = object.find("id")) card->id = moduleId(*id, object.place("id"));
    if (const json* code = object.find("language")) {
        card->language = languageCode(*code, object.place("language"));
    }
    if (object.find("profile") != nullptr) {
        card->profile = object.optionalText("profile", kMostProfileUnits);
    }
    if (const json* id = object.find("hostId")) card->hostId = hostId(*id, object.place("hostId"));
    if (const json* pin = object.find("pin")) {
        card->pin = cam_json::digits(*pin, object.place("pin"), CamCard::kPinDigits,
                                     CamCard::kPinDigits, false);
    }
    if (object.find("pinRetries") != nullptr) {
        card->pinRetries = static_cast<uint8_t>(object.number("pinRetries", 1, UINT8_MAX));
    }
    if (const json* firmware = object.find("firmware")) {
        readFirmware(*firmware, object.place("firmware"), *card);
    }
    if (const json* menu = object.find("menu")) {
        card->menu = readCamScreen(*menu, object.place("menu"), card->pin);
    }
    return card;
}

}  // namespace television
