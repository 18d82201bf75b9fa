// Rating tables of regions: the settings of their dimensions, and ratings of programmes as text.
#include <cstring>
#include <memory>
#include <mutex>
#include <set>
#include <string>

#include <fmt/format.h>

#include "middleware/rating.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"
#include "television/modules/rating_settings.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

/** The name under which the core remembers whether rating tables of broadcasts are to be kept. */
constexpr char kTablesKept[] = "rating.atsc_storage";

/** The name under which the core remembers a dimension of a region's rating table. */
std::string dimensionName(uint32_t region, uint32_t dimension) {
    return fmt::format("{}{}", kDimensions, region << 8 | dimension);
}

int32_t setDimension(Core& core, std::mutex& mutex, const OPEN_VCHIP_BLOCK_DATA_T* block) {
    if (!writable(block)) return TV_INVALID_ARGUMENT;
    const OPEN_VCHIP_BLOCK_DATA_T setting = *block;
    const std::string name = dimensionName(setting.ui1_region, setting.ui1_dimension);
    std::string levels(reinterpret_cast<const char*>(setting.aui1_blocked),
                       setting.ui1_level_count);
    for (char& level : levels) level = level != 0 ? 1 : 0;
    const std::lock_guard<std::mutex> lock(mutex);
    if (!levels.empty() && core.remembered(name).empty() &&
        core.rememberedCount(kDimensions) >= RATING_OPEN_VCHIP_COUNT) {
        return TV_FULL;
    }
    core.remember(name, levels);
    return TV_OK;
}

int32_t getDimension(const Core& core, OPEN_VCHIP_BLOCK_DATA_T* block) {
    if (!writable(block)) return TV_INVALID_ARGUMENT;
    const std::string levels =
            core.remembered(dimensionName(block->ui1_region, block->ui1_dimension));
    if (levels.empty() || levels.size() > sizeof(block->aui1_blocked)) return TV_NOT_FOUND;
    block->ui1_level_count = static_cast<uint8_t>(levels.size());
    std::memset(block->aui1_blocked, 0, sizeof(block->aui1_blocked));
    std::memcpy(block->aui1_blocked, levels.data(), levels.size());
    return TV_OK;
}

/** Writes the 64 bytes that describe a level of a dimension. */
int32_t getLevel(const Core& core, const OPEN_VCHIP_KEY_PARAM_T* key, uint8_t* info) {
    if (!writable(key) || !writable(info)) return TV_INVALID_ARGUMENT;
    const OPEN_VCHIP_KEY_PARAM_T asked = *key;
    if (asked.ui4_region > UINT8_MAX || asked.ui2_dimension > UINT8_MAX) return TV_NOT_FOUND;
    const std::string levels =
            core.remembered(dimensionName(asked.ui4_region, asked.ui2_dimension));
    if (asked.ui1_level >= levels.size()) return TV_NOT_FOUND;
    struct Info {
        uint8_t numbers[4];
        char text[60];
    };
    static_assert(sizeof(Info) == 64);
    Info record = {};
    record.numbers[0] = static_cast<uint8_t>(asked.ui4_region);
    record.numbers[1] = static_cast<uint8_t>(asked.ui2_dimension);
    record.numbers[2] = static_cast<uint8_t>(levels.size());
    record.numbers[3] = static_cast<uint8_t>(levels[asked.ui1_level]);
    copyText(record.text, fmt::format("Region {}, dimension {}, level {}", asked.ui4_region,
                                      asked.ui2_dimension, asked.ui1_level));
    std::memcpy(info, &record, sizeof(record));
    return TV_OK;
}

/** Parts joined with ", " until they fill a field of a record, which cuts the last one. */
class JoinedText {
  public:
    /** `field`: bytes of the field. */
    explicit JoinedText(size_t field) : mField(field) {}

    void add(const std::string& part) {
        if (full()) return;
        if (!mText.empty()) mText += ", ";
        mText += part;
    }
    bool full() const { return mText.size() >= mField; }
    const std::string& text() const { return mText; }

  private:
    const size_t mField;
    std::string mText;
};

int32_t convertRatings(const RatingListNode* list, RATING_MAP_T* to) {
    constexpr size_t kMostNodes = 1'000'000;
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    if (list == nullptr) return TV_NOT_FOUND;
    JoinedText regions(sizeof(to->s_region));
    JoinedText dimensions(sizeof(to->s_dimension));
    JoinedText values(sizeof(to->s_rating));
    std::set<uint16_t> known;
    size_t nodes = 0;
    for (const RatingListNode* node = list; node != nullptr; node = node->pt_next) {
        if (++nodes > kMostNodes) return TV_INVALID_ARGUMENT;
        if (node->ui2_count > 0 && !writable(node->at_entry)) return TV_INVALID_ARGUMENT;
        if (!known.insert(node->ui2_region).second) continue;
        const char* const name = node->s_name;
        const size_t length = writable(name) ? strnlen(name, sizeof(to->s_region)) : 0;
        regions.add(length != 0 ? std::string(name, length)
                                : fmt::format("region {}", node->ui2_region));
        for (uint16_t i = 0; i < node->ui2_count && !values.full(); ++i) {
            dimensions.add(std::to_string(node->at_entry[i].ui2_dimension));
            values.add(std::to_string(node->at_entry[i].ui2_value));
        }
    }
    copyText(to->s_region, regions.text());
    copyText(to->s_dimension, dimensions.text());
    copyText(to->s_rating, values.text());
    return TV_OK;
}

}  // namespace

void plugRatingTables(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_rating_get_op_vchip_avail>([&core](uint8_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = core.rememberedCount(kDimensions) != 0 ? 1 : 0;
        return TV_OK;
    });
    board.on<&a_qortvapi_rating_get_op_vchip_info>(
            [&core](const OPEN_VCHIP_KEY_PARAM_T* key, uint8_t* info) {
                return getLevel(core, key, info);
            });
    board.on<&a_qortvapi_rating_get_op_vchip_setting_info>(
            [&core](OPEN_VCHIP_BLOCK_DATA_T* block) { return getDimension(core, block); });
    const auto mutex = std::make_shared<std::mutex>();
    board.on<&a_qortvapi_rating_set_op_vchip_setting_info>(
            [&core, mutex](const OPEN_VCHIP_BLOCK_DATA_T* block) {
                return setDimension(core, *mutex, block);
            });
    board.on<&a_qortvapi_rating_atsc_storage>([&core](bool kept) {
        core.rememberNumber(kTablesKept, kept ? 1 : 0);
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_rating_convert_rating_info>(convertRatings);
}

}  // namespace television
