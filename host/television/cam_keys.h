/** The host's CI+ keys. They are secrets: they go in, are stored, and never come out or into a log.
 */
#pragma once

#include <cstdint>
#include <mutex>
#include <string>

#include "core.h"
#include "middleware/ci.h"

namespace television {

/** CI_KEY_COUNT keys in the store. Functions that answer a number answer a code of
 * middleware/result_codes.h. Any thread. */
class CamKeys {
  public:
    /** `core` outlives this. */
    explicit CamKeys(Core& core) : mCore(core) {}

    /** Holds CI_KEY_SIZE bytes for the next update. */
    void write(const uint8_t* key);
    /** Takes the written key in. */
    int32_t update(uint32_t number);
    /** Takes in the key of a file. */
    int32_t updateFrom(const std::string& path, uint32_t number);
    int32_t activate();
    /** The written key too. */
    void erase();
    bool exists(uint32_t number) const;
    bool existsAny() const;
    CI_KEY_INFO_T info(uint32_t number) const;

  private:
    Core& mCore;
    std::mutex mMutex;     ///< held while the store changes
    std::string mWritten;  ///< guarded by mMutex
};

}  // namespace television
