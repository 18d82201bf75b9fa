/** Finds channels by a part of their name, upper or lower case, in all scripts. */
#pragma once

#include <string>

namespace television {

/** A text to search for. Copies nothing of the names that it is compared with. */
class NameMatch {
  public:
    /** `text` is UTF-8; an empty one is contained in every name. */
    explicit NameMatch(const char* text);

    bool operator()(const char* name) const;

  private:
    std::wstring mText;
};

}  // namespace television
