// The process's thread pool as generated code sees it.
#pragma once

#include <cstddef>

#include <utils/RefBase.h>
#include <utils/StrongPointer.h>

namespace android::hardware {

class ProcessState : public virtual RefBase {
  public:
    static sp<ProcessState> self();

    // Makes sure that at least one thread serves calls, as callbacks and death notifications need.
    // Generated code calls this before it passes an object to a service.
    void startThreadPool();

  private:
    ProcessState() = default;
    ~ProcessState() override = default;
};

}  // namespace android::hardware
