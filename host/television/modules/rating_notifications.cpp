// Notifications about parental ratings: changed settings, and a programme that becomes blocked.
#include <charconv>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "television/modules/modules.h"
#include "television/modules/rating_settings.h"
#include "television/viewing/ratings.h"

namespace television {
namespace {

/** A change of a setting as handlers receive it: RATING_SYSTEM_… and its value. */
struct SettingChange {
    uint32_t system;
    uint32_t value;
};

/** Returns the change of the setting that is remembered under a name; empty when that is no rating
 * setting. */
std::optional<SettingChange> settingChangeOf(const Core& core, const std::string& name,
                                             const std::string& after) {
    const auto number = [&](const char* of, int32_t fallback = 0) {
        return static_cast<uint32_t>(core.rememberedNumber(of, fallback));
    };
    if (name == kRatingsOn || name == kUnratedBlocked) {
        const uint32_t unrated = number(kUnratedBlocked) << 1;
        return SettingChange{RATING_SYSTEM_ALL, number(kRatingsOn, 1) | unrated};
    }
    if (name == kIsdbContents || name == kIsdbAge) {
        return SettingChange{RATING_SYSTEM_ISDB, number(kIsdbAge) | number(kIsdbContents) << 8};
    }
    if (name == kUsTelevision) return SettingChange{RATING_SYSTEM_US_TV, usTelevisionBits(after)};
    if (name == kUsMovie) return SettingChange{RATING_SYSTEM_US_MOVIE, number(kUsMovie)};
    if (name == kCanadianEnglish) {
        return SettingChange{RATING_SYSTEM_CAN_ENG, number(kCanadianEnglish)};
    }
    if (name == kCanadianFrench) {
        return SettingChange{RATING_SYSTEM_CAN_FRE, number(kCanadianFrench)};
    }
    if (name == kAgeAllowed) return SettingChange{RATING_SYSTEM_DVB, number(kAgeAllowed)};
    constexpr size_t kPrefix = sizeof(kDimensions) - 1;
    if (name.compare(0, kPrefix, kDimensions) != 0) return std::nullopt;
    uint32_t dimension = 0;
    std::from_chars(name.data() + kPrefix, name.data() + name.size(), dimension);
    return SettingChange{RATING_SYSTEM_OPEN, dimension};
}

/** Returns the default of a setting as it would be remembered. */
std::string defaultOf(const std::string& name) {
    return name == kRatingsOn ? "1" : "0";
}

void notifySettingChange(Core& core, const RememberedChange& change) {
    const auto setting = settingChangeOf(core, change.name, change.after);
    if (!setting) return;
    // It is no change when the default is remembered in place of nothing, or forgotten.
    const std::string initial = defaultOf(change.name);
    const bool same = (change.before.empty() && change.after == initial) ||
                      (change.after.empty() && change.before == initial);
    if (same) return;
    core.notifier.post({registration<&a_qortvapi_rating_op_vchip_reg_callback>(),
                        RATING_NFY_SETTING_CHANGED,
                        {setting->system, setting->value, 0, 0}});
}

/** Notifies handlers when the programme in the main window becomes blocked, or is no longer. Any
 * thread; the lock is held while the core is read. */
class BlockWatch {
  public:
    /** `core` outlives this. */
    explicit BlockWatch(Core& core) : mCore(core) {}

    void notifyChange() {
        const std::lock_guard<std::mutex> lock(mMutex);
        const Guide::EventPointer event = currentProgramme(mCore);
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
    bool mBlocked = false;  ///< as last notified; guarded by mMutex
};

}  // namespace

void notifyRatingChanges(Core& core) {
    const auto watch = std::make_shared<BlockWatch>(core);
    core.onRemembered(
            [&core](const RememberedChange& change) { notifySettingChange(core, change); });
    core.onChange([watch] { watch->notifyChange(); });
    core.notifier.onTick([watch] { watch->notifyChange(); });
}

}  // namespace television
