#include "television/lists/channel_numbers.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace television {
namespace {

/** Channel numbers, and which of them are taken; 0 always is. */
class Numbers {
  public:
    Numbers() : mTaken(UINT16_MAX + 1) { mTaken[0] = true; }

    bool taken(size_t number) const { return mTaken[number]; }
    void take(Service& service, size_t number) {
        service.record.ui2_channel_number = static_cast<uint16_t>(number);
        mTaken[number] = true;
    }
    /** The first free number from `number` on; end() when there is none. */
    size_t nextFree(size_t number) const {
        while (number < mTaken.size() && mTaken[number]) ++number;
        return number;
    }
    size_t end() const { return mTaken.size(); }

  private:
    std::vector<bool> mTaken;
};

/** Marks the numbers that services have as taken. Returns the services without one, among them
 * those whose number an earlier service has, who lose it. */
std::vector<Service*> takeNumbersOf(ChannelList& list, Numbers& numbers) {
    std::vector<Service*> open;
    for (Service& service : list.services) {
        uint16_t& number = service.record.ui2_channel_number;
        if (numbers.taken(number)) {
            number = 0;
            open.push_back(&service);
        } else {
            numbers.take(service, number);
        }
    }
    return open;
}

}  // namespace

void assignChannelNumbers(ChannelList& list) {
    Numbers numbers;
    const std::vector<Service*> open = takeNumbersOf(list, numbers);
    for (Service* service : open) {
        if (!numbers.taken(service->lcn)) numbers.take(*service, service->lcn);
    }
    size_t lowest = 1;
    for (const bool withLcn : {true, false}) {
        for (Service* service : open) {
            if (service->record.ui2_channel_number != 0) continue;
            if (withLcn != (service->lcn != 0)) continue;
            const size_t number = numbers.nextFree(withLcn ? service->lcn : lowest);
            if (!withLcn) lowest = number;
            if (number != numbers.end()) numbers.take(*service, number);
        }
    }
}

}  // namespace television
