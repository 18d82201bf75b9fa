/** The host's CI+ keys. They are secrets: clients write them, no function returns them, and they
 * are never logged. */
#pragma once

#include <cstdint>
#include <mutex>
#include <string>

#include "middleware/ci.h"
#include "television/core/core.h"

namespace television {

/** CI_KEY_COUNT keys, which the core remembers. Functions that return int32_t return a code of
 * middleware/result_codes.h. Any thread; the lock is held while a key is remembered. */
class CamKeys {
  public:
    /** `core` outlives this. */
    explicit CamKeys(Core& core) : mCore(core) {}

    /** Copies CI_KEY_SIZE bytes for the next update. */
    void write(const uint8_t* key);
    /** Stores the written key under a number, inactive. */
    int32_t update(uint32_t number);
    /** Stores the key in a file under a number, inactive. */
    int32_t updateFrom(const std::string& path, uint32_t number);
    /** Activates all stored keys. */
    int32_t activate();
    /** Forgets all stored keys and the written one. */
    void erase();
    bool exists(uint32_t number) const;
    bool existsAny() const;
    CI_KEY_INFO_T info(uint32_t number) const;

  private:
    Core& mCore;
    std::mutex mMutex;     ///< held while stored keys change
    std::string mWritten;  ///< waits for the next update; guarded by mMutex
};

}  // namespace television
