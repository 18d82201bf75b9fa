// The owner of a parcel's contents.
#pragma once

#include <memory>

namespace android::hardware {

struct ParcelContents;

// Closes the descriptors that the contents own (received ones), drops their references to binders,
// and gives their memory back to the calling thread's store.
struct ParcelContentsRecycler {
    void operator()(ParcelContents* contents) const;
};

// Owns contents from ParcelContents::acquire(). Move-only: moving it hands the contents over. A
// plain pointer to contents only borrows them.
using ParcelContentsOwner = std::unique_ptr<ParcelContents, ParcelContentsRecycler>;

}  // namespace android::hardware
