/** A folder for one test, which is removed with all that is in it at the end. */
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

class TempFolder {
  public:
    TempFolder() {
        char path[] = "/tmp/qortv-test-XXXXXX";
        if (mkdtemp(path) == nullptr) ADD_FAILURE() << "cannot make a temporary folder";
        mPath = path;
    }
    ~TempFolder() { std::filesystem::remove_all(mPath); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& path() const { return mPath; }
    /** The path of a file in it. */
    std::string operator/(const std::string& name) const { return mPath + "/" + name; }

    void write(const std::string& name, const std::vector<uint8_t>& bytes) const {
        std::ofstream file(*this / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }

  private:
    std::string mPath;
};
