// The process's thread pool as generated code sees it.
#pragma once

#include <cstddef>

#include <utils/RefBase.h>
#include <utils/StrongPointer.h>

namespace android::hardware {

class ProcessState : public virtual RefBase {
  public:
    static sp<ProcessState> self();

    // Makes sure that at least one thread serves calls: callbacks and deaths need one. Called by
    // generated code before an object is passed to a service.
    void startThreadPool();

  private:
    ProcessState() = default;
    ~ProcessState() override = default;
};

}  // namespace android::hardware
