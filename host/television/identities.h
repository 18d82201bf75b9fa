/**
 * Which record id a service, multiplex, network or satellite has had since it was first seen.
 * Remembered also while it is away, so that its ids are the same when it comes back.
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

enum class RecordKind : uint8_t {
    kService = 1,
    kMultiplex = 2,
    kNetwork = 3,
    kSatellite = 4,
    kBissKey = 5
};

/** What broadcasters call a thing, as far as it tells it from the others of its list. */
struct IdentityKey {
    RecordKind kind = RecordKind::kService;
    uint16_t list = 0;
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

class Identities {
  public:
    /** The record id under `key`, a new one for a new key; 0 when the list has no ids left. */
    uint16_t recordId(const IdentityKey& key);
    bool hidden(const IdentityKey& key) const;
    void hide(const IdentityKey& key, bool hidden);
    /** Takes the mark of deletion from all services and multiplexes that are not among `present`.
     */
    void unhideAbsent(const std::set<IdentityKey>& present);
    /** Takes the mark of deletion from all of a list. */
    void unhideAll(uint16_t list);

    /** Takes over what the store remembers. */
    void restore(const IdentityKey& key, const Identity& identity);
    /** What changed since this was last asked. */
    std::vector<std::pair<IdentityKey, Identity>> takeChanges();

  private:
    std::map<IdentityKey, Identity> mIdentities;
    std::map<std::pair<RecordKind, uint16_t>, uint16_t> mLast;  ///< highest record id of each list
    std::set<IdentityKey> mChanged;
};

}  // namespace television
