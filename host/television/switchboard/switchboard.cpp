#include "television/switchboard/switchboard.h"

#include <mutex>

namespace switchboard {
namespace {

std::mutex gMutex;
std::vector<const SlotBase*> gSequence;  // the recorded calls; guarded by gMutex

std::string nameOf(const SlotBase* slot) {
    for (size_t i = 0; i < kSlotCount; ++i) {
        if (kSlots[i].slot == slot) return kSlots[i].name;
    }
    return "?";
}

}  // namespace

std::atomic<bool> SlotBase::sRecording{false};

void SlotBase::appendToSequence() const {
    std::lock_guard<std::mutex> lock(gMutex);
    gSequence.push_back(this);
}

Switchboard::~Switchboard() {
    for (const Plugged& plugged : mPlugged) plugged.slot->plug(nullptr);
}

void Switchboard::plugAndKeep(SlotBase& slot, std::shared_ptr<const void> handler) {
    slot.plug(handler.get());
    mPlugged.push_back({&slot, std::move(handler)});
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
