/**
 * Which record id a service, multiplex, network or satellite got when it was first seen. The id is
 * remembered while the streams do not carry it, so that it has the same one when it comes back.
 */
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include "middleware/records.h"

namespace television {

/** Kinds of records; the numbers are those in the store. */
enum class RecordKind : uint8_t {
    kService = 1,
    kMultiplex = 2,
    kNetwork = 3,
    kSatellite = 4,
    kBissKey = 5
};

/**
 * By what a thing is recognised among the others of its kind and list. The meaning of the numbers:
 *
 *     service    original network id, transport-stream id, service id
 *     multiplex  original network id, transport-stream id, 0
 *     network    network id, record id of the satellite, 0
 *     satellite  orbital position in tenths of a degree, 1 east or 0 west, 0
 */
struct IdentityKey {
    RecordKind kind = RecordKind::kService;
    uint16_t list = 0;  ///< id of its list
    uint16_t a = 0;
    uint16_t b = 0;
    uint16_t c = 0;

    bool operator<(const IdentityKey& other) const {
        return std::tie(kind, list, a, b, c) <
               std::tie(other.kind, other.list, other.a, other.b, other.c);
    }
};

IdentityKey identityOf(const SVL_REC_T& service);
IdentityKey identityOf(const TSL_REC_T& multiplex);

/** What is remembered under a key. */
struct Identity {
    uint16_t recordId = 0;
    bool hidden = false;  ///< deleted by the application: not listed again while the stream goes on
};

/** No locks: readers and writers must not meet. */
class Identities {
  public:
    /** The record id of `key`; a new key gets the next id, 0 when its list has none left. */
    uint16_t recordId(const IdentityKey& key);
    /** Whether `key` has the mark of deletion. */
    bool hidden(const IdentityKey& key) const;
    /** Sets or removes the mark of deletion; ignored for a key that has no id yet. */
    void hide(const IdentityKey& key, bool hidden);
    /** Removes the mark of deletion from all that are not among `present`. */
    void unhideAbsent(const std::set<IdentityKey>& present);
    /** Removes the mark of deletion from all of a list. */
    void unhideAll(uint16_t list);

    /** Takes over what the store has remembered; not reported by takeChanges(). */
    void restore(const IdentityKey& key, const Identity& identity);
    /** What has changed since the call before, for the store. */
    std::vector<std::pair<IdentityKey, Identity>> takeChanges();

  private:
    std::map<IdentityKey, Identity> mIdentities;
    std::map<std::pair<RecordKind, uint16_t>, uint16_t> mLast;  ///< highest record id of each list
    std::set<IdentityKey> mChanged;
};

}  // namespace television
