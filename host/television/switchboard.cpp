#include "switchboard.h"

#include <mutex>

namespace switchboard {
namespace {

std::mutex gMutex;
std::vector<const SlotBase*> gSequence;  // guarded by gMutex

std::string nameOf(const SlotBase* slot) {
    for (size_t i = 0; i < kSlotCount; ++i) {
        if (kSlots[i].slot == slot) return kSlots[i].name;
    }
    return "?";
}

}  // namespace

std::atomic<bool> SlotBase::sRecording{false};

void SlotBase::record() const {
    std::lock_guard<std::mutex> lock(gMutex);
    gSequence.push_back(this);
}

void Switchboard::startRecording() {
    std::lock_guard<std::mutex> lock(gMutex);
    gSequence.clear();
    SlotBase::sRecording = true;
}

std::vector<std::string> Switchboard::stopRecording() {
    std::lock_guard<std::mutex> lock(gMutex);
    SlotBase::sRecording = false;
    std::vector<std::string> names;
    names.reserve(gSequence.size());
    for (const SlotBase* slot : gSequence) names.push_back(nameOf(slot));
    return names;
}

}  // namespace switchboard
