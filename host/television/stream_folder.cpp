#include "stream_folder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "log.h"
#include "psi_collector.h"

namespace television {
namespace {

/** Tables repeat within ten seconds; at the highest bit rates that is less than this. */
constexpr uint64_t kMostBytes = 64 * 1024 * 1024;
/** Read even when the tables are complete, so that the count of damaged packets says something of
 * the reception. */
constexpr uint64_t kLeastBytes = 1024 * 1024;
/** When all but the guide is complete, no more is read for its sake: events and the time may take
 * half a minute to come round, and some streams never send what they announce. */
constexpr uint64_t kMostGuideBytes = 32 * 1024 * 1024;

/** An open file, closed at the end. */
class File {
  public:
    explicit File(const std::string& path)
        // Without waiting: a pipe with that name must not hold the television up.
        : mDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        if (mDescriptor < 0) throw std::system_error(errno, std::generic_category());
        if (fstat(mDescriptor, &mStatus) != 0) {
            const int error = errno;
            close(mDescriptor);
            throw std::system_error(error, std::generic_category());
        }
    }
    ~File() { close(mDescriptor); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    const struct stat& status() const { return mStatus; }

    long read(uint8_t* data, size_t size) {
        for (;;) {
            const ssize_t got = ::read(mDescriptor, data, size);
            if (got >= 0 || errno != EINTR) return got;
        }
    }

  private:
    int mDescriptor;
    struct stat mStatus = {};
};

ParsedMultiplex readMultiplex(File& file) {
    if (!S_ISREG(file.status().st_mode)) throw std::runtime_error("not a regular file");
    int error = 0;
    ParsedMultiplex multiplex =
            television::readMultiplex([&file, &error](uint8_t* data, size_t size) {
                const long got = file.read(data, size);
                if (got < 0) error = errno;
                return got;
            });
    // What came before the fault is good; a file of which nothing came is not.
    if (error != 0 && multiplex.services.empty()) {
        throw std::system_error(error, std::generic_category());
    }
    return multiplex;
}

/** Whether a stream that gave `bytes` so far has told what is wanted of it. */
bool isEnough(const PsiCollector& collector, uint64_t bytes) {
    if (bytes < kLeastBytes || !collector.complete()) return false;
    return bytes >= kMostGuideBytes || collector.guideComplete();
}

}  // namespace

bool isStreamName(const std::string& name) {
    return name.size() > 3 && name[0] != '.' && name.compare(name.size() - 3, 3, ".ts") == 0;
}

ParsedMultiplex readMultiplex(const PacketReader::Source& source) {
    // Bounded at the source: a file may hold gigabytes without a single packet.
    uint64_t left = kMostBytes;
    PacketReader packets([&](uint8_t* data, size_t size) {
        const long got = source(data, static_cast<size_t>(std::min<uint64_t>(size, left)));
        if (got > 0) left -= static_cast<uint64_t>(got);
        return got;
    });
    PsiCollector collector;
    while (const uint8_t* packet = packets.next()) {
        collector.push(packet);
        if (isEnough(collector, packets.bytes())) break;
    }
    if (!packets.isTransportStream() && !packets.failed()) {
        throw std::runtime_error(packets.bytes() == 0 ? "empty file" : "not a transport stream");
    }
    ParsedMultiplex multiplex = collector.multiplex();
    multiplex.damagedPackets += packets.lost();
    return multiplex;
}

ParsedMultiplex readMultiplexFile(const std::string& path) {
    File file(path);
    ParsedMultiplex multiplex = readMultiplex(file);
    multiplex.source = path.substr(path.rfind('/') + 1);
    return multiplex;
}

StreamFolder::StreamFolder(std::string path) : mPath(std::move(path)) {}

std::vector<std::string> StreamFolder::names(bool& read) const {
    std::vector<std::string> result;
    read = false;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(mPath.c_str()), closedir);
    if (folder == nullptr) {
        LOG_TV_ERROR("cannot read the folder of streams {}: {}", mPath, std::strerror(errno));
        return result;
    }
    errno = 0;
    while (const dirent* entry = readdir(folder.get())) {
        if (isStreamName(entry->d_name)) result.emplace_back(entry->d_name);
    }
    if (errno != 0) {
        LOG_TV_ERROR("cannot read the folder of streams {}: {}", mPath, std::strerror(errno));
        return result;
    }
    read = true;
    std::sort(result.begin(), result.end());
    return result;
}

StreamFolder::Stamp StreamFolder::stampOf(const struct stat& status) {
    return {status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

/** Answers whether the file could be used, and is the last one of the result then. */
bool StreamFolder::scanFile(const std::string& name, std::map<std::string, Known>& known,
                            ScanResult& result) const {
    const std::string path = mPath + "/" + name;
    try {
        File file(path);
        const Stamp stamp = stampOf(file.status());
        const auto before = mKnown.find(name);
        if (before != mKnown.end() && before->second.stamp == stamp) {
            result.multiplexes.push_back(before->second.multiplex);
        } else {
            ParsedMultiplex multiplex = readMultiplex(file);
            multiplex.source = name;
            if (multiplex.services.empty()) LOG_TV_WARN("no services in the stream {}", path);
            result.multiplexes.push_back(std::move(multiplex));
        }
        known[name] = {stamp, result.multiplexes.back()};
        return true;
    } catch (const std::system_error& error) {
        LOG_TV_ERROR("cannot read the stream {}: {}", path, error.code().message());
        result.unreadable.insert(name);
    } catch (const std::runtime_error& error) {
        LOG_TV_ERROR("cannot use the stream {}: {}", path, error.what());
    }
    return false;
}

ScanResult StreamFolder::scan() {
    Steps steps(*this);
    while (steps.left()) steps.next();
    return steps.finish();
}

StreamFolder::Steps::Steps(StreamFolder& folder,
                           const std::function<bool(const ParsedMultiplex&)>& concerns)
    : mFolder(folder) {
    std::vector<std::string> names = folder.names(mResult.folderRead);
    if (mResult.folderRead && names.empty()) {
        LOG_TV_WARN("no streams (*.ts) in the folder {}", folder.mPath);
    }
    for (std::string& name : names) {
        const auto known = folder.mKnown.find(name);
        struct stat status = {};
        if (concerns && known != folder.mKnown.end() && !concerns(known->second.multiplex) &&
            stat((folder.mPath + "/" + name).c_str(), &status) == 0 &&
            known->second.stamp == stampOf(status)) {
            mKnown.insert(*known);
            mResult.multiplexes.push_back(known->second.multiplex);
        } else {
            mNames.push_back(std::move(name));
        }
    }
}

const ParsedMultiplex* StreamFolder::Steps::next() {
    const bool usable = mFolder.scanFile(mNames[mNext++], mKnown, mResult);
    return usable ? &mResult.multiplexes.back() : nullptr;
}

ScanResult StreamFolder::Steps::finish() {
    std::sort(
            mResult.multiplexes.begin(), mResult.multiplexes.end(),
            [](const ParsedMultiplex& a, const ParsedMultiplex& b) { return a.source < b.source; });
    mFolder.mKnown = std::move(mKnown);
    return std::move(mResult);
}

}  // namespace television
