#include "television/lists/identities.h"

#include <algorithm>

namespace television {

IdentityKey identityOf(const SVL_REC_T& service) {
    return {RecordKind::kService, service.ui2_svl_id, service.ui2_original_network_id,
            service.ui2_transport_stream_id, service.ui2_service_id};
}

IdentityKey identityOf(const TSL_REC_T& multiplex) {
    return {RecordKind::kMultiplex, multiplex.ui2_tsl_id, multiplex.ui2_original_network_id,
            multiplex.ui2_transport_stream_id, 0};
}

uint16_t Identities::recordId(const IdentityKey& key) {
    const auto found = mIdentities.find(key);
    if (found != mIdentities.end()) return found->second.recordId;
    uint16_t& last = mLast[{key.kind, key.list}];
    if (last == UINT16_MAX) return 0;
    mIdentities[key] = {++last, false};
    mChanged.insert(key);
    return last;
}

bool Identities::hidden(const IdentityKey& key) const {
    const auto found = mIdentities.find(key);
    return found != mIdentities.end() && found->second.hidden;
}

void Identities::hide(const IdentityKey& key, bool hidden) {
    const auto found = mIdentities.find(key);
    if (found == mIdentities.end() || found->second.hidden == hidden) return;
    found->second.hidden = hidden;
    mChanged.insert(key);
}

void Identities::unhideAbsent(const std::set<IdentityKey>& present) {
    for (auto& [key, identity] : mIdentities) {
        if (!identity.hidden || present.count(key) != 0) continue;
        identity.hidden = false;
        mChanged.insert(key);
    }
}

void Identities::unhideAll(uint16_t list) {
    for (auto& [key, identity] : mIdentities) {
        if (!identity.hidden || key.list != list) continue;
        identity.hidden = false;
        mChanged.insert(key);
    }
}

void Identities::restore(const IdentityKey& key, const Identity& identity) {
    mIdentities[key] = identity;
    uint16_t& last = mLast[{key.kind, key.list}];
    last = std::max(last, identity.recordId);
}

std::vector<std::pair<IdentityKey, Identity>> Identities::takeChanges() {
    std::vector<std::pair<IdentityKey, Identity>> changes;
    for (const IdentityKey& key : mChanged) changes.emplace_back(key, mIdentities[key]);
    mChanged.clear();
    return changes;
}

}  // namespace television
