#include "cutils/properties.h"

#include <android-base/properties.h>

#include <mutex>
#include <string>

namespace {

std::mutex gPropertiesMutex;  // SetProperty has no lock of its own

}  // namespace

int property_set(const char* key, const char* value) {
    const std::string name = key;
    const std::string text = value;
    const bool is_read_only = name.rfind("ro.", 0) == 0;
    if (name.empty() || (!is_read_only && text.size() >= PROPERTY_VALUE_MAX)) return -1;
    std::lock_guard<std::mutex> lock(gPropertiesMutex);
    if (is_read_only && !android::base::GetProperty(name, "").empty()) return -1;
    return android::base::SetProperty(name, text) ? 0 : -1;
}
