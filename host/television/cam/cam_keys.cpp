#include "television/cam/cam_keys.h"

#include <cerrno>
#include <cstring>

#include <fmt/format.h>

#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/cam/cam_file.h"

namespace television {
namespace {

/** Before the number of a key in the name under which the core remembers it. */
constexpr char kPrefix[] = "ci.key.";
/** The byte that is stored behind a key. */
constexpr char kActive = 'a';
constexpr char kInactive = 'i';

std::string nameOf(uint32_t number) {
    return fmt::format("{}{}", kPrefix, number);
}

/** Returns the 32-bit FNV-1a hash. */
uint32_t checksum(const std::string& key) {
    uint32_t sum = 2166136261U;
    for (const char byte : key) sum = (sum ^ static_cast<uint8_t>(byte)) * 16777619U;
    return sum;
}

}  // namespace

void CamKeys::write(const uint8_t* key) {
    std::lock_guard<std::mutex> lock(mMutex);
    mWritten.assign(reinterpret_cast<const char*>(key), CI_KEY_SIZE);
}

int32_t CamKeys::update(uint32_t number) {
    if (number >= CI_KEY_COUNT) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    if (mWritten.empty()) return TV_NOT_FOUND;
    mCore.remember(nameOf(number), mWritten + kInactive);
    mWritten.clear();
    return TV_OK;
}

int32_t CamKeys::updateFrom(const std::string& path, uint32_t number) {
    if (number >= CI_KEY_COUNT) return TV_INVALID_ARGUMENT;
    std::string key;
    const int error = readCamFile(path, CI_KEY_SIZE, key);
    if (error == ENOENT || error == ENOTDIR) return TV_NOT_FOUND;
    if (error == EFBIG || (error == 0 && key.size() != CI_KEY_SIZE)) return TV_INVALID_ARGUMENT;
    if (error != 0) {
        LOG_TV_ERROR("cannot read the CI+ key in {}: {}", path, std::strerror(error));
        return TV_FAILED;
    }
    std::lock_guard<std::mutex> lock(mMutex);
    mCore.remember(nameOf(number), key + kInactive);
    return TV_OK;
}

int32_t CamKeys::activate() {
    std::lock_guard<std::mutex> lock(mMutex);
    int32_t result = TV_NOT_FOUND;
    for (uint32_t number = 0; number < CI_KEY_COUNT; ++number) {
        std::string key = mCore.remembered(nameOf(number));
        if (key.empty()) continue;
        key.back() = kActive;
        mCore.remember(nameOf(number), key);
        result = TV_OK;
    }
    return result;
}

void CamKeys::erase() {
    std::lock_guard<std::mutex> lock(mMutex);
    mWritten.clear();
    for (uint32_t number = 0; number < CI_KEY_COUNT; ++number) mCore.remember(nameOf(number), "");
}

bool CamKeys::exists(uint32_t number) const {
    return !mCore.remembered(nameOf(number)).empty();
}

bool CamKeys::existsAny() const {
    return mCore.rememberedCount(kPrefix) != 0;
}

CI_KEY_INFO_T CamKeys::info(uint32_t number) const {
    const std::string stored = mCore.remembered(nameOf(number));
    if (stored.size() != CI_KEY_SIZE + 1) return {};
    CI_KEY_INFO_T info = {};
    info.b_exists = 1;
    info.b_active = stored.back() == kActive ? 1 : 0;
    info.ui2_size = CI_KEY_SIZE;
    info.ui4_checksum = checksum(stored.substr(0, CI_KEY_SIZE));
    return info;
}

}  // namespace television
