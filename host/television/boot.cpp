// The television boots beside the service: linked into the service's program, this file starts it
// from a static constructor, on a thread of its own, as the middleware of a set starts before
// anybody asks. QORTV_TELEVISION=off starts nothing.
#include <cstdlib>
#include <cstring>
#include <thread>

#include "television.h"

namespace television {
namespace {

class Boot {
  public:
    Boot() {
        const char* wanted = std::getenv("QORTV_TELEVISION");
        if (wanted != nullptr && std::strcmp(wanted, "off") == 0) return;
        mTelevision = new Television(Options::fromEnvironment());
        // Not on the thread: the service must not find the readiness files of an earlier run.
        mTelevision->removeReadiness();
        std::thread([this] { mTelevision->start(); }).detach();
    }

  private:
    /** Never deleted: its functions may be called until the very end of the process. */
    Television* mTelevision = nullptr;
};

Boot gBoot;

}  // namespace
}  // namespace television
