/** The check of what all notification handlers have in common. */
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

#include "support/recording_client.h"
#include "support/service_fixture.h"

/** Waits until something is logged, and returns it. */
std::vector<LogLine> nextLines(LogCapture& log);

/** Whether the thread of this process sleeps. */
bool sleeps(pid_t thread);

/**
 * Runs `task` on a thread of its own while the registry's mutex is held, `meanwhile` once the task
 * sleeps, which it only does to wait for that mutex, and returns when the task has ended, with the
 * mutex free.
 */
void expectToWaitForTheRegistry(const std::function<void()>& task,
                                const std::function<void()>& meanwhile);

/** The calls of clients and the log lines that a handler is expected to make of a notification. */
struct ExpectedFanOut {
    std::string handler;
    std::string tag;
    std::string call;                       // as a RecordingClient records it
    std::vector<std::string> debug_lines;   // only while debugging is on
    std::vector<std::string> always_lines;  // after those
};

/**
 * Sends a notification with debugging on and off, to no client, and to two of which the first that
 * is called fails: the failure is logged whatever the debug level, and the other client is called.
 * Nothing is logged before the registry's mutex is taken.
 */
void checkFanOut(const ExpectedFanOut& expected, LogCapture& log,
                 const std::function<void()>& notify);

/**
 * Runs `init`, a module's registration function, and returns the handler that it passes to
 * `Register` with `tag`. A module may use one registration call for two handlers.
 */
template <auto Register, typename Handler>
Handler registeredHandler(int32_t (*init)(), uintptr_t tag) {
    Handler found = nullptr;
    switchboard::Switchboard tv;
    tv.on<Register>([&](Handler handler, void* its_tag) {
        if (its_tag == reinterpret_cast<void*>(tag)) found = handler;
        return 0;
    });
    init();
    return found;
}
