/** Finds channels by a part of their name, whatever the case of the letters, in all scripts. */
#pragma once

#include <string>

namespace television {

/** A text to search for in names. Any thread may ask the same object. */
class NameMatch {
  public:
    /** `text` is UTF-8; an empty one is contained in every name. */
    explicit NameMatch(const char* text);

    /** Whether the name, in UTF-8, contains the text. */
    bool operator()(const char* name) const;

  private:
    std::wstring mText;
};

}  // namespace television
