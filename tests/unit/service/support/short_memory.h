/**
 * A limit on the memory for arrays of a size that a client chooses. For programs that link
 * service_short_memory, which replaces calloc.
 */
#pragma once

/** For as long as the object lives `granted` more arrays can be allocated, and then none. */
class ShortMemory {
  public:
    explicit ShortMemory(int granted);
    ~ShortMemory();
    ShortMemory(const ShortMemory&) = delete;
    ShortMemory& operator=(const ShortMemory&) = delete;
};

/** Returns how many arrays were asked for since the process started. */
int arraysAskedFor();
