/** The two files with which the middleware tells the service that it is ready. */
#pragma once

#include <string>
#include <utility>

namespace television {

/** Faults are logged. Any thread. */
class ReadinessFiles {
  public:
    /** `folder`: empty: no files are written. */
    explicit ReadinessFiles(std::string folder) : mFolder(std::move(folder)) {}

    /** Removes the files; their absence is no fault. */
    void remove() const;
    /** Makes the folder when it is missing. Returns whether files can be written into it. */
    bool makeFolder() const;
    /** Writes the files, which are empty, in the order in which the service looks for them. */
    void write() const;

  private:
    const std::string mFolder;
};

}  // namespace television
