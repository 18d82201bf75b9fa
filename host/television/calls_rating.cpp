// Parental ratings: the settings of each system, rating tables, the programme that is on.
#include <algorithm>
#include <charconv>
#include <cstring>
#include <memory>
#include <mutex>
#include <optional>
#include <set>

#include <fmt/format.h>

#include "calls.h"
#include "dvb_text.h"
#include "middleware/rating.h"
#include "ratings.h"

namespace television {
namespace {

// More settings, by the names under which they are remembered.
constexpr char kUsTelevision[] = "rating.us_tv";  ///< a byte, 0 or 1, for each; nothing for zeros
constexpr char kUsMovie[] = "rating.us_movie";
constexpr char kEnglish[] = "rating.can_eng";
constexpr char kFrench[] = "rating.can_fre";
constexpr char kContents[] = "rating.isdb_content";
constexpr char kIsdbAge[] = "rating.isdb_age";
constexpr char kTablesKept[] = "rating.atsc_storage";
/** Of rating tables: region and dimension follow. A byte, 0 or 1, for each level. */
constexpr char kDimensions[] = "rating.open.";

/** The bits of US television that are blocked, from the bytes remembered. */
uint32_t usTelevisionBits(const std::string& bytes) {
    uint32_t bits = 0;
    for (size_t i = 0; i < std::min(bytes.size(), sizeof(US_TV_RATING_BLOCK_T)); ++i) {
        if (bytes[i] != 0) bits |= uint32_t{1} << i;
    }
    return bits;
}

/** What rating handlers are told of a change; empty when it is none of theirs. */
struct Told {
    uint32_t system;
    uint32_t value;
};

std::optional<Told> toldOf(const Core& core, const std::string& name, const std::string& after) {
    const auto number = [&](const char* of, int32_t fallback = 0) {
        return static_cast<uint32_t>(core.rememberedNumber(of, fallback));
    };
    if (name == kRatingsOn || name == kUnratedBlocked) {
        return Told{RATING_SYSTEM_ALL, number(kRatingsOn, 1) | number(kUnratedBlocked) << 1};
    }
    if (name == kContents || name == kIsdbAge) {
        return Told{RATING_SYSTEM_ISDB, number(kIsdbAge) | number(kContents) << 8};
    }
    if (name == kUsTelevision) return Told{RATING_SYSTEM_US_TV, usTelevisionBits(after)};
    if (name == kUsMovie) return Told{RATING_SYSTEM_US_MOVIE, number(kUsMovie)};
    if (name == kEnglish) return Told{RATING_SYSTEM_CAN_ENG, number(kEnglish)};
    if (name == kFrench) return Told{RATING_SYSTEM_CAN_FRE, number(kFrench)};
    if (name == kAgeAllowed) return Told{RATING_SYSTEM_DVB, number(kAgeAllowed)};
    constexpr size_t kPrefix = sizeof(kDimensions) - 1;
    if (name.compare(0, kPrefix, kDimensions) != 0) return std::nullopt;
    uint32_t dimension = 0;
    std::from_chars(name.data() + kPrefix, name.data() + name.size(), dimension);
    return Told{RATING_SYSTEM_OPEN, dimension};
}

/** What a setting is while nothing is remembered of it. */
std::string delivered(const std::string& name) {
    return name == kRatingsOn ? "1" : "0";
}

void tell(Core& core, const RememberedChange& change) {
    const auto told = toldOf(core, change.name, change.after);
    if (!told) return;
    // To remember what was as delivered is no change.
    const std::string was = delivered(change.name);
    const bool same = (change.before.empty() && change.after == was) ||
                      (change.after.empty() && change.before == was);
    if (same) return;
    core.notifier.post({registration<&a_qortvapi_rating_op_vchip_reg_callback>(),
                        RATING_NFY_SETTING_CHANGED,
                        {told->system, told->value, 0, 0}});
}

/** The event that is on in the main window; null when there is none. */
Guide::EventPointer currentEvent(const Core& core) {
    const uint32_t channelId =
            core.read([](const ChannelLists& lists) { return lists.current[0]; });
    return channelId == 0 ? nullptr : core.guide.presentEvent(channelId, core.clock.utcSeconds());
}

/** Tells when the programme that is on becomes blocked, or free again. Any thread; the lock is held
 * while the core is read. */
class BlockWatch {
  public:
    explicit BlockWatch(Core& core) : mCore(core) {}

    void look() {
        const std::lock_guard<std::mutex> lock(mMutex);
        const Guide::EventPointer event = currentEvent(mCore);
        const bool blocked = event != nullptr && ratingBlocks(mCore, *event);
        if (blocked == mBlocked) return;
        mBlocked = blocked;
        mCore.notifier.post({registration<&a_qortvapi_rating_op_vchip_reg_callback>(),
                             RATING_NFY_BLOCK_CHANGED,
                             {blocked ? 1u : 0u, 0, 0, 0}});
    }

  private:
    Core& mCore;
    std::mutex mMutex;
    bool mBlocked = false;  ///< as told last; guarded by mMutex
};

/** Plugs the two functions of a setting of one byte. */
template <auto Get, auto Set>
void plugSetting(switchboard::Switchboard& board, Core& core, const char* name, uint8_t most,
                 int32_t fallback = 0) {
    board.on<Get>([&core, name, fallback](uint8_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = static_cast<uint8_t>(core.rememberedNumber(name, fallback));
        return TV_OK;
    });
    board.on<Set>([&core, name, most](uint8_t value) -> int32_t {
        if (value > most) return TV_INVALID_ARGUMENT;
        core.rememberNumber(name, value);
        return TV_OK;
    });
}

void plugUsTelevision(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_rating_get_us_tv_setting_info>(
            [&core](US_TV_RATING_BLOCK_T* to) -> int32_t {
                if (!writable(to)) return TV_INVALID_ARGUMENT;
                const uint32_t bits = usTelevisionBits(core.remembered(kUsTelevision));
                uint8_t bytes[sizeof(*to)];
                for (size_t i = 0; i < sizeof(bytes); ++i) bytes[i] = bits >> i & 1;
                std::memcpy(to, bytes, sizeof(bytes));
                return TV_OK;
            });
    board.on<&a_qortvapi_rating_set_us_tv_setting_info>(
            [&core](const US_TV_RATING_BLOCK_T* block) -> int32_t {
                if (!writable(block)) return TV_INVALID_ARGUMENT;
                std::string bytes(reinterpret_cast<const char*>(block), sizeof(*block));
                for (char& byte : bytes) byte = byte != 0 ? 1 : 0;
                const bool any = bytes.find('\1') != std::string::npos;
                core.remember(kUsTelevision, any ? bytes : std::string());
                return TV_OK;
            });
    board.on<&a_qortvapi_rating_get_us_tv_group_by_child>([](uint8_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = 0;
        return TV_OK;
    });
}

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

void plugTables(switchboard::Switchboard& board, Core& core) {
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
}

/** A text that a field of a record has no more room for. */
class Joined {
  public:
    explicit Joined(size_t field) : mField(field) {}

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

int32_t convert(const RatingListNode* list, RATING_MAP_T* to) {
    constexpr size_t kMostNodes = 1'000'000;
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    if (list == nullptr) return TV_NOT_FOUND;
    Joined regions(sizeof(to->s_region));
    Joined dimensions(sizeof(to->s_dimension));
    Joined values(sizeof(to->s_rating));
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

void plugRatings(switchboard::Switchboard& board, Core& core) {
    plugUsTelevision(board, core);
    plugSetting<&a_qortvapi_rating_get_us_movie_setting_info,
                &a_qortvapi_rating_set_us_movie_setting_info>(board, core, kUsMovie,
                                                              RATING_US_MOVIE_MAX);
    plugSetting<&a_qortvapi_rating_get_can_eng_setting_info,
                &a_qortvapi_rating_set_can_eng_setting_info>(board, core, kEnglish,
                                                             RATING_CAN_ENG_MAX);
    plugSetting<&a_qortvapi_rating_get_can_fre_setting_info,
                &a_qortvapi_rating_set_can_fre_setting_info>(board, core, kFrench,
                                                             RATING_CAN_FRE_MAX);
    plugSetting<&a_qortvapi_rating_get_block_unrated, &a_qortvapi_rating_set_block_unrated>(
            board, core, kUnratedBlocked, 1);
    plugSetting<&a_qortvapi_rating_get_enable, &a_qortvapi_rating_set_enable>(board, core,
                                                                              kRatingsOn, 1, 1);
    plugSetting<&a_qortvapi_rating_get_isdb_content_setting_info,
                &a_qortvapi_rating_set_isdb_content_setting_info>(board, core, kContents,
                                                                  RATING_ISDB_CONTENT_MAX);
    plugSetting<&a_qortvapi_rating_get_isdb_age_setting_info,
                &a_qortvapi_rating_set_isdb_age_setting_info>(board, core, kIsdbAge,
                                                              RATING_AGE_MAX);
    plugSetting<&a_qortvapi_rating_get_dvb_age_setting_info,
                &a_qortvapi_rating_set_dvb_age_setting_info>(board, core, kAgeAllowed,
                                                             RATING_AGE_MAX);
    plugTables(board, core);
    board.on<&a_qortvapi_rating_convert_rating_info>(convert);
    board.on<&a_qortvapi_rating_get_crnt_rating_info>([&core](RATING_MAP_T* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        const Guide::EventPointer event = currentEvent(core);
        return event == nullptr ? int32_t{TV_NOT_FOUND} : putRatingMap(*event, to);
    });
    const auto watch = std::make_shared<BlockWatch>(core);
    core.onRemembered([&core](const RememberedChange& change) { tell(core, change); });
    core.onChange([watch] { watch->look(); });
    core.notifier.onTick([watch] { watch->look(); });
}

}  // namespace television
