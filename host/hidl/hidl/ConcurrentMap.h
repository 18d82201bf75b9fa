// A map with a lock: any thread, each method is atomic.
#pragma once

#include <map>
#include <mutex>
#include <utility>

namespace android::hardware {

template <typename K, typename V>
class ConcurrentMap {
  public:
    void set(K key, V value) {
        std::lock_guard<std::mutex> lock(mMutex);
        mMap[std::move(key)] = std::move(value);
    }
    // Returns a copy of the value of `key`, or `defaultValue`.
    V get(const K& key, V defaultValue) const {
        std::lock_guard<std::mutex> lock(mMutex);
        auto it = mMap.find(key);
        return it == mMap.end() ? std::move(defaultValue) : it->second;
    }
    // Returns the number of elements erased.
    size_t erase(const K& key) {
        std::lock_guard<std::mutex> lock(mMutex);
        return mMap.erase(key);
    }
    // Erases `key` if its value is `value`. Returns the number of elements erased.
    size_t eraseIfEqual(const K& key, const V& value) {
        std::lock_guard<std::mutex> lock(mMutex);
        auto it = mMap.find(key);
        if (it == mMap.end() || !(it->second == value)) return 0;
        mMap.erase(it);
        return 1;
    }

  private:
    mutable std::mutex mMutex;
    std::map<K, V> mMap;
};

}  // namespace android::hardware
