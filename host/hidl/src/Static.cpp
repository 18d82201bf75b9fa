#include <hidl/Static.h>

namespace android::hardware::details {

BnConstructorMap& getBnConstructorMap() {
    static BnConstructorMap& map = *new BnConstructorMap;
    return map;
}

BsConstructorMap& getBsConstructorMap() {
    static BsConstructorMap& map = *new BsConstructorMap;
    return map;
}

}  // namespace android::hardware::details
