/** The folder of transport streams that the television receives: one `.ts` file for each multiplex.
 */
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "television/stream/multiplex.h"
#include "television/stream/packet_reader.h"
#include "television/stream/stream_name.h"

struct stat;

namespace television {

/** Reads one multiplex from `source` until its tables are complete, at most 64 MiB. Throws
 * std::runtime_error when the source is no transport stream. */
ParsedMultiplex readMultiplex(const PacketReader::Source& source);

/** Reads the multiplex in the file `path`. Throws std::system_error when it cannot be read,
 * std::runtime_error when it is no transport stream. */
ParsedMultiplex readMultiplexFile(const std::string& path);

/** The result of a scan of the folder. */
struct ScanResult {
    std::vector<ParsedMultiplex> multiplexes;  ///< in the order of the file names
    bool folderRead = false;                   ///< false: the folder itself could not be read
    std::set<std::string> unreadable;          ///< names of files that could not be read
};

/** Scans a folder. Files that have not changed since the scan before are not read again. One thread
 * at a time. */
class StreamFolder {
  public:
    explicit StreamFolder(std::string path);

    /** Reads all streams. Files, or a folder, that cannot be used are named on the log. */
    ScanResult scan();

    const std::string& path() const { return mPath; }

    class Steps;

  private:
    /** A file that has the same stamp as before has not changed. */
    struct Stamp {
        uint64_t inode = 0;
        int64_t size = 0;
        int64_t seconds = 0;
        int64_t nanoseconds = 0;
        bool operator==(const Stamp& other) const {
            return inode == other.inode && size == other.size && seconds == other.seconds &&
                   nanoseconds == other.nanoseconds;
        }
    };
    /** What was read of a file, and its stamp at that time. */
    struct Known {
        Stamp stamp;
        ParsedMultiplex multiplex;
    };

    static Stamp stampOf(const struct stat& status);
    std::vector<std::string> streamNames(bool& read) const;
    bool scanFile(const std::string& name, std::map<std::string, Known>& known,
                  ScanResult& result) const;

    const std::string mPath;
    std::map<std::string, Known> mKnown;  ///< by file name
};

/** One scan of a folder, a file at a time. The folder must outlive it and not be scanned in another
 * way meanwhile. One thread at a time. */
class StreamFolder::Steps {
  public:
    /** `concerns(multiplex)`: whether the scan looks for this multiplex. A file that has not
     * changed since it was read, and whose multiplex the scan does not look for, takes no step.
     * Without `concerns` every file takes one. */
    explicit Steps(StreamFolder& folder,
                   const std::function<bool(const ParsedMultiplex&)>& concerns = {});

    bool folderRead() const { return mResult.folderRead; }
    /** The number of all steps. */
    size_t count() const { return mNames.size(); }
    /** Whether there is a step left. */
    bool left() const { return mNext < mNames.size(); }
    /** Reads the next file; a step must be left. Returns its multiplex, valid until the next step,
     * or null when the file cannot be used. */
    const ParsedMultiplex* next();
    /** The result of the scan, files without a step included; no step may be left. The folder takes
     * over what was read. */
    ScanResult finish();

  private:
    StreamFolder& mFolder;
    std::vector<std::string> mNames;  ///< of the files that take a step
    size_t mNext = 0;                 ///< in mNames
    ScanResult mResult;
    std::map<std::string, Known> mKnown;  ///< by file name
};

}  // namespace television
