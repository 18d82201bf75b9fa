#include "television/stream/stream_folder.h"

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

#include "television/base/log.h"
#include "television/stream/psi_collector.h"

namespace television {
namespace {

/** Bytes that are read of a stream at most. Tables repeat within ten seconds, which are fewer bytes
 * even at the highest bit rates. */
constexpr uint64_t kMostBytes = 64 * 1024 * 1024;
/** Bytes that are read even when the tables are complete sooner, so that the count of damaged
 * packets says something about the reception. */
constexpr uint64_t kLeastBytes = 1024 * 1024;
/** Bytes that are read at most when only the guide is incomplete: events and the time may repeat
 * only every half minute, and some streams never send what they announce. */
constexpr uint64_t kMostGuideBytes = 32 * 1024 * 1024;

/** An open file, closed at the end. */
class File {
  public:
    explicit File(const std::string& path)
        // O_NONBLOCK: opening a pipe with that name would wait for its writer.
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
    // What was read before the fault counts; a file of which no service was read is unreadable.
    if (error != 0 && multiplex.services.empty()) {
        throw std::system_error(error, std::generic_category());
    }
    return multiplex;
}

/** Whether a stream need not be read on after its first `bytes` bytes. */
bool isEnough(const PsiCollector& collector, uint64_t bytes) {
    if (bytes < kLeastBytes || !collector.complete()) return false;
    return bytes >= kMostGuideBytes || collector.guideComplete();
}

}  // namespace

ParsedMultiplex readMultiplex(const PacketReader::Source& source) {
    // The limit is set at the source: a file may have gigabytes without a single packet.
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

/** The sorted names of the streams; `read`: whether the folder could be read. */
std::vector<std::string> StreamFolder::streamNames(bool& read) const {
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

/** Adds the multiplex of a file to the end of `result`, and to `known`. Returns false when the file
 * cannot be used. */
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
    std::vector<std::string> names = folder.streamNames(mResult.folderRead);
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
