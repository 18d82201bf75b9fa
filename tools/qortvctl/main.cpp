// qortvctl: the television from the command line.
#include <android/log.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <exception>

#include "qortv/error.h"
#include "qortvctl/commands/command_line.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/text/utf8.h"

namespace {

using namespace qortvctl;

/** Opens 0, 1 and 2 where they are closed. A connection to the service could get one of these
 * numbers otherwise, and our output would go to the service. */
void openStandardDescriptors() {
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // open() returns the lowest number that is free, which is this one.
        if (fcntl(fd, F_GETFD) < 0) static_cast<void>(open("/dev/null", O_RDWR));
    }
}

int failed(const char* message, int status) {
    std::fprintf(stderr, "qortvctl: %s\n", message);
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    openStandardDescriptors();
    prepareOutput();
    useUtf8();
    // Silences the libraries' log lines: our own messages report what goes wrong.
    __android_log_set_minimum_priority(ANDROID_LOG_FATAL);
    try {
        CommandLine commandLine;
        addCommands(commandLine);
        return commandLine.run(argc, argv);
    } catch (const OutputClosed&) {
        return kOk;
    } catch (const qortv::Error& error) {
        const bool missing = error.kind() == qortv::Error::Kind::kNoService;
        return failed(error.what(), missing ? kNoService : kFailure);
    } catch (const std::exception& error) {
        return failed(error.what(), kFailure);
    }
}
