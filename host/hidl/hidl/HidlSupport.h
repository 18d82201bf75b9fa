// The types of HIDL interfaces: strings, vectors, arrays, handles. Their layout in memory is part
// of the wire format, so sizes and offsets are fixed and asserted.
//
// No object of these types may be used by several threads at once. An object owns its buffer or
// descriptors and frees them, unless setToExternal() or setTo() pointed it at memory of somebody
// else. A copy always owns.
#pragma once

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <sched.h>

#include <hidl/HidlArray.h>
#include <hidl/HidlEnum.h>
#include <hidl/HidlHandle.h>
#include <hidl/HidlMemory.h>
#include <hidl/HidlString.h>
#include <hidl/HidlToString.h>
#include <hidl/HidlVec.h>
#include <utils/Errors.h>
#include <utils/RefBase.h>
#include <utils/StrongPointer.h>

namespace android {

namespace hidl::base::V1_0 {
struct IBase;
}
namespace hidl::memory::V1_0 {
struct IMemory;
}

namespace hardware {

// Notified when a remote object's process dies. The runtime holds it weakly: who links it has to
// keep a reference.
struct hidl_death_recipient : public virtual RefBase {
    // Runs on a pool thread, once for each link, with no lock of the runtime held. `cookie` is the
    // number that was given to linkToDeath, `who` the proxy on which it was called (null if that is
    // gone).
    virtual void serviceDied(uint64_t cookie,
                             const wp<::android::hidl::base::V1_0::IBase>& who) = 0;
};

namespace details {

// Whether getDebugInfo() may tell the addresses of objects.
bool debuggable();

}  // namespace details
}  // namespace hardware
}  // namespace android
