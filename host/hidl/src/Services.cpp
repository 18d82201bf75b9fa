#include <hidl/Services.h>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <map>
#include <utility>

#include <hidl/Limits.h>
#include <transport/Process.h>
#include <transport/Registry.h>
#include <transport/Socket.h>

namespace android::hardware {

using transport::Process;
using transport::Registry;

// Asks a process about itself. Fills in the part of ServiceInfo that does not depend on the name.
static ServiceInfo inquire(const Registry::Entry& entry) {
    ServiceInfo info;
    transport::Peer peer;
    transport::wire::HelloReply reply;
    int socket = Process::greet(entry.socket, transport::wire::Purpose::kInquiry, 0,
                                limits::kInquiryMilliseconds, &peer, &reply);
    const bool replied = socket >= 0;
    // A process that is just ending may still accept a connection and then break it off.
    if (socket == -ECONNRESET) {
        socket = transport::connectTo(entry.socket, limits::kInquiryMilliseconds);
    }
    info.alive = socket != -ECONNREFUSED && socket != -ENOENT;
    if (socket >= 0) close(socket);
    if (replied) {
        info.threads = static_cast<int>(reply.threads);
        // The thread that replies is not idle, but serves no call.
        info.busyThreads = std::max(
                0, static_cast<int>(reply.threads) - static_cast<int>(reply.idleThreads) - 1);
        info.maxThreads = static_cast<int>(reply.maxThreads);
        info.clients = static_cast<int>(reply.sessions);
    }
    return info;
}

std::vector<ServiceInfo> listServices() {
    std::vector<ServiceInfo> services;
    std::map<uint64_t, ServiceInfo> processes;  // by token
    for (const Registry::Entry& entry : Registry().list()) {
        auto known = processes.find(entry.process);
        if (known == processes.end()) {
            known = processes.insert({entry.process, inquire(entry)}).first;
        }
        ServiceInfo info = known->second;
        const size_t slash = entry.name.find('/');
        info.interface = entry.name.substr(0, slash);
        info.instance = slash == std::string::npos ? "" : entry.name.substr(slash + 1);
        info.pid = entry.pid;
        services.push_back(std::move(info));
    }
    return services;
}

}  // namespace android::hardware
