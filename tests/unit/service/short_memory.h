/**
 * The memory of the client-sized arrays, which a test can have run out. A program that uses this
 * is linked with -Wl,--wrap=calloc.
 */
#pragma once

/** For as long as the object lives `granted` more arrays are had, and then none. */
class ShortMemory {
  public:
    explicit ShortMemory(int granted);
    ~ShortMemory();
    ShortMemory(const ShortMemory&) = delete;
    ShortMemory& operator=(const ShortMemory&) = delete;
};

/** The arrays that were asked for since the process started. */
int arraysAskedFor();
