/** The set's input sources: their properties, the settings of each, and the pictures they deliver.
 */
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "television/core/core.h"
#include "television/core/playing.h"

namespace television {

/** One source. */
struct InputSource {
    uint8_t id;
    uint8_t type;           ///< INPUT_DEVICE_TYPE_…
    uint8_t index;          ///< among the sources of its type, from 0
    const char* name;       ///< as it is printed on the set
    uint32_t flags;         ///< INPUT_SOURCE_…
    const char* connected;  ///< the configuration item that says whether a device is connected;
                            ///< null: always
    VideoFormat picture;    ///< of a connected device; empty for the television
    std::optional<uint8_t> samePlug = std::nullopt;  ///< id of the source that shares its plug
};

extern const std::array<InputSource, 9> kInputSources;
/** Null when there is none. */
const InputSource* inputSource(int32_t id);

/** Returns whether the set cannot show both at the same time, by the rules of
 * middleware/inputsource.h. */
bool inputsConflict(const InputSource& a, const InputSource& b);

/**
 * The settings of the sources, which the core remembers, and the notifications about their
 * pictures. Setters return a code of middleware/result_codes.h. Any thread; one lock, under which
 * no other lock is taken but the notifier's. No function here may be called within `Core::read` or
 * `Core::change`.
 */
class InputSources {
  public:
    /** `core` outlives this, and calls it after each change: to be made before the first one. */
    explicit InputSources(Core& core);
    InputSources(const InputSources&) = delete;
    InputSources& operator=(const InputSources&) = delete;

    bool connected(const InputSource& source) const;
    /** The name to show: the user's name, else the label, else the name on the set. */
    std::string name(const InputSource& source) const;

    /** Empty when the user gave none. */
    std::string userName(const InputSource& source) const;
    int32_t setUserName(const InputSource& source, const std::string& name);
    /** Index of a label of middleware/inputsource.h; 0: none. */
    uint8_t label(const InputSource& source) const;
    int32_t setLabel(const InputSource& source, uint8_t label);
    /** Whether the main window changes to the source when a device is connected. */
    bool autodetect(const InputSource& source) const;
    int32_t setAutodetect(const InputSource& source, bool on);
    /** The block as it was set; it takes effect only while the item lock.inputs is on. */
    bool blockSet(const InputSource& source) const;
    /** Whether the block is set and in effect. */
    bool blocked(const InputSource& source) const;
    int32_t setBlock(const InputSource& source, bool on);

    /** The picture of a window, whichever source it shows; empty when there is none. */
    VideoFormat pictureIn(size_t window) const;
    /** The message on the screen of the main window: SCREENSAVER_MSG_…. */
    int32_t screenMessage() const;

  private:
    /** What a window shows of a source other than the television. */
    struct External {
        uint8_t source;
        VideoFormat picture;
    };
    std::optional<External> externalIn(size_t window) const;
    void notifyChangedPictures();

    Core& mCore;
    std::mutex mMutex;
    /** For each window the source and the width of its picture as last notified; empty: the
     * television's. Guarded by mMutex. */
    std::array<std::optional<std::pair<uint8_t, uint32_t>>, kWindowCount> mNotified;
};

}  // namespace television
