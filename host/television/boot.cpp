// Starts the television inside the service's process: a program that links this file starts it from
// a static constructor, before main, on a thread of its own. On a device the middleware process
// starts before the service in the same way. QORTV_TELEVISION=off starts nothing.
#include <cstdlib>
#include <cstring>
#include <thread>

#include "television/television.h"

namespace television {
namespace {

class Boot {
  public:
    Boot() {
        const char* wanted = std::getenv("QORTV_TELEVISION");
        if (wanted != nullptr && std::strcmp(wanted, "off") == 0) return;
        mTelevision = new Television(Options::fromEnvironment());
        // Here and not on the thread: main must not find the readiness files of an earlier run.
        mTelevision->removeReadiness();
        std::thread([this] { mTelevision->start(); }).detach();
    }

  private:
    /** Never deleted: the service may call its functions until the very end of the process. */
    Television* mTelevision = nullptr;
};

Boot gBoot;

}  // namespace
}  // namespace television
