/** The folder of transport streams that the television receives: one `.ts` file for each multiplex.
 */
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "multiplex.h"
#include "packet_reader.h"

struct stat;

namespace television {

/** Reads one multiplex from `source`: until its tables are complete, and 64 MiB at most. Throws
 * std::runtime_error when it is no transport stream. */
ParsedMultiplex readMultiplex(const PacketReader::Source& source);

/** Reads the multiplex in the file `path`. Throws std::system_error when it cannot be read,
 * std::runtime_error when it is no transport stream. */
ParsedMultiplex readMultiplexFile(const std::string& path);

/** Whether a file of that name in the folder is a stream: `*.ts`, not hidden. */
bool isStreamName(const std::string& name);

/** What a scan of the folder gave. */
struct ScanResult {
    std::vector<ParsedMultiplex> multiplexes;  ///< in the order of the file names
    bool folderRead = false;                   ///< false: the folder itself could not be read
    std::set<std::string> unreadable;          ///< names of files that could not be read
};

/** Scans a folder, and scans it again quickly: files that did not change are not read again. One
 * thread at a time. */
class StreamFolder {
  public:
    explicit StreamFolder(std::string path);

    /** Reads all streams. What is wrong is said on the log, with the name of the file or folder. */
    ScanResult scan();

    const std::string& path() const { return mPath; }

    class Steps;

  private:
    /** What tells one state of a file from another. */
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
    struct Known {
        Stamp stamp;
        ParsedMultiplex multiplex;
    };

    static Stamp stampOf(const struct stat& status);
    std::vector<std::string> names(bool& read) const;
    bool scanFile(const std::string& name, std::map<std::string, Known>& known,
                  ScanResult& result) const;

    const std::string mPath;
    std::map<std::string, Known> mKnown;  ///< by file name
};

/** One scan of a folder, a file at a time. The folder, which outlives it, is not scanned otherwise
 * meanwhile. */
class StreamFolder::Steps {
  public:
    /** `concerns`: whether a multiplex is looked for. Files that did not change since they were
     * read and are known to carry others take no step; empty: all files take one. */
    explicit Steps(StreamFolder& folder,
                   const std::function<bool(const ParsedMultiplex&)>& concerns = {});

    bool folderRead() const { return mResult.folderRead; }
    /** All steps. */
    size_t count() const { return mNames.size(); }
    bool left() const { return mNext < mNames.size(); }
    /** Reads the next file, of which one must be left. Null when it could not be used; else valid
     * until the next step. */
    const ParsedMultiplex* next();
    /** When no step is left: what the folder carries, files without a step included. The folder
     * takes over what was read. */
    ScanResult finish();

  private:
    StreamFolder& mFolder;
    std::vector<std::string> mNames;
    size_t mNext = 0;
    ScanResult mResult;
    std::map<std::string, Known> mKnown;
};

}  // namespace television
