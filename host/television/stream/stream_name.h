/** The names of transport-stream files. */
#pragma once

#include <string>
#include <string_view>

namespace television {

constexpr std::string_view kStreamNameEnding = ".ts";

/** Returns whether a file of that name is taken for a stream: `*.ts`, not hidden. */
inline bool isStreamName(std::string_view name) {
    const size_t ending = kStreamNameEnding.size();
    return name.size() > ending && name[0] != '.' &&
           name.substr(name.size() - ending) == kStreamNameEnding;
}

/** The name or path of a stream without its ending. */
inline std::string withoutStreamEnding(const std::string& name) {
    return name.substr(0, name.size() - kStreamNameEnding.size());
}

}  // namespace television
