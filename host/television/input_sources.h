/** The set's input sources: what they are, what is set of each, and the pictures that come in. */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "core.h"
#include "playing.h"

namespace television {

/** One source. */
struct InputSource {
    uint8_t id;
    uint8_t type;   ///< INPUT_DEVICE_TYPE_…
    uint8_t index;  ///< among those of its type
    const char* name;
    uint32_t flags;         ///< INPUT_SOURCE_…
    const char* connected;  ///< the configuration item that says so; null: always
    VideoFormat picture;    ///< of what is connected; none of the television
    std::optional<uint8_t> samePlug = std::nullopt;  ///< the other source on its plug
};

extern const std::array<InputSource, 9> kInputSources;
/** Null when there is none. */
const InputSource* inputSource(int32_t id);

/** Whether the set cannot show both at the same time: middleware/inputsource.h. */
bool inputsConflict(const InputSource& a, const InputSource& b);

/**
 * What is set of the sources is remembered by the core. Any thread; one lock, held for no call of
 * the core but posts. Nothing here within `Core::read` or `Core::change`.
 */
class InputSources {
  public:
    /** `core` outlives this. Watches it. */
    explicit InputSources(Core& core);
    InputSources(const InputSources&) = delete;
    InputSources& operator=(const InputSources&) = delete;

    bool connected(const InputSource& source) const;
    /** What a viewer reads: the name he gave, else the label, else the set's. */
    std::string name(const InputSource& source) const;

    std::string userName(const InputSource& source) const;
    int32_t setUserName(const InputSource& source, const std::string& name);
    uint8_t label(const InputSource& source) const;
    int32_t setLabel(const InputSource& source, uint8_t label);
    bool autodetect(const InputSource& source) const;
    int32_t setAutodetect(const InputSource& source, bool on);
    /** As it was set; it counts while inputs are locked. */
    bool blockSet(const InputSource& source) const;
    bool blocked(const InputSource& source) const;
    int32_t setBlock(const InputSource& source, bool on);

    /** The picture of a window, whichever source it shows; empty when there is none. */
    VideoFormat pictureIn(size_t window) const;
    /** The message that is on the screen: SCREENSAVER_MSG_…. */
    int32_t screenMessage() const;

  private:
    /** What a source that is not the television gives a window. */
    struct External {
        uint8_t source;
        VideoFormat picture;
    };
    std::optional<External> externalIn(size_t window) const;
    void look();

    Core& mCore;
    std::mutex mMutex;
    /** Source and width of the picture as told last; empty: of the television. Guarded by mMutex.
     */
    std::array<std::optional<std::pair<uint8_t, uint32_t>>, kWindowCount> mTold;
};

}  // namespace television
